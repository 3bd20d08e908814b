// A range of values: how ticks divide it, and how its values read as text.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace oxd {

// Leads from one value to another. The second may be smaller, as on an axis that runs backwards, or equal.
class Scale
{
public:
    Scale(double from, double to) : m_from(from), m_to(to) {}

    // A range without a value, to which Include adds. It is not finite as long as nothing is included.
    static Scale Nothing()
    {
        return {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    }

    double From() const { return m_from; }
    double To() const { return m_to; }
    double Magnitude() const { return std::max(std::fabs(m_from), std::fabs(m_to)); }
    bool IsFinite() const { return std::isfinite(m_from) && std::isfinite(m_to); }

    // Extends a range that began as Nothing to a value; NaN is ignored.
    void Include(double value);

    // Where in the range a value is, from 0 to 1. Values outside it count as its nearer end, and every value is in the
    // middle of a range without any width.
    double Fraction(double value) const;

    // Round values within the range, no more than about `wanted` but at least two. There is one, the beginning, in a
    // range that is too narrow for the numbers in it, and none in a range that is not finite.
    std::vector<double> Ticks(int wanted) const;

private:
    double m_from;
    double m_to;
};

// Writes values in a multiple of their unit that suits a scale. What all values of a scale far from 0 have in common is
// written once, as an offset.
class UnitText
{
public:
    UnitText(const Scale& scale, const std::string& unit);

    // The unit with a prefix, for example "nm", or with a power of ten, "1e-6 arb", if it takes no prefix.
    const std::string& Unit() const { return m_unit; }

    // What is to be added to every label, such as "+ 100 µm"; empty if that is nothing.
    const std::string& Offset() const { return m_offsetText; }

    // The values minus the offset, as multiples of Unit(). All have the same number of decimals, as many as tell
    // neighbours apart if the values are evenly spaced.
    std::vector<std::string> Labels(const std::vector<double>& values) const;

private:
    void ChooseUnit(double magnitude, const std::string& unit);

    double m_offset;
    double m_factor = 1; // by which a value is multiplied to be one in Unit()
    std::string m_unit;
    std::string m_offsetText;
};

} // namespace oxd
