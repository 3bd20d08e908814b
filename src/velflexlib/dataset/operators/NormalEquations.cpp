#include "velflexlib/dataset/operators/NormalEquations.h"

#include "velflexlib/dataset/operators/LineMoments.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

template <std::size_t Size>
CSquareMatrix<Size - 1> Minor(const CSquareMatrix<Size>& matrix, std::size_t row, std::size_t column)
{
    CSquareMatrix<Size - 1> minor{};
    for (std::size_t i = 0; i + 1 < Size; ++i) {
        for (std::size_t k = 0; k + 1 < Size; ++k)
            minor[i][k] = matrix[i < row ? i : i + 1][k < column ? k : k + 1];
    }
    return minor;
}

// Swaps rows so that the element with the largest magnitude of the column, from the diagonal down, is on the diagonal.
// Returns whether that took a swap.
template <std::size_t Size>
bool Pivot(CSquareMatrix<Size>& matrix, std::size_t column)
{
    const auto magnitude = [&](const auto& row) { return std::abs(row[column]); };
    const auto diagonal = matrix.begin() + static_cast<std::ptrdiff_t>(column);
    const auto pivot = std::ranges::max_element(diagonal, matrix.end(), {}, magnitude);
    std::swap(*diagonal, *pivot);
    return pivot != diagonal;
}

// The product of the diagonal after an LU decomposition with row pivoting, with the sign of the permutation.
template <std::size_t Size>
double DeterminantByElimination(CSquareMatrix<Size> matrix)
{
    double determinant = 1;
    for (std::size_t column = 0; column < Size; ++column) {
        if (Pivot(matrix, column))
            determinant = -determinant;
        const double pivot = matrix[column][column];
        if (pivot == 0)
            return 0;
        determinant *= pivot;
        for (std::size_t row = column + 1; row < Size; ++row) {
            const double factor = matrix[row][column] / pivot;
            for (std::size_t k = column; k < Size; ++k)
                matrix[row][k] -= factor * matrix[column][k];
        }
    }
    return determinant;
}

// Small determinants are expanded by their first row, which is exact for sums of powers as long as the products are.
template <std::size_t Size>
double Determinant(const CSquareMatrix<Size>& matrix)
{
    if constexpr (Size > 3) {
        return DeterminantByElimination(matrix);
    } else if constexpr (Size == 1) {
        return matrix[0][0];
    } else {
        double determinant = 0;
        for (std::size_t k = 0; k < Size; ++k) {
            const double term = matrix[0][k] * Determinant(Minor(matrix, 0, k));
            determinant += k % 2 == 0 ? term : -term;
        }
        return determinant;
    }
}

template <std::size_t Size>
CSquareMatrix<Size> PowerSums(std::uint64_t sampleCount)
{
    std::array<double, 2 * Size - 1> sums{};
    for (std::uint64_t i = 0; i < sampleCount; ++i) {
        double power = 1;
        for (double& sum : sums) {
            sum += power;
            power *= static_cast<double>(i);
        }
    }
    CSquareMatrix<Size> matrix{};
    for (std::size_t i = 0; i < Size; ++i)
        std::copy_n(sums.begin() + static_cast<std::ptrdiff_t>(i), Size, matrix[i].begin());
    return matrix;
}

} // namespace

template <std::size_t Degree>
CNormalEquations<Degree>::CNormalEquations(std::uint64_t sampleCount) : m_sampleCount(sampleCount)
{
    const CSquareMatrix<size> sums = PowerSums<size>(sampleCount);
    m_highestPowerSum = sums.front().back();
    m_inverseDeterminant = 1 / Determinant(sums);
    for (std::size_t row = 0; row < size; ++row) {
        for (std::size_t column = 0; column < size; ++column) {
            const double minor = Determinant(Minor(sums, row, column));
            m_cofactors[column][row] = (row + column) % 2 == 0 ? minor : -minor;
        }
    }
}

template <std::size_t Degree>
auto CNormalEquations<Degree>::Solve(const CStoredSamples& line) const -> Coefficients
{
    const auto moments = Moments<Degree>(line, m_highestPowerSum);
    Coefficients coefficients{};
    for (std::size_t column = 0; column < size; ++column) {
        double numerator = 0;
        for (std::size_t row = 0; row < size; ++row)
            numerator += m_cofactors[column][row] * moments[row];
        coefficients[column] = numerator * m_inverseDeterminant;
    }
    return coefficients;
}

template <std::size_t Degree>
auto CNormalEquations<Degree>::ForLength(std::uint64_t sampleCount) -> const CNormalEquations&
{
    constexpr std::size_t keptLengths = 4;
    thread_local std::array<CNormalEquations, keptLengths> kept;
    thread_local std::size_t oldest = 0;
    for (const CNormalEquations& equations : kept) {
        if (equations.m_sampleCount == sampleCount)
            return equations;
    }
    CNormalEquations& made = kept[std::exchange(oldest, (oldest + 1) % keptLengths)];
    made = CNormalEquations(sampleCount);
    return made;
}

template class CNormalEquations<1>;
template class CNormalEquations<2>;
template class CNormalEquations<4>;

} // namespace veltaris::velflexlib::dataset
