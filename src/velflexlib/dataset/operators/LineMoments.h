// The sums that a polynomial is fitted to a line by.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"

#include <array>
#include <cstddef>

namespace veltaris::velflexlib::dataset {

// Sums of v x^k over all samples v with their index x, for k = 0 .. Degree. These are doubles, added in ascending order
// of x: rounding depends on that order, unless nothing is rounded. `powerSum` is the sum of x^Degree.
template <std::size_t Degree>
std::array<double, Degree + 1> Moments(const CStoredSamples& line, double powerSum);

extern template std::array<double, 2> Moments<1>(const CStoredSamples& line, double powerSum);
extern template std::array<double, 3> Moments<2>(const CStoredSamples& line, double powerSum);
extern template std::array<double, 5> Moments<4>(const CStoredSamples& line, double powerSum);

} // namespace veltaris::velflexlib::dataset
