// How the user wants a picture to look.
#pragma once

#include "oxd/export/options/Contrast.h"
#include "oxd/export/options/LineChoice.h"
#include "oxd/export/options/PictureSize.h"
#include "oxd/export/options/Quantity.h"
#include "oxd/picture/ColourMap.h"
#include "oxd/picture/PictureForm.h"

#include <optional>
#include <string>
#include <vector>

namespace oxd {

struct PictureOptions
{
    std::optional<Contrast> contrast = {}; // by default, what suits the kind of picture
    ColourOf colour = colourMaps.front().colour;
    std::optional<std::string> title = {}; // instead of the names of group, channel and operator
    bool axes = true;                      // else the samples alone
    bool firstLineOnTop = false;           // else at the bottom, where the line axis begins
    std::optional<bool> curves = {};       // or an image; by default, what suits the channel
    std::vector<LineSpan> lines = {};      // of a picture of curves; by default, all
    std::optional<Quantity> offset = {};   // of each line above the one before, in a picture of curves
    bool scaleBar = false;                 // in an image
    std::optional<PictureSize> size = {};  // of the whole; by default, what suits the number of samples
    std::optional<double> resolution = {}; // see PictureShape

    // What the suffix of the output says.
    PictureForm form = PictureForm::Png;

    bool IsDefault() const
    {
        return !contrast && colour == colourMaps.front().colour && !title && axes && !firstLineOnTop && !curves &&
               lines.empty() && !offset && !scaleBar && !size && !resolution;
    }

    // Of a picture of these pixels.
    PictureShape ShapeOf(int width, int height) const { return {width, height, form, resolution}; }
};

} // namespace oxd
