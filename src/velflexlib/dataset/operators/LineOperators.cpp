#include "velflexlib/dataset/operators/LineOperators.h"

#include "velflexlib/dataset/operators/NormalEquations.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace veltaris::velflexlib::dataset {

namespace {

template <std::size_t Degree>
CLineFit FitPolynomial(const CStoredSamples& line)
{
    CLineFit fit{};
    std::ranges::copy(CNormalEquations<Degree>::ForLength(line.Count()).Solve(line), fit.begin());
    return fit;
}

template <std::size_t Degree>
void SubtractPolynomial(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                        std::span<std::int32_t> corrected)
{
    line.Kernels().subtract[Degree](line.From(first), corrected.size(), static_cast<double>(first), fit.data(),
                                    corrected.data());
}

std::int32_t WrappingDifference(std::int32_t next, std::int32_t sample)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(next) - static_cast<std::uint32_t>(sample));
}

} // namespace

void CLineOpRAW::Apply(const CLineFit& /*fit*/, const CStoredSamples& line, std::uint64_t first,
                       std::span<std::int32_t> corrected) const
{
    line.Read(first, corrected);
}

CLineFit CLineOpAvg::Fit(const CStoredSamples& line) const
{
    const std::int64_t sum = line.Kernels().sum(line.From(0), line.Count());
    // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): there is a sample
    const std::int64_t mean = sum / static_cast<std::int64_t>(line.Count());
    return {static_cast<double>(mean)};
}

void CLineOpAvg::Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                       std::span<std::int32_t> corrected) const
{
    SubtractPolynomial<0>(fit, line, first, corrected);
}

CLineFit CLineOpPlain::Fit(const CStoredSamples& line) const
{
    return FitPolynomial<1>(line);
}

void CLineOpPlain::Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                         std::span<std::int32_t> corrected) const
{
    SubtractPolynomial<1>(fit, line, first, corrected);
}

void CLineOpDiff::Apply(const CLineFit& /*fit*/, const CStoredSamples& line, std::uint64_t first,
                        std::span<std::int32_t> corrected) const
{
    const std::uint64_t behind = first + corrected.size();
    const bool endsLine = behind == line.Count();
    line.Kernels().differences(line.From(first), corrected.size() - (endsLine ? 1 : 0), corrected.data());
    if (endsLine)
        corrected.back() = WrappingDifference(line.At(behind - 1), line.At(behind - 2));
}

CLineFit CLineOpParable::Fit(const CStoredSamples& line) const
{
    return FitPolynomial<2>(line);
}

void CLineOpParable::Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                           std::span<std::int32_t> corrected) const
{
    SubtractPolynomial<2>(fit, line, first, corrected);
}

CLineFit CLineOpPolyFit4::Fit(const CStoredSamples& line) const
{
    CLineFit fit = FitPolynomial<4>(line);
    fit[0] = std::trunc(fit[0]);
    fit[1] = std::trunc(fit[1]);
    return fit;
}

void CLineOpPolyFit4::Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                            std::span<std::int32_t> corrected) const
{
    SubtractPolynomial<4>(fit, line, first, corrected);
}

} // namespace veltaris::velflexlib::dataset
