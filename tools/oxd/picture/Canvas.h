// A picture to draw on with lines, texts and stretched images, and its PNG file.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace oxd {

// In pixels, from the top left corner of the canvas; x grows to the right and y downwards.
struct Rectangle
{
    double x, y, width, height;
};

// Which point of a text is put where the caller says.
enum class Anchor
{
    Begin,
    Middle,
    End
};

// Drawing never fails on the spot: after an error nothing more is drawn, and ToPng throws.
class Canvas
{
public:
    // All white. Lines and texts are nearly black; the machine decides on the font, so pictures with the same content
    // may differ in their letters.
    Canvas(int width, int height);

    // Draws an image of `columns` by `rows` cells, the first row on top, stretched to fill `place`. Colours are
    // 0xAARRGGBB, multiplied by their opacity; 0 is transparent and shows the hatching that marks missing samples.
    using CellColours = std::function<std::uint32_t(int column, int row)>;
    void DrawCells(const Rectangle& place, int columns, int rows, const CellColours& colour);

    // Draws a line one pixel wide around a rectangle, just outside of it.
    void DrawFrame(const Rectangle& around);
    void DrawLine(double x, double y, double dx, double dy);

    // Draws a text in one line, centred on y vertically and narrowed where it would be wider than `maxWidth`. What no
    // font can show is replaced: control characters and anything that is not UTF-8.
    void DrawText(const std::string& text, double x, double y, Anchor anchor, double maxWidth);

    // The same turned to read from the bottom to the top, centred on both x and y.
    void DrawUpwardText(const std::string& text, double x, double y, double maxWidth);

    // The bytes of a PNG file. Throws std::runtime_error if something could not be drawn or encoded.
    std::string ToPng() const;

private:
    void SelectFont();
    void ShowText(const std::string& text);
    void Hatch(const Rectangle& place);

    template <auto destroy>
    struct Destroyer
    {
        void operator()(auto* object) const { destroy(object); }
    };
    using Surface = std::unique_ptr<cairo_surface_t, Destroyer<cairo_surface_destroy>>;
    using Context = std::unique_ptr<cairo_t, Destroyer<cairo_destroy>>;

    static Surface DrawImage(cairo_format_t format, int columns, int rows, const CellColours& colour);

    Surface m_surface;
    Context m_context;
};

} // namespace oxd
