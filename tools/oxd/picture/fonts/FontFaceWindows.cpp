#include "oxd/picture/fonts/FontFace.h"

namespace oxd {

std::vector<std::string> FindFonts()
{
    return {"sans-serif", "Microsoft YaHei", "MS Gothic", "Malgun Gothic", "SimSun", "Segoe UI Symbol"};
}

// The system has another font for the name of one that it has not.
cairo_font_face_t* CreateFontFace(const std::string& font)
{
    return cairo_toy_font_face_create(font.c_str(), CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
}

void RequireWholeLetters()
{
}

} // namespace oxd
