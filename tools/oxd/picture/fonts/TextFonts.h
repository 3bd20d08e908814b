// Which font draws which letter of a text.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace oxd {

// The fonts of a machine, the best first, each opened when it is needed first. ASCII is always in the best one; any
// other letter in the first font that has it, or in the best one if none has. Letters are put side by side as they
// come: scripts whose letters join or run from right to left are not set as they should be. Not thread-safe.
class TextFonts
{
public:
    // Throws as FindFonts and CreateFontFace.
    TextFonts();

    cairo_font_face_t* Best() const { return m_faces.front().get(); }

    struct Part
    {
        cairo_font_face_t* font; // of this object
        std::string text;
    };

    // The parts of a text in UTF-8 from its begin, each in one font. Throws std::bad_alloc.
    std::vector<Part> Split(const std::string& text);

private:
    struct Destroyer
    {
        void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    };

    cairo_font_face_t* FontOf(const std::string& letter);
    cairo_font_face_t* FirstWith(const std::string& letter);
    bool OpenNext();

    std::vector<std::string> m_unopened; // the best last
    std::vector<std::unique_ptr<cairo_font_face_t, Destroyer>> m_faces;
    std::map<std::string, cairo_font_face_t*> m_known; // the fonts of letters beyond ASCII
};

} // namespace oxd
