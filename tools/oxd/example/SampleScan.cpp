#include "oxd/example/SampleScan.h"

#include <algorithm>
#include <cmath>

namespace oxd {

namespace {

constexpr double stepHeight = 0.314e-9;
constexpr double terraceWidth = 700e-9;
constexpr double pixelSize = scanSize / (scanPixels - 1);

// Round caps of another material.
struct Island
{
    double x, y, radius, height;
};

constexpr Island islands[] = {
    {1.1e-6, 3.9e-6, 140e-9, 3.2e-9}, {3.4e-6, 4.3e-6, 90e-9, 1.9e-9},  {2.3e-6, 2.2e-6, 180e-9, 4.1e-9},
    {4.2e-6, 1.5e-6, 110e-9, 2.4e-9}, {0.8e-6, 0.9e-6, 120e-9, 2.7e-9}, {3.1e-6, 0.6e-6, 70e-9, 1.5e-9},
};

// Close to a sine of period 1, but made of parabolas, because std::sin may round differently on other machines.
double Wave(double phase)
{
    const double u = phase - std::floor(phase);
    return u < 0.5 ? 16 * u * (0.5 - u) : -16 * (u - 0.5) * (1 - u);
}

// The number of the terrace at a place. The edges of terraces run slantwise and meander.
double Terrace(double x, double y)
{
    const double meander = 120e-9 * Wave((0.8 * y - 0.6 * x) / 2.1e-6);
    return std::floor((0.8 * x + 0.6 * y + meander) / terraceWidth);
}

double IslandHeight(double x, double y)
{
    double height = 0;
    for (const Island& island : islands) {
        const double dx = (x - island.x) / island.radius;
        const double dy = (y - island.y) / island.radius;
        height = std::max(height, island.height * (1 - dx * dx - dy * dy));
    }
    return height;
}

double SurfaceHeight(double x, double y)
{
    return stepHeight * Terrace(x, y) + IslandHeight(x, y);
}

// From -1 to 1 across the scan.
double FromCentre(double position)
{
    return 2 * position / scanSize - 1;
}

// What the scanner adds: its plane is not that of the surface, and its tube bends.
double ScannerHeight(double x, double y)
{
    const double u = FromCentre(x);
    const double v = FromCentre(y);
    return 7e-9 * u + 2.5e-9 * v + 4e-9 * u * u;
}

} // namespace

SampleScan::SampleScan(const ScanDirection& direction)
    : m_direction(direction), m_noise(direction.seed), m_heightOffset(0.25e-9), m_phaseOffset(0.15)
{
}

void SampleScan::StartLine(double y)
{
    m_y = y;
    m_heightOffset.Advance(m_noise);
    m_phaseOffset.Advance(m_noise);
}

double SampleScan::Topography(double x)
{
    constexpr double noise = 0.04e-9;
    return SurfaceHeight(x + m_direction.lag, m_y) + ScannerHeight(x, m_y) + m_heightOffset.Value() +
           noise * m_noise.Normal();
}

double SampleScan::Deflection(double x)
{
    constexpr double voltsPerMetre = 0.02e9;
    constexpr double noise = 0.8e-3;
    const double tip = x + m_direction.lag;
    const double rise = SurfaceHeight(tip + pixelSize, m_y) - SurfaceHeight(tip - pixelSize, m_y);
    return m_direction.sense * voltsPerMetre * rise / 2 + noise * m_noise.Normal();
}

double SampleScan::Phase(double x)
{
    constexpr double terracePhases[] = {24, 21.5}; // two terminations of the crystal take turns
    constexpr double islandPhase = 38;
    constexpr double noise = 0.4;
    const double tip = x + m_direction.lag;
    const bool odd = std::fmod(Terrace(tip, m_y), 2) != 0;
    const double phase = IslandHeight(tip, m_y) > 0 ? islandPhase : terracePhases[odd ? 1 : 0];
    return phase + m_phaseOffset.Value() + noise * m_noise.Normal();
}

} // namespace oxd
