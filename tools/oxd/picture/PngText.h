// What PNG files hold beside their picture.
#pragma once

#include "oxd/picture/PictureText.h"

#include <optional>
#include <string>
#include <vector>

namespace oxd {

// The bytes of a PNG file with these texts, uncompressed, in front of its picture, and with its resolution in pixels
// per inch where that is given. `png` must be sound.
std::string WithTexts(const std::string& png, const std::vector<PictureText>& texts,
                      std::optional<double> resolution = {});

} // namespace oxd
