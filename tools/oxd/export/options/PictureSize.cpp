#include "oxd/export/options/PictureSize.h"

#include "oxd/picture/PictureForm.h"
#include "oxd/system/Failure.h"
#include "velstdlib/math/Round.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace oxd {

namespace {

using veltaris::velstdlib::math::vel_round;

constexpr double leastPlot = 32;     // pixels
constexpr double mostPixels = 16384; // of a file, in each direction

struct LengthUnit
{
    std::string_view name;
    double perInch;
};
constexpr std::array units{LengthUnit{"", pixelsPerInch}, LengthUnit{"px", pixelsPerInch},
                           LengthUnit{"mm", 25.4},        LengthUnit{"cm", 2.54},
                           LengthUnit{"in", 1},           LengthUnit{"pt", 72}};

// In pixels; nothing for what is no length.
std::optional<double> ParseLength(std::string_view text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    const auto* const unit = std::ranges::find(units, std::string_view(rest, end), &LengthUnit::name);
    const bool isLength = error == std::errc() && unit != units.end() && std::isfinite(number) && number > 0;
    return isLength ? std::optional(number / unit->perInch * pixelsPerInch) : std::nullopt;
}

} // namespace

PictureSize ParseSize(std::string_view text)
{
    // The "x" of "px" is none that separates.
    std::size_t by = text.find('x');
    by = by != std::string_view::npos && by > 0 && text[by - 1] == 'p' ? text.find('x', by + 1) : by;
    const bool isPair = by != std::string_view::npos;
    const auto width = ParseLength(text.substr(0, by));
    const auto height = isPair ? ParseLength(text.substr(by + 1)) : std::nullopt;
    if (!width || (isPair && !height)) {
        throw Failure(ExitCode::Usage, "size \"" + std::string(text) + "\"",
                      "is none such as 800x600 in pixels, 85mm or 85mmx60mm");
    }
    return {*width, height};
}

Extent PlotWithin(const PictureSize& size, const Extent& margins, double ratio, double fineness)
{
    double width = size.width - static_cast<double>(margins.columns);
    double height = width * ratio;
    if (size.height) {
        height = std::min(height, *size.height - static_cast<double>(margins.rows));
        width = height / ratio;
    }
    const double largest =
        fineness * std::max(width + static_cast<double>(margins.columns), height + static_cast<double>(margins.rows));
    if (std::min(width, height) < leastPlot || largest > mostPixels) {
        throw Failure(ExitCode::Usage, "size",
                      largest > mostPixels ? "a picture of more than 16384 pixels cannot be drawn"
                                           : "there is no room for the picture beside its axes");
    }
    const auto pixels = [](double length) { return static_cast<std::size_t>(vel_round(length)); };
    return {pixels(width), pixels(height)};
}

} // namespace oxd
