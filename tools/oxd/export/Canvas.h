// A picture to draw on, in pixels from the top left, and its PNG file.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace oxd {

struct Rectangle
{
    double x, y, width, height;
};

enum class Anchor
{
    Begin,
    Middle,
    End
};

class Canvas
{
public:
    Canvas(int width, int height); // white

    // A stretched image of `columns` by `rows` cells, the first row on top. Its cells are 0xAARRGGBB; 0 lets the
    // hatching of missing samples through.
    void DrawCells(const Rectangle& place, int columns, int rows,
                   const std::function<std::uint32_t(int column, int row)>& colour);
    void DrawFrame(const Rectangle& around);
    void DrawLine(double x, double y, double dx, double dy);

    // In one line, centred on y vertically, and narrowed where it is longer than `room`.
    void DrawText(const std::string& text, double x, double y, Anchor anchor, double room);
    // The same upwards, centred on both.
    void DrawUpwardText(const std::string& text, double x, double y, double room);

    std::string ToPng() const;

private:
    void Hatch(const Rectangle& place);

    template <auto destroy>
    struct Destroyer
    {
        void operator()(auto* object) const { destroy(object); }
    };
    using Surface = std::unique_ptr<cairo_surface_t, Destroyer<cairo_surface_destroy>>;
    using Context = std::unique_ptr<cairo_t, Destroyer<cairo_destroy>>;

    Surface m_surface;
    Context m_context;
};

} // namespace oxd
