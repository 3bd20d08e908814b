// Least-squares fits of polynomials to lines of equidistant samples.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltaris::velflexlib::dataset {

template <std::size_t Size>
using CSquareMatrix = std::array<std::array<double, Size>, Size>;

// The normal equations A c = b for the coefficients c of the polynomial that fits the points (0, v0), (1, v1), ...,
// (n - 1, vn-1) best, solved by Cramer's rule: coefficient k is det(A with column k replaced by b) / det(A). A holds
// the sums of powers of x, b the moments of the line. Since A depends on n alone, and a determinant is linear in each
// of its columns, the cofactors of A and its determinant are computed once for all lines of one length. What is left to
// do for each line are its moments and one product of a matrix with them.
//
// Invariant: with at least as many samples as coefficients, det(A) is not 0. Not thread-safe to assign to: what
// ForLength() returns belongs to the calling thread.
template <std::size_t Degree>
class CNormalEquations
{
public:
    static constexpr std::size_t size = Degree + 1;
    using Coefficients = std::array<double, size>;

    // Equations for lines without samples, which have no solution.
    CNormalEquations() = default;
    // There must be at least as many samples as coefficients.
    explicit CNormalEquations(std::uint64_t sampleCount);

    // The coefficients in ascending order of powers. The line must have as many samples as the equations are for.
    Coefficients Solve(const CStoredSamples& line) const;

    // The equations for lines of this length, which must not be 0. Each thread keeps the latest few of each degree: the
    // result is valid until the same thread asks for equations of other lengths.
    static const CNormalEquations& ForLength(std::uint64_t sampleCount);

private:
    std::uint64_t m_sampleCount = 0;
    double m_highestPowerSum = 0; // the sum of x^Degree
    double m_inverseDeterminant = 0;
    CSquareMatrix<size> m_cofactors{}; // [column][row]
};

extern template class CNormalEquations<1>;
extern template class CNormalEquations<2>;
extern template class CNormalEquations<4>;

} // namespace veltaris::velflexlib::dataset
