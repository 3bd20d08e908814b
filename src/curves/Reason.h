// Why a quantity of a curve has no value. Every result states one of these; there is no number where there is none.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace veltaris::curves {

// The numbers are those of the C interface: they are stable for good, and one that is given up is not used again.
enum class Reason : std::int32_t
{
    None = 0, // there is a value
    BadAxis = 1,
    BadOptions = 2,
    NothingAcquired = 3,
    TooFewPoints = 4,
    RangeOutside = 5,
    Saturated = 6,
    NoBaseline = 7,
    NoContact = 8,
    NoAdhesion = 9,
    NotCalibrated = 10,
    Unreadable = 11, // of files alone
};

inline constexpr std::int32_t reasonCount = 12;

// What stands for a number where there is none.
inline constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

// What a reason means, as a phrase that follows "No value: ", such as "no point was acquired". The text lives as long
// as the program. May be called by any number of threads.
std::string_view TextOf(Reason reason);

} // namespace veltaris::curves
