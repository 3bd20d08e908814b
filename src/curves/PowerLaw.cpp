#include "curves/PowerLaw.h"

#include <algorithm>
#include <cmath>

namespace veltaris::curves {

namespace {

// The cube root of a number above 0. That of the C library may differ between systems in its last digit.
double CubeRoot(double value)
{
    int exponent = 0;
    double mantissa = std::frexp(value, &exponent); // at least 1/2 and below 1
    while (exponent % 3 != 0) {
        mantissa /= 2;
        ++exponent;
    }
    double root = 0.5 + 0.5 * mantissa;
    for (int step = 0; step < 5; ++step) // Newton's method, from above
        root -= (root * root * root - mantissa) / (3 * root * root);
    return std::ldexp(root, exponent / 3);
}

} // namespace

double CPowerLaw::RootOf(double deflection) const
{
    if (m_law == ContactLaw::Cone)
        return std::sqrt(deflection);
    const double root = CubeRoot(deflection);
    return root * root;
}

void CPowerLaw::Add(double position, double deflection)
{
    const double place = position - deflection - m_meanPlace;
    const double root = RootOf(deflection) - m_meanRoot;
    m_points += 1;
    m_meanPlace += place / m_points;
    m_meanRoot += root / m_points;
    const double share = (m_points - 1) / m_points;
    m_spread += share * place * place;
    m_product += share * place * root;
    m_squares += share * root * root;
}

double CPowerLaw::ErrorOfBegin() const
{
    const double rise = m_product / m_spread;
    const double variance = std::max(m_squares - rise * m_product, 0.0) / (m_points - 2);
    const double distance = Begin() - m_meanPlace;
    return std::sqrt(variance * (1 / m_points + distance * distance / m_spread)) / rise;
}

} // namespace veltaris::curves
