// A scanned surface as a microscope records it, line by line: atomic terraces with a few islands on them, and added to
// these what the line operators are for, namely tilt, bow and an offset of each line. Lengths are in metres.
#pragma once

#include "oxd/example/Noise.h"

#include <cstdint>

namespace oxd {

// The surface is square, and so is its image.
inline constexpr double scanSize = 5e-6;
inline constexpr int scanPixels = 256;

// One of the two scans of a surface, to the right and back.
struct ScanDirection
{
    const char* group; // its name in the file
    std::uint32_t seed;
    double lag;   // how far the tip trails behind where the scanner should be
    double sense; // 1 to the right, -1 back
};

// Lines are recorded in order, and each signal of a line from left to right: the noise and the drift of a value depend
// on how many there were before.
class SampleScan
{
public:
    explicit SampleScan(const ScanDirection& direction);

    // To be called before the values of a line are asked for.
    void StartLine(double y);

    // The signals at a place on the line.
    double Topography(double x); // metres
    double Deflection(double x); // volts: what the feedback loop has not levelled out yet, so edges show
    double Phase(double x);      // degrees: depends on what the surface is made of

private:
    ScanDirection m_direction;
    Noise m_noise;
    Drift m_heightOffset;
    Drift m_phaseOffset;
    double m_y = 0;
};

} // namespace oxd
