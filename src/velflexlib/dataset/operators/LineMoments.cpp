#include "velflexlib/dataset/operators/LineMoments.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace veltaris::velflexlib::dataset {

namespace {

// Whether the moments of raw samples v are exact in any order of additions, where |v| is at most 2^`bitsOfMagnitude`
// and every v is a multiple of 2^`lowestBit`. So is every term v x^k and every sum of terms, and none of these is
// beyond `powerSum` times the largest |v|. Doubles are exact up to 2^53 times the number that all are multiples of. The
// integers that the moments are computed with are sums of stored samples, which are 2^`spareBits` times the raw ones:
// these must stay below 2^63, and are held to 2^62.
bool AreExact(int lowestBit, int spareBits, int bitsOfMagnitude, double powerSum)
{
    constexpr double slack = 1 + 0x1p-20; // the sum of powers is rounded, too
    return std::ldexp(powerSum * slack, bitsOfMagnitude) <= std::ldexp(1, std::min(53 + lowestBit, 62 - spareBits));
}

bool AreExact(const CStoredSamples& line, double powerSum)
{
    const int spareBits = SpareBits(line.Width());
    if (AreExact(std::max(-spareBits, 0), spareBits, rawBits - 1, powerSum))
        return true; // whatever the samples are
    const CSampleSurvey survey = line.Kernels().survey(line.From(0), line.Count());
    const auto bits = static_cast<std::uint32_t>(survey.bits);
    const auto magnitude = static_cast<std::uint32_t>(std::max(survey.highest, ~survey.lowest));
    return AreExact(std::countr_zero(bits), spareBits, static_cast<int>(std::bit_width(magnitude)), powerSum);
}

} // namespace

template <std::size_t Degree>
std::array<double, Degree + 1> Moments(const CStoredSamples& line, double powerSum)
{
    const CStoredKernels& kernels = line.Kernels();
    const auto& ofDegree = AreExact(line, powerSum) ? kernels.momentsInAnyOrder : kernels.momentsInOrder;
    std::array<double, Degree + 1> moments{};
    ofDegree[Degree](line.From(0), line.Count(), moments.data());
    return moments;
}

template std::array<double, 2> Moments<1>(const CStoredSamples& line, double powerSum);
template std::array<double, 3> Moments<2>(const CStoredSamples& line, double powerSum);
template std::array<double, 5> Moments<4>(const CStoredSamples& line, double powerSum);

} // namespace veltaris::velflexlib::dataset
