// The font of texts in pictures.
#pragma once

#include <cairo.h>

namespace oxd {

// A plain font without serifs, for the caller to destroy. Which one depends on what the machine has. Throws
// std::bad_alloc, and std::system_error if its fonts cannot be found. Where none is known, the drawing library chooses.
cairo_font_face_t* CreateFontFace();

// Throws std::bad_alloc if a font was drawn with less memory than it asked for since the last call, so that letters may
// look different.
void RequireWholeLetters();

} // namespace oxd
