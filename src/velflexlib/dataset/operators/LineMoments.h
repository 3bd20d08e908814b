// The moments of a line, which are the sums that a polynomial is fitted to it by. They are always those that adding up
// doubles in ascending order of the index gives, but a faster way is taken for lines where that makes no difference.
//
// Thread-safe as long as nobody changes the line meanwhile.
#pragma once

#include "velflexlib/dataset/samples/SampleBlock.h"

#include <array>
#include <cstddef>

namespace veltaris::velflexlib::dataset {

// The sums of v x^k over all samples v with their index x, for k = 0 .. Degree. They are added as doubles in ascending
// order of x, which decides how they are rounded. `powerSum` is the sum of x^Degree over all indices.
template <std::size_t Degree>
std::array<double, Degree + 1> Moments(const CStoredSamples& line, double powerSum);

extern template std::array<double, 2> Moments<1>(const CStoredSamples& line, double powerSum);
extern template std::array<double, 3> Moments<2>(const CStoredSamples& line, double powerSum);
extern template std::array<double, 5> Moments<4>(const CStoredSamples& line, double powerSum);

} // namespace veltaris::velflexlib::dataset
