#include "oxd/picture/fonts/TextFonts.h"

#include "oxd/picture/fonts/FontFace.h"

#include <algorithm>
#include <new>

namespace oxd {

namespace {

struct Destroyer
{
    void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(cairo_glyph_t* glyphs) const { cairo_glyph_free(glyphs); }
};

using ScaledFont = std::unique_ptr<cairo_scaled_font_t, Destroyer>;

// The size does not matter.
ScaledFont OfSomeSize(cairo_font_face_t* face)
{
    constexpr double size = 14;
    const std::unique_ptr<cairo_font_options_t, Destroyer> options(cairo_font_options_create());
    cairo_matrix_t scale;
    cairo_matrix_t identity;
    cairo_matrix_init_scale(&scale, size, size);
    cairo_matrix_init_identity(&identity);
    return ScaledFont(cairo_scaled_font_create(face, &scale, &identity, options.get()));
}

// The drawing library has the shape 0 for what a font lacks.
bool Has(cairo_font_face_t* face, const std::string& letter)
{
    const ScaledFont font = OfSomeSize(face);
    cairo_glyph_t* found = nullptr;
    int count = 0;
    const cairo_status_t status = cairo_scaled_font_text_to_glyphs(
        font.get(), 0, 0, letter.c_str(), static_cast<int>(letter.size()), &found, &count, nullptr, nullptr, nullptr);
    const std::unique_ptr<cairo_glyph_t, Destroyer> glyphs(found);
    if (status == CAIRO_STATUS_NO_MEMORY) {
        throw std::bad_alloc();
    }
    return status == CAIRO_STATUS_SUCCESS &&
           std::none_of(found, found + count, [](const cairo_glyph_t& glyph) { return glyph.index == 0; });
}

// The letter that begins at this place of a text in UTF-8: what follows its first byte has 10 in the highest bits.
std::string LetterAt(const std::string& text, std::size_t place)
{
    const auto isFurther = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(place);
    return {begin, std::find_if_not(begin + 1, text.end(), isFurther)};
}

} // namespace

TextFonts::TextFonts() : m_unopened(FindFonts())
{
    std::ranges::reverse(m_unopened);
    while (m_faces.empty() && OpenNext()) {
    }
    if (m_faces.empty()) { // the drawing library chooses
        m_faces.emplace_back(
            cairo_toy_font_face_create("sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL));
    }
}

// Whether there was another one, which may not be readable.
bool TextFonts::OpenNext()
{
    if (m_unopened.empty()) {
        return false;
    }
    if (cairo_font_face_t* const face = CreateFontFace(m_unopened.back())) {
        m_faces.emplace_back(face);
    }
    m_unopened.pop_back();
    return true;
}

cairo_font_face_t* TextFonts::FirstWith(const std::string& letter)
{
    std::size_t tried = 0;
    do {
        for (; tried < m_faces.size(); ++tried) {
            if (Has(m_faces[tried].get(), letter)) {
                return m_faces[tried].get();
            }
        }
    } while (OpenNext());
    return Best();
}

cairo_font_face_t* TextFonts::FontOf(const std::string& letter)
{
    if (letter.size() == 1) {
        return Best();
    }
    const auto known = m_known.find(letter);
    return known != m_known.end() ? known->second : m_known.emplace(letter, FirstWith(letter)).first->second;
}

std::vector<TextFonts::Part> TextFonts::Split(const std::string& text)
{
    std::vector<Part> parts;
    for (std::size_t place = 0; place < text.size();) {
        const std::string letter = LetterAt(text, place);
        cairo_font_face_t* const font = FontOf(letter);
        if (parts.empty() || parts.back().font != font) {
            parts.push_back({font, ""});
        }
        parts.back().text += letter;
        place += letter.size();
    }
    return parts;
}

} // namespace oxd
