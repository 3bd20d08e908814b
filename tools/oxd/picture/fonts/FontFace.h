// The fonts of texts in pictures.
#pragma once

#include <cairo.h>

#include <string>
#include <vector>

namespace oxd {

// What CreateFontFace takes: plain fonts without serifs, the best first, and behind them those with other scripts.
// Which there are depends on the machine; there may be none. Throws std::bad_alloc, and std::system_error if the
// machine's fonts cannot be found.
std::vector<std::string> FindFonts();

// A font for the caller to destroy, or null if it is damaged. Throws std::bad_alloc, and std::system_error if it cannot
// be read: another font because of a passing trouble would be another picture.
cairo_font_face_t* CreateFontFace(const std::string& font);

// Throws std::bad_alloc if a font was drawn with less memory than it asked for since the last call, so that letters may
// look different.
void RequireWholeLetters();

} // namespace oxd
