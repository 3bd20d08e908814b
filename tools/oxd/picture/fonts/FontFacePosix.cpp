// The font is looked for here and not by the system's font configuration: that ends the process, or silently chooses
// another font, where it is refused memory.
#include "oxd/picture/fonts/FontFace.h"

#include "oxd/picture/fonts/FontFile.h"

#include <cairo-ft.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H

#include <cstdlib>
#include <new>
#include <system_error>
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

void CloseFace(void* face)
{
    FT_Done_Face(static_cast<FT_Face>(face));
}

} // namespace

std::vector<std::string> FindFonts()
{
    return FindFontFiles();
}

cairo_font_face_t* CreateFontFace(const std::string& font)
{
    static const cairo_user_data_key_t ofFace{};
    FT_Face face = nullptr;
    const FT_Error error = FT_New_Face(Fonts(), font.c_str(), 0, &face);
    RequireWholeLetters();
    if (error == FT_Err_Cannot_Open_Resource || error == FT_Err_Cannot_Open_Stream) {
        throw std::system_error(std::make_error_code(std::errc::io_error), "the font " + font + " cannot be read");
    }
    if (error != 0) {
        return nullptr;
    }
    cairo_font_face_t* const created = cairo_ft_font_face_create_for_ft_face(face, 0);
    if (cairo_font_face_set_user_data(created, &ofFace, face, CloseFace) != CAIRO_STATUS_SUCCESS) {
        cairo_font_face_destroy(created);
        throw std::bad_alloc();
    }
    return created;
}

void RequireWholeLetters()
{
    if (std::exchange(lackedMemory, false)) {
        throw std::bad_alloc();
    }
}

} // namespace oxd
