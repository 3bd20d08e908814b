// Curves whose true values are known, and how far from these the analysis is. Everything is drawn from one seed, so
// that the same curves come out wherever this runs.
#pragma once

#include "curves/CurveRecipe.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace truth {

inline constexpr double way = 500e-9; // of the piezo, in metres
inline constexpr std::size_t curveCount = 10000;
inline constexpr std::array<double, 5> signalToNoise{10, 30, 100, 300, 1000};

enum Quantity
{
    Slope,
    Contact,
    Adhesion,
    Indentation,
    quantityCount
};

struct CQuantity
{
    const char* name;
    const char* unit;
    double unitsPerValue; // of what the library gives
    double percent;       // one unit in per cent: of the slope itself, of the way otherwise
};

inline constexpr std::array<CQuantity, quantityCount> quantities{{{"slope", "%", 100, 1},
                                                                  {"contact point", "nm", 1e9, 0.2},
                                                                  {"adhesion", "nm", 1e9, 0.2},
                                                                  {"indentation", "nm", 1e9, 0.2}}};

// A value less the true one, and its stated error, in the quantity's unit.
struct CDeviation
{
    bool isGiven = false;
    double error = 0;
    double stated = 0;
};

struct CTrial
{
    double signalToNoise = 0; // the largest deflection by the standard deviation of the noise
    recipe::CRecipe recipe;
    std::array<CDeviation, quantityCount> deviations;
};

// As many curves of each ratio of signal to noise, with all combinations of sampling, tilt and snap-in in turns.
std::vector<CTrial> RunTrials();

} // namespace truth
