#include "oxd/picture/Canvas.h"

#include "oxd/picture/PngText.h"
#include "oxd/picture/VectorTexts.h"
#include "oxd/picture/fonts/FontFace.h"
#include "oxd/system/RequireMemory.h"
#include "oxd/system/Text.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

namespace oxd {

namespace {

constexpr double fontSize = 14;
constexpr double ink = 0.1; // nearly black

std::uint32_t* RowOf(cairo_surface_t* image, int row)
{
    const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(image);
    return reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image) + offset);
}

std::uint32_t Pixel(cairo_surface_t* image, int column, int row)
{
    cairo_surface_flush(image);
    return RowOf(image, row)[column] & 0xFFFFFF;
}

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

cairo_status_t Append(void* file, const unsigned char* bytes, unsigned int size)
{
    try {
        static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(bytes), size);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

// What the drawing library keeps to use it again, it has to have first: where it lacks memory for that, it draws
// nothing and reports no error. So the first strokes are on a surface of their own, and looked at.
void Prepare()
{
    constexpr int size = 8;
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, size, size);
    cairo_t* const context = cairo_create(surface);
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_move_to(context, size / 2.0 + 0.25,
                  2); // NOLINT(readability-magic-numbers): between pixels, as most lines are
    cairo_rel_line_to(context, 0, size / 2.0);
    cairo_stroke(context);
    const cairo_status_t status = cairo_status(context);
    const bool isDrawn = status == CAIRO_STATUS_SUCCESS && Pixel(surface, size / 2, size / 2) != 0;
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    Require(isDrawn ? status : CAIRO_STATUS_NO_MEMORY);
}

// Where the drawing library lacks memory while it writes a vector form, it crashes or leaves letters away.
constexpr std::size_t roomForVectors = std::size_t{64} << 20U;

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

Canvas::Canvas(const PictureShape& shape)
    : m_shape(shape), m_bytes(std::make_unique<std::string>()), m_surface(CreateSurface(shape, *m_bytes)),
      m_context(cairo_create(m_surface.get()))
{
    Prepare();
    cairo_set_source_rgb(m_context.get(), 1, 1, 1);
    cairo_paint(m_context.get());
    cairo_set_source_rgb(m_context.get(), ink, ink, ink);
    cairo_set_line_width(m_context.get(), 1);
    SelectFont();
}

Canvas::Surface Canvas::CreateSurface(const PictureShape& shape, std::string& bytes)
{
    constexpr double point = 72 / pixelsPerInch; // of which an inch has 72, and which PDF counts in
    const double fineness = shape.form == PictureForm::Pdf ? point : shape.Fineness();
    const double width = shape.width * fineness;
    const double height = shape.height * fineness;
    Surface surface;
    if (shape.form == PictureForm::Svg) {
        surface.reset(cairo_svg_surface_create_for_stream(Append, &bytes, width, height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    } else if (shape.form == PictureForm::Pdf) {
        surface.reset(cairo_pdf_surface_create_for_stream(Append, &bytes, width, height));
    } else {
        const auto pixels = [](double size) { return static_cast<int>(size); };
        surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(width), pixels(height)));
    }
    Require(cairo_surface_status(surface.get()));
    if (fineness != 1) {
        cairo_surface_set_device_scale(surface.get(), fineness, fineness);
    }
    return surface;
}

// Letters keep their shapes and are no more than moved to whole pixels.
void Canvas::SelectFont()
{
    const std::unique_ptr<cairo_font_options_t, Destroyer<cairo_font_options_destroy>> options(
        cairo_font_options_create());
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    Require(cairo_font_options_status(options.get()));
    cairo_set_font_face(m_context.get(), m_fonts.Best());
    cairo_set_font_options(m_context.get(), options.get());
    cairo_set_font_size(m_context.get(), fontSize);
}

Canvas::Surface Canvas::DrawImage(cairo_format_t format, int columns, int rows, const CellColours& colour)
{
    Surface image(cairo_image_surface_create(format, columns, rows));
    Require(cairo_surface_status(image.get()));
    for (int row = 0; row < rows; ++row) {
        std::uint32_t* const pixels = RowOf(image.get(), row);
        for (int column = 0; column < columns; ++column) {
            pixels[column] = colour(column, row);
        }
    }
    cairo_surface_mark_dirty(image.get());
    return image;
}

