// A range of values, how it is divided and how it reads.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace oxd {

// From one value to another, which may be less, equal or, while nothing is included, not there.
class Scale
{
public:
    Scale(double from, double to) : m_from(from), m_to(to) {}
    static Scale Nothing()
    {
        return {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    }

    double From() const { return m_from; }
    double To() const { return m_to; }
    double Magnitude() const { return std::max(std::fabs(m_from), std::fabs(m_to)); }
    bool IsFinite() const { return std::isfinite(m_from) && std::isfinite(m_to); }
    void Include(double value); // not if it is NaN

    // From 0 to 1; values outside give the nearer end, all of them the middle if the range is none.
    double Fraction(double value) const;

    // Round values in the range, about as many as wanted. At least one, but none in a range that is not finite.
    std::vector<double> Ticks(int wanted) const;

private:
    double m_from;
    double m_to;
};

// Writes values of a scale in a fitting multiple of their unit.
class UnitText
{
public:
    UnitText(const Scale& scale, const std::string& unit);

    // The unit with its prefix, for example "nm", or "1e-6 arb" for one that takes none.
    const std::string& Unit() const { return m_unit; }
    // All of them with as many decimals as tell them apart.
    std::vector<std::string> Labels(const std::vector<double>& values) const;

private:
    double m_factor = 1;
    std::string m_unit;
};

} // namespace oxd
