// Rounding that notices what cannot be rounded.
#pragma once

#include <boost/assert/source_location.hpp>

#include <cstdint>

namespace veltaris::velstdlib::math {

// The integer nearest to the value; halves are rounded away from zero. A NaN, an infinity and what is beyond 64 bits
// throw boost::math::rounding_error, which is a std::runtime_error, raised at `where`: the caller's place, by default.
std::int64_t vel_round(double value, const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace veltaris::velstdlib::math
