#include "velflexlib/dataset/LineMoments.h"

#include "velflexlib/dataset/SampleKernels.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace veltaris::velflexlib::dataset {

namespace {

template <std::size_t Degree>
CSampleKernels::Moments MomentsKernel()
{
    if constexpr (Degree == 1)
        return Kernels().moments1;
    else if constexpr (Degree == 2)
        return Kernels().moments2;
    else
        return Kernels().moments4;
}

// All terms, and all of their sums, are multiples of the lowest bit that a sample has. They are exact as long as none
// can be more than 2^53 times that.
bool AreExact(int lowestBit, int bitsOfMagnitude, double powerSum)
{
    constexpr double slack = 1 + 0x1p-20; // the sum of powers is rounded itself
    return std::ldexp(powerSum * slack, bitsOfMagnitude) <= std::ldexp(1, 53 + lowestBit);
}

bool AreExact(const CStoredSamples& line, double powerSum)
{
    constexpr int rawBits = 30;
    const auto storedBits = static_cast<int>(8 * BytesPerSample(line.Width()));
    if (AreExact(std::max(rawBits - storedBits, 0), rawBits - 1, powerSum))
        return true;
    std::uint32_t bits = 0;
    std::uint32_t magnitude = 0;
    ForEachRawPiece(line, line.Count(), [&](std::uint64_t, std::span<const std::int32_t> piece) {
        const CSampleSurvey survey = Kernels().survey(piece.data(), piece.size());
        bits |= static_cast<std::uint32_t>(survey.bits);
        magnitude |= static_cast<std::uint32_t>(std::max(survey.highest, ~survey.lowest));
    });
    return AreExact(std::countr_zero(bits), static_cast<int>(std::bit_width(magnitude)), powerSum);
}

template <std::size_t Degree>
void AddInOrder(std::span<const std::int32_t> samples, double first, std::array<double, Degree + 1>& moments)
{
    auto sums = moments;
    double x = first;
    for (const std::int32_t sample : samples) {
        double term = sample;
        for (double& sum : sums) {
            sum += term;
            term *= x;
        }
        ++x;
    }
    moments = sums;
}

} // namespace

template <std::size_t Degree>
std::array<double, Degree + 1> Moments(const CStoredSamples& line, double powerSum)
{
    const bool inAnyOrder = AreExact(line, powerSum);
    std::array<double, Degree + 1> moments{};
    ForEachRawPiece(line, line.Count(), [&](std::uint64_t first, std::span<const std::int32_t> piece) {
        if (inAnyOrder)
            MomentsKernel<Degree>()(piece.data(), piece.size(), static_cast<double>(first), moments.data());
        else
            AddInOrder<Degree>(piece, static_cast<double>(first), moments);
    });
    return moments;
}

template std::array<double, 2> Moments<1>(const CStoredSamples& line, double powerSum);
template std::array<double, 3> Moments<2>(const CStoredSamples& line, double powerSum);
template std::array<double, 5> Moments<4>(const CStoredSamples& line, double powerSum);

} // namespace veltaris::velflexlib::dataset
