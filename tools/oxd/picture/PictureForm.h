// What kind of file a picture becomes, how large and how fine.
#pragma once

#include <optional>

namespace oxd {

enum class PictureForm
{
    Png,
    Svg,
    Pdf
};

// A pixel of a picture is 1/96 of an inch, as for browsers, whatever it becomes.
inline constexpr double pixelsPerInch = 96;

// A plain value.
struct PictureShape
{
    int width = 0; // in pixels
    int height = 0;
    PictureForm form = PictureForm::Png;
    std::optional<double> resolution = {}; // of a PNG file, in its own pixels per inch; 96, unsaid, by default

    bool IsVector() const { return form != PictureForm::Png; }
    // Pixels of the file for a pixel of the picture.
    double Fineness() const { return IsVector() ? 1 : resolution.value_or(pixelsPerInch) / pixelsPerInch; }
};

} // namespace oxd
