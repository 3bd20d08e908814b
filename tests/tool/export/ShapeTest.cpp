// Pictures of channels of all shapes, with numbers and texts of all lengths, side by side as one.
#include "tool/ToolTest.h"
#include "tool/export/Pictures.h"

#include <cmath>

class ShapeTest : public ToolTest
{
protected:
    struct Shape
    {
        int points, lines;
        std::string name, signal; // signal axis: unit, minimum and range
        std::string width = "50e-6", height = "50e-6";
        std::string left = "0"; // of the point axis
    };

    static std::string Axis(int number, const std::string& name, const std::string& unit, const std::string& min,
                            const std::string& range)
    {
        const std::string dim = "Dim" + std::to_string(number);
        return dim + "Name=" + name + "\n" + dim + "Unit=" + unit + "\n" + dim + "Min=" + min + "\n" + dim +
               "Range=" + range + "\n";
    }

    // Waves on a slope.
    static char Sample(int x, int y, const Shape& shape)
    {
        const double slope = 60.0 * (x + y) / (shape.points + shape.lines);
        return static_cast<char>(
            std::lround(slope + 40 * std::sin(9.0 * x / shape.points) * std::cos(7.0 * y / shape.lines)));
    }

    void WriteShapes(const std::vector<Shape>& shapes) const
    {
        std::string list, sections, samples;
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const Shape& shape = shapes[i];
            const std::string section = "C" + std::to_string(i);
            list += "Gr0-Ch" + std::to_string(i) + "=" + section + "\n";
            sections += "[" + section + "]\nVersion=3\nPoints=" + std::to_string(shape.points) +
                        "\nLines=" + std::to_string(shape.lines) + "\nSaveBits=8\n" +
                        Axis(0, "X", "m", shape.left, shape.width) + Axis(1, "Y", "m", "0", shape.height) +
                        "Dim2Name=" + shape.name + "\n" + shape.signal;
            for (int y = 0; y < shape.lines; ++y) {
                for (int x = 0; x < shape.points; ++x) {
                    samples += Sample(x, y, shape);
                }
            }
        }
        WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=Shapes\nGr0-ID=0\nGr0-Count=" +
                     std::to_string(shapes.size()) + "\n" + list + sections,
                 samples, "shapes.oxd");
    }

    static std::string Signal(const std::string& unit, const std::string& min, const std::string& range)
    {
        return "Dim2Unit=" + unit + "\nDim2Min=" + min + "\nDim2Range=" + range + "\n";
    }
};

TEST_F(ShapeTest, LooksAsApprovedInEveryShape)
{
    const std::string volts = Signal("V", "-1", "2");
    WriteShapes(
        {{200, 4, "Wide, 50 to 1", volts, "50e-6", "1e-6"},
         {4, 200, "Tall, 1 to 50", volts, "1e-6", "50e-6"},
         {1, 1, "One sample", volts},
         {2, 2, "Two by two", Signal("m", "0", "1e-12")},
         {8192, 2, "Two long lines", volts},
         {1, 9, "One point a line", volts},
         {300, 1, "One line", volts},
         {64, 64, "Far off", Signal("m", "-1e-9", "2e-9"), "5e-9", "5e-9", "100e-6"},
         {64, 64, "All alike", Signal("m", "1e6", "0")},
         {64, 64, "Neither unit nor range", Signal("", "0", "1e-300"), "0", "0"},
         {64, 64, "A name that is far too long for the title of any picture, and for a colour bar too",
          Signal("a long unit", "0", "1e300")},
         {64, 64, "\u00C4\u00D6\u00DC \u00E4\u00F6\u00FC\u00DF \u03B1\u03B2\u03B3 \u0434\u0436 e\u0301 \u2206 \u2192",
          Signal("\u00B0", "-180", "360")}});
    for (const auto& [kind, file] : {std::pair("image", "shapes.png"), {"curves", "shape-curves.png"}}) {
        EXPECT_LT(Run("export shapes.oxd --sheet --as " + std::string(kind) + " -o out.png").exitCode, 2);
        ExpectAsApproved("out.png", std::string(OXD_IMAGES) + "/" + file);
    }
    ResultsOf("export sample.oxd --sheet -g BackwardScan --op parabola -o out.png");
    ExpectAsApproved("out.png", std::string(OXD_IMAGES) + "/sample-sheet.png");
}
