// How far two numbers may be apart and still count as the same.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace oxd {

// Numbers are the same if any of these says so; without any, if they are equal. A NaN is only ever the same as another
// NaN, and only if `nanEqual` says so.
struct Tolerance
{
    std::optional<std::uint64_t> steps = {}; // of the quantisation of the coarser of two channels
    double absolute = 0;                     // in the unit of the signal axis; samples only
    double relative = 0;                     // to the larger magnitude of both; samples, and min and range of axes
    bool nanEqual = false;
};

// Whether the numbers are the same when `allowed`, which is not negative, and the relative tolerance are considered.
bool AreSame(double a, double b, double allowed, const Tolerance& tolerance);

// How far apart: infinitely where one is a NaN or the result has no finite number.
double Distance(double a, double b);

// What turns the raw samples of a channel into values.
struct SignalScale
{
    double min;
    double range;
    std::int64_t bits; // of a stored sample
};

struct Sample
{
    std::int32_t raw;
    double value;
};

// Compares samples of two channels. Where both have the same finite signal axis, raw samples tell apart what rounding
// makes equal as values.
class SampleRule
{
public:
    SampleRule(const SignalScale& a, const SignalScale& b, const Tolerance& tolerance);

    // Whether equal raw samples are the same without a look at their values.
    bool ComparesRaw() const { return m_comparesRaw; }

    bool AreSame(const Sample& a, const Sample& b) const;

private:
    bool IsWithinSteps(const Sample& a, const Sample& b) const;

    Tolerance m_tolerance;
    bool m_comparesRaw;
    bool m_isExact;
    double m_rawSteps;  // how far raw samples may be apart
    double m_realSteps; // how far values may be apart, in the unit of the signal axis
};

} // namespace oxd
