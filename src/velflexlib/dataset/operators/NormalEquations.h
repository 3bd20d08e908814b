// Least-squares polynomials through lines of equidistant samples.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

template <std::size_t Size>
using CSquareMatrix = std::array<std::array<double, Size>, Size>;

// The normal equations of a polynomial through the points (0, v0), (1, v1), ... (n - 1, vn-1), solved by Cramer's rule:
// coefficient k is det(A with column k replaced by b) / det(A), where A holds sums of powers of x and b
// sums of powers of x times v. A depends on n alone, and the determinant is linear in b, so that what is left to do for
// a line are b and one product of a matrix of cofactors with it.
template <std::size_t Degree>
class CNormalEquations
{
public:
    static constexpr std::size_t size = Degree + 1;
    using Coefficients = std::array<double, size>;

    CNormalEquations() = default; // for lines of no samples, which have no solution
    // There must be as many samples as coefficients, or more.
    explicit CNormalEquations(std::uint64_t sampleCount);

    std::uint64_t GetSampleCount() const { return m_sampleCount; }

    // Coefficients by ascending power of x; there must be as many samples as the equations are for.
    Coefficients Solve(const CStoredSamples& line) const;

    // The equations for lines of this length; this thread keeps the latest few of each degree.
    static const CNormalEquations& ForLength(std::uint64_t sampleCount);

private:
    std::uint64_t m_sampleCount = 0;
    double m_highestPowerSum = 0; // that is used to compute b
    double m_inverseDeterminant = 0;
    CSquareMatrix<size> m_cofactors{}; // [column][row]
};

extern template class CNormalEquations<1>;
extern template class CNormalEquations<2>;
extern template class CNormalEquations<4>;

} // namespace veltaris::velflexlib::dataset
