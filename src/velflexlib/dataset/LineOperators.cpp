#include "velflexlib/dataset/LineOperators.h"

#include "velflexlib/dataset/DataRange.h"
#include "velflexlib/dataset/NormalEquations.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace veltaris::velflexlib::dataset {

namespace {

constexpr std::size_t samplesForFit = 4;

// Cut towards zero; what no integer can hold becomes the nearest one that there is.
std::int64_t CutToInteger(double value)
{
    constexpr double limit = 0x1p63;
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<std::int64_t>::max();
    if (value < -limit)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

bool IsMarker(std::int32_t sample)
{
    return sample <= CRawRange::lowestPossible || sample >= CRawRange::highestPossible;
}

// The difference saturates at the raw range, as the fitted value may lie anywhere.
std::int32_t Corrected(std::int32_t sample, std::int64_t fitted)
{
    if (IsMarker(sample))
        return sample;
    constexpr std::int64_t farOff = std::int64_t{1} << 40;
    const std::int64_t difference = sample - std::clamp(fitted, -farOff, farOff);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(difference, CRawRange::lowestPossible, CRawRange::highestPossible));
}

// fitted(x) is the value to subtract at index x.
template <class Fitted>
void Subtract(std::vector<std::int32_t>& output, std::span<const std::int32_t> input, Fitted fitted)
{
    output.resize(input.size());
    for (std::size_t x = 0; x < input.size(); ++x)
        output[x] = Corrected(input[x], fitted(static_cast<std::int64_t>(x)));
}

// fitted(coefficients, x) is the polynomial's value at x.
template <std::size_t Degree, class Fitted>
void SubtractPolynomial(std::vector<std::int32_t>& output, std::span<const std::int32_t> input, Fitted fitted)
{
    output.clear();
    if (input.size() < samplesForFit)
        return;
    if (const auto coefficients = CNormalEquations<Degree>::ForLength(input.size()).Solve(input))
        Subtract(output, input, [&](std::int64_t x) { return CutToInteger(fitted(*coefficients, x)); });
}

} // namespace

void CLineOpRAW::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    output.assign(input.begin(), input.end());
}

void CLineOpAvg::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    output.clear();
    if (input.empty())
        return;
    const std::int64_t sum = std::accumulate(input.begin(), input.end(), std::int64_t{0});
    const std::int64_t mean = sum / static_cast<std::int64_t>(input.size());
    Subtract(output, input, [&](std::int64_t) { return mean; });
}

void CLineOpPlain::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    SubtractPolynomial<1>(output, input,
                          [](const auto& c, std::int64_t x) { return c[0] + c[1] * static_cast<double>(x); });
}

void CLineOpDiff::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    output.clear();
    if (input.size() < 2)
        return;
    const auto difference = [](std::int32_t next, std::int32_t sample) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(next) - static_cast<std::uint32_t>(sample));
    };
    output.resize(input.size());
    std::transform(input.begin() + 1, input.end(), input.begin(), output.begin(), difference);
    output.back() = output[output.size() - 2];
}

void CLineOpParable::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    SubtractPolynomial<2>(output, input, [](const auto& c, std::int64_t x) {
        return c[0] + c[1] * static_cast<double>(x) + c[2] * static_cast<double>(x * x);
    });
}

void CLineOpPolyFit4::Apply(std::vector<std::int32_t>& output, std::span<const std::int32_t> input) const
{
    SubtractPolynomial<4>(output, input, [](const auto& c, std::int64_t x) {
        const auto linear = static_cast<double>(x);
        const auto square = static_cast<double>(x * x);
        return std::trunc(c[0]) + std::trunc(c[1]) * linear + c[2] * square + c[3] * square * linear +
               c[4] * square * square;
    });
}

} // namespace veltaris::velflexlib::dataset
