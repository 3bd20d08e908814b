// The font is looked for here and not by the system's font configuration: that ends the process, or silently chooses
// another font, where it is refused memory.
#include "oxd/picture/FontFace.h"

#include "oxd/picture/FontFile.h"

#include <cairo-ft.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H

#include <cstdlib>
#include <new>
#include <utility>

namespace oxd {

namespace {

bool lackedMemory = false;

void* Note(void* block)
{
    lackedMemory |= block == nullptr;
    return block;
}

// NOLINTBEGIN(cppcoreguidelines-no-malloc): the font library is written in C
void* Allocate(FT_Memory, long size)
{
    return Note(std::malloc(static_cast<std::size_t>(size)));
}

void* Reallocate(FT_Memory, long, long size, void* block)
{
    return Note(std::realloc(block, static_cast<std::size_t>(size)));
}

void Free(FT_Memory, void* block)
{
    std::free(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

// Lives as long as the process, as do the fonts that the drawing library keeps.
FT_Library Fonts()
{
    static FT_MemoryRec_ memory{nullptr, Allocate, Free, Reallocate};
    static FT_Library library = nullptr;
    if (library == nullptr && FT_New_Library(&memory, &library) == 0) {
        FT_Add_Default_Modules(library);
        FT_Set_Default_Properties(library);
    }
    return library;
}

cairo_font_face_t* DefaultFace()
{
    return cairo_toy_font_face_create("sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
}

void CloseFace(void* face)
{
    FT_Done_Face(static_cast<FT_Face>(face));
}

} // namespace

cairo_font_face_t* CreateFontFace()
{
    static const cairo_user_data_key_t ofFace{};
    const std::string file = FindFontFile();
    FT_Face face = nullptr;
    if (file.empty() || FT_New_Face(Fonts(), file.c_str(), 0, &face) != 0) {
        RequireWholeLetters();
        return DefaultFace();
    }
    cairo_font_face_t* const font = cairo_ft_font_face_create_for_ft_face(face, 0);
    if (cairo_font_face_set_user_data(font, &ofFace, face, CloseFace) != CAIRO_STATUS_SUCCESS) {
        cairo_font_face_destroy(font);
        throw std::bad_alloc();
    }
    return font;
}

void RequireWholeLetters()
{
    if (std::exchange(lackedMemory, false)) {
        throw std::bad_alloc();
    }
}

} // namespace oxd
