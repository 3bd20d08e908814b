#include "velflexlib/dataset/operators/LineMoments.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace veltaris::velflexlib::dataset {

namespace {

// All terms, and all of their sums, are multiples of the lowest bit that a raw sample has. They are exact as doubles as
// long as none can be more than 2^53 times that. As sums of stored samples, which lack the spare bits, they must also
// fit into 63 bits.
bool AreExact(int lowestBit, int spareBits, int bitsOfMagnitude, double powerSum)
{
    constexpr double slack = 1 + 0x1p-20; // the sum of powers is rounded itself
    return std::ldexp(powerSum * slack, bitsOfMagnitude) <= std::ldexp(1, 53 + std::min(lowestBit, spareBits + 9));
}

bool AreExact(const CStoredSamples& line, double powerSum)
{
    constexpr int rawBits = 30;
    const int spareBits = rawBits - static_cast<int>(8 * BytesPerSample(line.Width()));
    if (AreExact(std::max(spareBits, 0), spareBits, rawBits - 1, powerSum))
        return true;
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