void Canvas::DrawCells(const Rectangle& place, int columns, int rows, const CellColours& colour)
{
    const Surface image = DrawImage(CAIRO_FORMAT_ARGB32, columns, rows, colour);
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

// Fills with a tile. Slanting lines would take shapes other than rectangles, on which the drawing library crashes where
// it lacks memory.
void Canvas::Hatch(const Rectangle& place)
{
    constexpr int tile = 8;
    constexpr std::array<std::uint32_t, tile> greys{0xEFEFEF, 0xFFFFFF, 0xFFFFFF, 0xFFFFFF,
                                                    0xFFFFFF, 0xFFFFFF, 0xEFEFEF, 0xC5C5C5}; // across a line
    const Surface image = DrawImage(CAIRO_FORMAT_RGB24, tile, tile, [&greys](int column, int row) {
        return greys.at(static_cast<std::size_t>(column + row) % tile);
    });
    const Saved saved(m_context.get());
    cairo_set_source_surface(m_context.get(), image.get(), place.x, place.y);
    cairo_pattern_set_filter(cairo_get_source(m_context.get()), CAIRO_FILTER_NEAREST);
    cairo_pattern_set_extend(cairo_get_source(m_context.get()), CAIRO_EXTEND_REPEAT);
    cairo_rectangle(m_context.get(), place.x, place.y, place.width, place.height);
    cairo_fill(m_context.get());
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

void Canvas::DrawPolyline(const std::vector<Point>& points, double width, std::uint32_t colour)
{
    const Saved saved(m_context.get());
    SetColour(colour);
    cairo_set_line_width(m_context.get(), width);
    cairo_set_line_join(m_context.get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(m_context.get(), CAIRO_LINE_CAP_ROUND);
    bool isBegun = false;
    for (const Point& point : points) {
        const bool isThere = !std::isnan(point.y);
        if (isThere && !isBegun) {
            cairo_move_to(m_context.get(), point.x, point.y);
        }
        if (isThere) { // to itself at first, so that a point alone is a dot
            cairo_line_to(m_context.get(), point.x, point.y);
        }
        isBegun = isThere;
    }
    cairo_stroke(m_context.get());
}

void Canvas::DrawText(const std::string& text, double x, double y, Anchor anchor, double maxWidth,
                      const std::string& suffix)
{
    const auto shown = [](const std::string& part) { return ValidUtf8(Printable(part)); };
    DrawNumber(Fitted(shown(text), shown(suffix), maxWidth), x, y, anchor, maxWidth);
}

void Canvas::Fill(const Rectangle& place, std::uint32_t colour)
{
    const Saved saved(m_context.get());
    SetColour(colour);
    cairo_rectangle(m_context.get(), place.x, place.y, place.width, place.height);
    cairo_fill(m_context.get());
}

void Canvas::SetColour(std::uint32_t colour)
{
    constexpr double most = 255;
    const auto part = [colour](unsigned shift) { return static_cast<double>(colour >> shift & 0xFFU) / most; };
    cairo_set_source_rgb(m_context.get(), part(16), part(8), part(0));
}

// Made of a rectangle for each row of pixels: see Hatch for what the drawing library does with other shapes.
void Canvas::DrawTriangle(const Rectangle& place, Pointing pointing, std::uint32_t colour)
{
    const Saved saved(m_context.get());
    const auto drawRow = [&](int row, double inset) {
        const double width = place.width * (row + 1) / place.height - 2 * inset;
        const double y = pointing == Pointing::Up ? place.y + row : place.y + place.height - 1 - row;
        cairo_rectangle(m_context.get(), place.x + (place.width - width) / 2, y, std::max(width, 0.0), 1);
        cairo_fill(m_context.get());
    };
    for (int row = 0; row < static_cast<int>(place.height); ++row) {
        cairo_set_source_rgb(m_context.get(), ink, ink, ink);
        drawRow(row, 0);
        SetColour(colour);
        drawRow(row, 1.5); // NOLINT(readability-magic-numbers): pixels of the outline along a slanting edge
    }
}

void Canvas::DrawNumber(const std::string& number, double x, double y, Anchor anchor, double maxWidth)
{
    cairo_font_extents_t font;
    cairo_font_extents(m_context.get(), &font);
    const double length = WidthOf(number);
    const double narrowing = length > maxWidth ? maxWidth / length : 1;
    const double lead = anchor == Anchor::Begin ? 0 : anchor == Anchor::Middle ? length / 2 : length;

    const Saved saved(m_context.get());
    cairo_translate(m_context.get(), x, y + (font.ascent - font.descent) / 2);
    cairo_scale(m_context.get(), narrowing, 1);
    ShowText(number, -lead);
}

double Canvas::AdvanceOf(const TextFonts::Part& part)
{
    cairo_text_extents_t extents;
    cairo_set_font_face(m_context.get(), part.font);
    cairo_text_extents(m_context.get(), part.text.c_str(), &extents);
    return extents.x_advance;
}

double Canvas::WidthOf(const std::string& text)
{
    const Saved saved(m_context.get());
    double width = 0;
    for (const TextFonts::Part& part : m_fonts.Split(text)) {
        width += AdvanceOf(part);
    }
    return width;
}

// As much of a text as fits, and something at least.
std::string Canvas::Fitted(const std::string& text, const std::string& suffix, double maxWidth)
{
    constexpr double narrowest = 2; // pixels of a letter
    std::size_t characters = std::min(CharacterCount(text), static_cast<std::size_t>(maxWidth / narrowest));
    std::string fitted = Shortened(text, characters) + suffix;
    while (characters > 1 && WidthOf(fitted) > maxWidth) {
        fitted = Shortened(text, --characters) + suffix;
    }
    return fitted;
}

void Canvas::ShowText(const std::string& text, double x)
{
    for (const TextFonts::Part& part : m_fonts.Split(text)) {
        const double width = AdvanceOf(part); // sets its font, too
        cairo_move_to(m_context.get(), x, 0);
        ShowPart(part.text);
        x += width;
    }
}

// Leaves out what has no shape, such as blanks: where it lacks memory, the drawing library crashes on that.
void Canvas::ShowPart(const std::string& text)
{
    double x = 0;
    double y = 0;
    cairo_get_current_point(m_context.get(), &x, &y); // at a whole part of a pixel
    cairo_scaled_font_t* const font = cairo_get_scaled_font(m_context.get());
    cairo_glyph_t* found = nullptr;
    int count = 0;
    Require(cairo_scaled_font_text_to_glyphs(font, x, y, text.c_str(), static_cast<int>(text.size()), &found, &count,
                                             nullptr, nullptr, nullptr));
    const std::unique_ptr<cairo_glyph_t, Destroyer<cairo_glyph_free>> glyphs(found);
    const auto hasNoShape = [font](const cairo_glyph_t& glyph) {
        cairo_text_extents_t extents;
        cairo_scaled_font_glyph_extents(font, &glyph, 1, &extents);
        return extents.width == 0;
    };
    const cairo_glyph_t* const end = std::remove_if(found, found + count, hasNoShape);
    cairo_show_glyphs(m_context.get(), found, static_cast<int>(end - found));
    Require(cairo_scaled_font_status(font));
}

void Canvas::DrawUpwardText(const std::string& text, double x, double y, double maxWidth, const std::string& suffix)
{
    constexpr double quarterTurn = -1.5707963267948966;
    const Saved saved(m_context.get());
    cairo_translate(m_context.get(), x, y);
    cairo_rotate(m_context.get(), quarterTurn);
    DrawText(text, 0, 0, Anchor::Middle, maxWidth, suffix);
}

void Canvas::DrawScaled(const Point& origin, double factor, const std::function<void()>& draw)
{
    const Saved saved(m_context.get());
    cairo_translate(m_context.get(), origin.x, origin.y);
    cairo_scale(m_context.get(), factor, factor);
    draw();
}

std::string Canvas::ToFile(const std::vector<PictureText>& texts)
{
    RequireWholeLetters();
    Require(cairo_status(m_context.get()));
    if (m_shape.form == PictureForm::Png) {
        Require(cairo_surface_write_to_png_stream(m_surface.get(), Append, m_bytes.get()));
        return WithTexts(*m_bytes, texts, m_shape.resolution);
    }
    RequireMemory(roomForVectors);
    if (m_shape.form == PictureForm::Pdf) {
        SetPdfTexts(m_surface.get(), texts);
    }
    m_context.reset();
    cairo_surface_finish(m_surface.get());
    Require(cairo_surface_status(m_surface.get()));
    return m_shape.form == PictureForm::Svg ? WithSvgTexts(*m_bytes, texts) : std::move(*m_bytes);
}

} // namespace oxd
