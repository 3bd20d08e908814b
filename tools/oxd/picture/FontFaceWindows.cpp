#include "oxd/picture/FontFace.h"

namespace oxd {

cairo_font_face_t* CreateFontFace()
{
    return cairo_toy_font_face_create("sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
}

void RequireWholeLetters()
{
}

} // namespace oxd
