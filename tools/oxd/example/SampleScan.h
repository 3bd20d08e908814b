// A scanned surface as a microscope records it, line by line: atomic terraces with a few islands on them, and on top
// of these what the line operators are for: tilt, bow and an offset of each line. Lengths are in metres.
#pragma once

#include "oxd/example/Noise.h"

#include <cstdint>

namespace oxd {

inline constexpr double scanSize = 5e-6;
inline constexpr int scanPixels = 256;

struct ScanDirection
{
    const char* group;
    std::uint32_t seed;
    double lag;   // how far the tip trails behind where the scanner should be
    double sense; // of the fast axis
};

class SampleScan
{
public:
    explicit SampleScan(const ScanDirection& direction);

    void StartLine(double y);

    // Signals at a place on the line.
    double Topography(double x); // metres
    double Deflection(double x); // volts: what the feedback loop has not levelled out yet, hence edges
    double Phase(double x);      // degrees: what the surface is made of

private:
    ScanDirection m_direction;
    Noise m_noise;
    Drift m_heightOffset;
    Drift m_phaseOffset;
    double m_y = 0;
};

} // namespace oxd
