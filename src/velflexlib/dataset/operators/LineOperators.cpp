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

std::int32_t WrappingDifference(std::int32_t next, std::int32_t sample)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(next) - static_cast<std::uint32_t>(sample));
}

} // namespace

void CLineOpRAW::Apply(const CLineFit& /*fit*/, const CStoredSamples& line, std::uint64_t first,
                       std::span<std::int32_t> corrected)
{
    line.Read(first, corrected);
}

void CLineOpDiff::Apply(const CLineFit& /*fit*/, const CStoredSamples& line, std::uint64_t first,
                        std::span<std::int32_t> corrected)
{
    const std::uint64_t end = first + corrected.size();
    const bool endsLine = end == line.Count();
    line.Kernels().differences(line.From(first), corrected.size() - (endsLine ? 1 : 0), corrected.data());
    if (endsLine)
        corrected.back() = WrappingDifference(line.At(end - 1), line.At(end - 2));
}

template <std::size_t Degree>
void CLineOpSubtraction<Degree>::Apply(const CLineFit& fit, const CStoredSamples& line, std::uint64_t first,
                                       std::span<std::int32_t> corrected)
{
    line.Kernels().subtract[Degree](line.From(first), corrected.size(), static_cast<double>(first), fit.data(),
                                    corrected.data());
}

template struct CLineOpSubtraction<0>;
template struct CLineOpSubtraction<1>;
template struct CLineOpSubtraction<2>;
template struct CLineOpSubtraction<4>;

CLineFit CLineOpAvg::Fit(const CStoredSamples& line)
{
    const std::int64_t sum = line.Kernels().sum(line.From(0), line.Count());
    // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): the line has at least one sample
    const std::int64_t mean = sum / static_cast<std::int64_t>(line.Count());
    return {static_cast<double>(mean)};
}

CLineFit CLineOpPlain::Fit(const CStoredSamples& line)
{
    return FitPolynomial<1>(line);
}

CLineFit CLineOpParable::Fit(const CStoredSamples& line)
{
    return FitPolynomial<2>(line);
}

CLineFit CLineOpPolyFit4::Fit(const CStoredSamples& line)
{
    CLineFit fit = FitPolynomial<4>(line);
    fit[0] = std::trunc(fit[0]);
    fit[1] = std::trunc(fit[1]);
    return fit;
}

} // namespace veltaris::velflexlib::dataset
