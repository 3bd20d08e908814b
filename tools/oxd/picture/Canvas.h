// A picture to draw on with lines, texts and stretched images, and the file that it becomes.
#pragma once

#include "oxd/picture/PictureForm.h"
#include "oxd/picture/PictureText.h"
#include "oxd/picture/fonts/TextFonts.h"

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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

struct Point
{
    double x, y;
};

// Drawing never fails on the spot: after an error nothing more is drawn, and ToFile throws.
class Canvas
{
public:
    // All white. Lines and texts are nearly black; the machine decides on the font, so pictures with the same content
    // may differ in their letters.
    explicit Canvas(const PictureShape& shape);

    const PictureShape& Shape() const { return m_shape; }

    // Draws an image of `columns` by `rows` cells, the first row on top, stretched to fill `place`. Colours are
    // 0xAARRGGBB, multiplied by their opacity; 0 is transparent and shows the hatching that marks missing samples.
    using CellColours = std::function<std::uint32_t(int column, int row)>;
    void DrawCells(const Rectangle& place, int columns, int rows, const CellColours& colour);

    // Draws a line one pixel wide around a rectangle, just outside of it.
    void DrawFrame(const Rectangle& around);
    void DrawLine(double x, double y, double dx, double dy);

    // Draws a line through points, interrupted where a y is a NaN. For vector forms only: on others, the drawing
    // library crashes on slanting lines where it lacks memory.
    void DrawPolyline(const std::vector<Point>& points, double width, std::uint32_t colour);

    // Fills a rectangle with a colour 0xAARRGGBB; pixels at its edges take their share.
    void Fill(const Rectangle& place, std::uint32_t colour);

    // Draws a triangle that fills `place` and points up or down, of a colour 0xAARRGGBB, with an outline.
    enum class Pointing
    {
        Up,
        Down
    };
    void DrawTriangle(const Rectangle& place, Pointing pointing, std::uint32_t colour);

    // Draws a text in one line, centred on y vertically. Where it would be wider than `maxWidth`, it ends with "…".
    // What no font can show is replaced: control characters and anything that is not UTF-8. Nothing is left out of
    // `suffix`, which follows the text, such as its unit.
    void DrawText(const std::string& text, double x, double y, Anchor anchor, double maxWidth,
                  const std::string& suffix = {});

    // The same for a number, which loses no digit: it is narrowed.
    void DrawNumber(const std::string& number, double x, double y, Anchor anchor, double maxWidth);

    // As DrawText, turned to read from the bottom to the top, centred on both x and y.
    void DrawUpwardText(const std::string& text, double x, double y, double maxWidth, const std::string& suffix = {});

    // Draws what `draw` draws with that point as its origin, and `factor` times as large.
    void DrawScaled(const Point& origin, double factor, const std::function<void()>& draw);

    // The bytes of the file, with texts. Nothing can be drawn after this. Throws std::runtime_error if something could
    // not be drawn or encoded.
    std::string ToFile(const std::vector<PictureText>& texts);

private:
    void SelectFont();
    void SetColour(std::uint32_t colour);
    double WidthOf(const std::string& text);
    std::string Fitted(const std::string& text, const std::string& suffix, double maxWidth);
    double AdvanceOf(const TextFonts::Part& part);
    void ShowText(const std::string& text, double x);
    void ShowPart(const std::string& text);
    void Hatch(const Rectangle& place);

    template <auto destroy>
    struct Destroyer
    {
        void operator()(auto* object) const { destroy(object); }
    };
    using Surface = std::unique_ptr<cairo_surface_t, Destroyer<cairo_surface_destroy>>;
    using Context = std::unique_ptr<cairo_t, Destroyer<cairo_destroy>>;

    static Surface CreateSurface(const PictureShape& shape, std::string& bytes);
    static Surface DrawImage(cairo_format_t format, int columns, int rows, const CellColours& colour);

    PictureShape m_shape;
    std::unique_ptr<std::string> m_bytes; // of the file; the surface of a vector form writes them
    Surface m_surface;
    Context m_context;
    TextFonts m_fonts; // behind the surface: with fonts alone, the drawing library is not ready on Windows
};

} // namespace oxd
