#include "velstdlib/math/Round.h"

#include <boost/math/special_functions/round.hpp>
#include <boost/throw_exception.hpp>

namespace veltaris::velstdlib::math {

std::int64_t vel_round(double value, const boost::source_location& where)
try {
    constexpr double tooLarge = 0x1p63; // which the check behind llround, being one of doubles, lets pass
    if (value == tooLarge)
        throw boost::math::rounding_error("Value too large to be rounded to 64 bits");
    return boost::math::llround(value);
} catch (const boost::math::rounding_error& error) {
    boost::throw_exception(error, where);
}

} // namespace veltaris::velstdlib::math
