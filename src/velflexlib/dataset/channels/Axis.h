// The three axes of a channel.
#pragma once

#include <cstddef>
#include <string>

namespace veltaris::velflexlib::dataset {

// Indices of a channel's axes.
inline constexpr std::size_t pointAxis = 0;
inline constexpr std::size_t lineAxis = 1;
inline constexpr std::size_t signalAxis = 2;

// What an axis is called and which physical values it spans. A plain value: whoever owns it guards it.
struct CAxis
{
    std::string name;
    std::string unit;
    double min = 0; // physical value of the first point, on the signal axis that of the lowest raw sample
    double range = 0;
};

} // namespace veltaris::velflexlib::dataset
