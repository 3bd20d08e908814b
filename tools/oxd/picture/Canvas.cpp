#include "oxd/picture/Canvas.h"

#include "oxd/picture/FontFace.h"
#include "oxd/system/Text.h"

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>

namespace oxd {

namespace {

constexpr double fontSize = 14;
constexpr double ink = 0.1; // nearly black

// Drawing calls need no checks of their own: after an error the context draws nothing more and keeps the error.
void Require(cairo_status_t status)
{
    if (status == CAIRO_STATUS_NO_MEMORY) {
        throw std::bad_alloc();
    }
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(std::string("the picture cannot be drawn: ") + cairo_status_to_string(status));
    }
}

cairo_status_t Append(void* png, const unsigned char* bytes, unsigned int size)
{
    try {
        static_cast<std::string*>(png)->append(reinterpret_cast<const char*>(bytes), size);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

// Restores the state of the context at the end of its scope, whatever was drawn meanwhile.
class Saved
{
public:
    explicit Saved(cairo_t* context) : m_context(context) { cairo_save(context); }
    ~Saved() { cairo_restore(m_context); }
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

private:
    cairo_t* m_context;
};

} // namespace

Canvas::Canvas(int width, int height)
    : m_surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)), m_context(cairo_create(m_surface.get()))
{
    cairo_set_source_rgb(m_context.get(), 1, 1, 1);
    cairo_paint(m_context.get());
    cairo_set_source_rgb(m_context.get(), ink, ink, ink);
    cairo_set_line_width(m_context.get(), 1);
    SelectFont();
}

// Letters keep their shapes and are no more than moved to whole pixels.
void Canvas::SelectFont()
{
    const std::unique_ptr<cairo_font_face_t, Destroyer<cairo_font_face_destroy>> font(CreateFontFace());
    const std::unique_ptr<cairo_font_options_t, Destroyer<cairo_font_options_destroy>> options(
        cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    Require(cairo_font_options_status(options.get()));
    cairo_set_font_face(m_context.get(), font.get());
    cairo_set_font_options(m_context.get(), options.get());
    cairo_set_font_size(m_context.get(), fontSize);
}

void Canvas::DrawCells(const Rectangle& place, int columns, int rows,
                       const std::function<std::uint32_t(int column, int row)>& colour)
{
    const Surface image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, columns, rows));
    Require(cairo_surface_status(image.get()));
    for (int row = 0; row < rows; ++row) {
        unsigned char* const begin = cairo_image_surface_get_data(image.get()) +
                                     static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(image.get());
        auto* const pixels = reinterpret_cast<std::uint32_t*>(begin);
        for (int column = 0; column < columns; ++column) {
            pixels[column] = colour(column, row);
        }
    }
    cairo_surface_mark_dirty(image.get());

    Hatch(place);
    const Saved saved(m_context.get());
    cairo_rectangle(m_context.get(), place.x, place.y, place.width, place.height);
    cairo_translate(m_context.get(), place.x, place.y);
    cairo_scale(m_context.get(), place.width / columns, place.height / rows);
    cairo_set_source_surface(m_context.get(), image.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(m_context.get()), CAIRO_FILTER_NEAREST);
    cairo_pattern_set_extend(cairo_get_source(m_context.get()), CAIRO_EXTEND_PAD);
    cairo_fill(m_context.get());
}

void Canvas::Hatch(const Rectangle& place)
{
    constexpr double distance = 8;
    constexpr double lightGrey = 0.75;
    const Saved saved(m_context.get());
    cairo_rectangle(m_context.get(), place.x, place.y, place.width, place.height);
    cairo_clip(m_context.get());
    cairo_set_source_rgb(m_context.get(), lightGrey, lightGrey, lightGrey);
    for (int i = 0; i * distance < place.width + place.height; ++i) {
        DrawLine(place.x + i * distance, place.y, -place.height, place.height);
    }
}

void Canvas::DrawFrame(const Rectangle& around)
{
    constexpr double halfLine = 0.5; // puts the line on the pixels around the rectangle
    cairo_rectangle(m_context.get(), around.x - halfLine, around.y - halfLine, around.width + 1, around.height + 1);
    cairo_stroke(m_context.get());
}

void Canvas::DrawLine(double x, double y, double dx, double dy)
{
    cairo_move_to(m_context.get(), x, y);
    cairo_rel_line_to(m_context.get(), dx, dy);
    cairo_stroke(m_context.get());
}

void Canvas::DrawText(const std::string& text, double x, double y, Anchor anchor, double maxWidth)
{
    const std::string drawable = ValidUtf8(Printable(text));
    cairo_text_extents_t extents;
    cairo_font_extents_t font;
    cairo_text_extents(m_context.get(), drawable.c_str(), &extents);
    cairo_font_extents(m_context.get(), &font);
    const double length = extents.x_advance;
    const double narrowing = length > maxWidth ? maxWidth / length : 1;
    const double lead = anchor == Anchor::Begin ? 0 : anchor == Anchor::Middle ? length / 2 : length;

    const Saved saved(m_context.get());
    cairo_translate(m_context.get(), x, y + (font.ascent - font.descent) / 2);
    cairo_scale(m_context.get(), narrowing, 1);
    cairo_move_to(m_context.get(), -lead, 0);
    cairo_show_text(m_context.get(), drawable.c_str());
}

void Canvas::DrawUpwardText(const std::string& text, double x, double y, double maxWidth)
{
    constexpr double quarterTurn = -1.5707963267948966;
    const Saved saved(m_context.get());
    cairo_translate(m_context.get(), x, y);
    cairo_rotate(m_context.get(), quarterTurn);
    DrawText(text, 0, 0, Anchor::Middle, maxWidth);
}

std::string Canvas::ToPng() const
{
    RequireWholeLetters();
    Require(cairo_status(m_context.get()));
    std::string png;
    Require(cairo_surface_write_to_png_stream(m_surface.get(), Append, &png));
    return png;
}

} // namespace oxd
