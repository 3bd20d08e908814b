// What SVG and PDF files say of their picture.
#pragma once

#include "oxd/picture/PictureText.h"

#include <cairo.h>

#include <string>
#include <vector>

namespace oxd {

// The bytes of an SVG file with the text of the key "Title" as its title, and a line for each other one as its
// description. `svg` must be sound.
std::string WithSvgTexts(const std::string& svg, const std::vector<PictureText>& texts);

// Gives a surface that becomes a PDF file its title, and the other texts as its subject. The file says nothing of the
// time, so that the same picture is the same file.
void SetPdfTexts(cairo_surface_t* surface, const std::vector<PictureText>& texts);

} // namespace oxd
