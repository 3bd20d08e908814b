// Fits by orthonormal polynomials: one pass over the line computes the coefficients, and another subtracts the fit.
#include "compare/Baseline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bench::baseline {

namespace {

// The degrees of the fitted polynomials by operator code; -1 where the operator fits none.
constexpr std::array<int, 6> degrees{-1, 0, 1, -1, 2, 4};
constexpr int derivative = 3;

double Dot(const std::vector<double>& a, const std::vector<double>& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

std::vector<std::vector<double>> OrthonormalBasis(int degree, std::uint64_t points)
{
    std::vector<std::vector<double>> basis;
    for (int power = 0; power <= degree; ++power) {
        std::vector<double> next(points);
        for (std::size_t i = 0; i < points; ++i)
            next[i] = std::pow(2.0 * static_cast<double>(i) / static_cast<double>(points) - 1, power);
        for (const auto& lower : basis) {
            const double share = Dot(next, lower);
            for (std::size_t i = 0; i < points; ++i)
                next[i] -= share * lower[i];
        }
        const double length = std::sqrt(Dot(next, next));
        for (double& value : next)
            value /= length;
        basis.push_back(std::move(next));
    }
    return basis;
}

void Subtract(const std::int32_t* line, const double* fitted, std::int32_t* corrected, std::size_t count)
{
    constexpr std::int32_t lowest = -536'870'912;
    constexpr std::int32_t highest = 536'870'911;
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t difference = std::clamp(line[i] - static_cast<std::int32_t>(fitted[i]), lowest, highest);
        corrected[i] = line[i] <= lowest || line[i] >= highest ? line[i] : difference;
    }
}

template <std::size_t Size>
void FitBasis(const std::vector<std::vector<double>>& basis, const std::int32_t* line, double* fitted,
              std::size_t count)
{
    std::array<const double*, Size> p{};
    for (std::size_t k = 0; k < Size; ++k)
        p[k] = basis[k].data();
    std::array<double, Size> c{};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < Size; ++k)
            c[k] += p[k][i] * line[i];
    }
    for (std::size_t i = 0; i < count; ++i) {
        double value = 0;
        for (std::size_t k = 0; k < Size; ++k)
            value += c[k] * p[k][i];
        fitted[i] = value;
    }
}

} // namespace

COperator::COperator(int code, std::uint64_t points)
    : m_code(code), m_basis(OrthonormalBasis(degrees.at(static_cast<std::size_t>(code)), points)), m_fitted(points)
{
}

void COperator::Apply(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) const
{
    if (m_code != derivative)
        return Fit(line, corrected);
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
        corrected[i] = line[i + 1] - line[i];
    corrected.back() = corrected[corrected.size() - 2];
}

void COperator::Fit(std::span<const std::int32_t> line, std::span<std::int32_t> corrected) const
{
    if (m_basis.size() == 1) {
        std::int64_t sum = 0;
        for (const std::int32_t sample : line)
            sum += sample;
        const std::int64_t mean = sum / static_cast<std::int64_t>(line.size());
        std::ranges::fill(m_fitted, static_cast<double>(mean));
    } else if (m_basis.size() == 2) {
        FitBasis<2>(m_basis, line.data(), m_fitted.data(), line.size());
    } else if (m_basis.size() == 3) {
        FitBasis<3>(m_basis, line.data(), m_fitted.data(), line.size());
    } else {
        FitBasis<5>(m_basis, line.data(), m_fitted.data(), line.size());
    }
    Subtract(line.data(), m_fitted.data(), corrected.data(), line.size());
}

} // namespace bench::baseline
