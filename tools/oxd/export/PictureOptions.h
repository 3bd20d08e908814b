// How the user wants a picture to look.
#pragma once

#include "oxd/export/Contrast.h"
#include "oxd/export/LineChoice.h"
#include "oxd/picture/ColourMap.h"

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

    bool IsDefault() const
    {
        return !contrast && colour == colourMaps.front().colour && !title && axes && !firstLineOnTop && !curves &&
               lines.empty();
    }
};

} // namespace oxd
