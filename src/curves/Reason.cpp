#include "curves/Reason.h"

#include <array>
#include <cstddef>

namespace veltaris::curves {

namespace {

constexpr std::array<std::string_view, reasonCount> texts{
    "there is a value",
    "the axis is not finite or does not rise or fall",
    "an option is outside of its bounds",
    "no point was acquired",
    "too few points were acquired",
    "the range holds no point of the curve",
    "the signal is saturated",
    "there is no straight baseline",
    "there is no contact",
    "there is no adhesion above the noise",
    "sensitivity or spring constant is not known",
    "the line cannot be read",
};

} // namespace

std::string_view TextOf(Reason reason)
{
    const auto index = static_cast<std::size_t>(reason);
    return index < texts.size() ? texts[index] : "unknown reason";
}

} // namespace veltaris::curves
