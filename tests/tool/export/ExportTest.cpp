#include "tool/ToolTest.h"
#include "tool/export/Pictures.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>
#include <tuple>

namespace {

// Where the samples begin in a picture in colours.
constexpr std::size_t left = 76;
constexpr std::size_t top = 42;

constexpr const char* ofSample = "export sample.oxd --group ForwardScan --channel Topography ";
constexpr const char* ofRagged = "export ragged.oxd --group Scan --channel 0 ";

// Where in a row of pixels, or in a column of them, something nearly black is.
std::vector<std::size_t> InkIn(const ColourPicture& picture)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < picture.levels.size(); i += 3)
        if (picture.levels[i] < 100)
            places.push_back(i / 3);
    return places;
}

} // namespace

class ExportTest : public ToolTest
{
protected:
    // 4 x 3 on 4 x 2 µm: a full line from -1 V to 1 V, one of a single sample, and one that claims more than it can
    // hold. Names are what spreadsheets and fonts stumble over.
    void MakeRagged(const std::string& lastLine = "9") const
    {
        WriteOxd(
            oneChannel +
                "Version=3\nPoints=4\nLines=3\nSaveBits=8\n"
                "Dim0Name=X\nDim0Unit=m\nDim0Min=0\nDim0Range=4e-6\nDim1Name=Y\nDim1Unit=m\nDim1Min=0\nDim1Range=2e-6\n"
                "Dim2Name=a \"b\", c \xEF\xBF\xBE\nDim2Unit=V\nDim2Min=-1\nDim2Range=2\n"
                "LineDim0Points=4\nLineDim1Points=1\nLineDim2Points=" +
                lastLine + "\n",
            std::string_view("\x80\xC0\x40\x7F\0\0\0\0\0\0\0\0", lastLine == "0" ? 8 : 12), "ragged.oxd");
    }
};

TEST_F(ExportTest, GivesNumbersAsTheInterfaceDoes)
{
    const auto handle = Open("sample.oxd");
    for (const auto& [option, code] : {std::pair("", 0), {"--op derive ", 3}, {"--op parabola ", 4}}) {
        std::vector<std::int32_t> raw(65536);
        std::vector<double> real(65536);
        for (std::uint64_t line = 0; line < 256; ++line) {
            GetChannelData_LineRaw(handle, 0, 0, line, code, raw.data() + line * 256);
            GetChannelData_LineReal(handle, 0, 0, line, code, real.data() + line * 256);
        }
        for (const char* const output : {"out.raw", "out.F64", "out.real"})
            ResultsOf(std::string(ofSample) + option + "-o " + output);
        EXPECT_EQ(Numbers<std::int32_t>(ReadBytes("out.raw")), raw) << option;
        EXPECT_EQ(Numbers<double>(ReadBytes("out.F64")), real) << option;
        EXPECT_EQ(ReadBytes("out.real"), ReadBytes("out.F64"));
    }
}

TEST_F(ExportTest, TellsMissingSamplesApart)
{
    MakeRagged("0");
    EXPECT_EQ(ResultsOf(std::string(ofRagged) + "-o out.csv"), "");
    EXPECT_EQ(ReadBytes("out.csv"),
              "\"a \"\"b\"\", c \xEF\xBF\xBE [V]; down: Y [m]; across: X [m]\",0,1.33333333e-06,2.66666667e-06,4e-06\n"
              "0,-1,-0.5,0.500000001,0.992187502\n1e-06,9.31322575e-10,,,\n2e-06,,,,\n");

    ResultsOf(std::string(ofRagged) + "-o out.f64");
    const auto real = Numbers<double>(ReadBytes("out.f64"));
    ASSERT_EQ(real.size(), 12);
    for (std::size_t i = 0; i < real.size(); ++i)
        EXPECT_EQ(std::isnan(real[i]), i > 4) << i;

    ExpectMessage(std::string(ofRagged) + "-o out.raw", 0, "7 missing samples are written as 0");
    EXPECT_EQ(ReadBytes("out.raw").size(), 48);
}

TEST_F(ExportTest, LeavesOutLinesThatAreDamagedOrTooShort)
{
    MakeRagged();
    for (const char* const output : {"out.csv", "out.f64", "out.raw", "out.png", "out.png --grey"}) {
        const Outcome outcome = ExpectMessage(std::string(ofRagged) + "--op line -o " + output, 4,
                                              "1 line left out, the first is line 1: too few");
        EXPECT_NE(outcome.diagnostics.find("1 line left out, the first is line 2: "), std::string::npos);
    }
}

TEST_F(ExportTest, GivesAGreyLevelForEachSample)
{
    MakeRagged("0");
    ResultsOf(std::string(ofRagged) + "--grey -o out.PNG");
    // The last line is all missing; 32896 is 1 + 65534 * 128 / 255.
    const std::vector<std::uint16_t> levels{0, 0, 0, 0, 0, 0,     0,     0,     32896, 65535, 0,     0,
                                            0, 0, 0, 0, 1, 65535, 16449, 65535, 49344, 65535, 65535, 65535};
    EXPECT_EQ(ReadPicture<std::uint16_t>("out.PNG").levels, levels);
    EXPECT_NE(ReadBytes("out.PNG").find("0.99218750"), std::string::npos) << "more digits than levels need";
}

TEST_F(ExportTest, DrawsSamplesTrueToScaleInColours)
{
    MakeRagged("0");
    ResultsOf(std::string(ofRagged) + "-o out.png");
    const auto picture = ReadPicture<std::uint8_t>("out.png");
    ASSERT_GT(picture.width, left + 640); // for 4 µm
    ASSERT_GT(picture.height, top + 320);
    const auto lightness = [&](std::size_t point) {
        const auto colours = Part(picture, left + 80 + 160 * point, top + 319, 1, 1).levels;
        return 30 * colours.at(0) + 59 * colours.at(1) + 11 * colours.at(2);
    };
    for (std::size_t point = 1; point < 4; ++point)
        EXPECT_GT(lightness(point), lightness(point - 1)) << "the first line is at the bottom";
    const auto missing = Part(picture, left, top, 160, 100).levels;
    for (std::size_t i = 0; i < missing.size(); i += 3)
        ASSERT_TRUE(missing[i] == missing[i + 1] && missing[i] == missing[i + 2] && missing[i] >= 150) << i;
    EXPECT_EQ(std::ranges::count(missing, 0xC5), 3 * 160 * 100 / 8) << "hatched all over";
}

TEST_F(ExportTest, DrawsScalesAndTheirTexts)
{
    MakeRagged("0");
    const auto draw = [](const std::string& option) {
        ResultsOf(ofRagged + option + "-o out.png");
        return ReadPicture<std::uint8_t>("out.png");
    };
    const auto picture = draw("");
    const auto right = left + 640 + 42; // of the colour bar
    const auto ink = [](const ColourPicture& of, std::size_t x, std::size_t y, std::size_t width) {
        return InkIn(Part(of, x, y, width, 14)).size();
    };
    // Samples are 160 pixels wide and 107 high, the outermost ones centred on the ends of the axes.
    EXPECT_EQ(InkIn(Part(picture, left, top + 323, 640, 1)), (std::vector<std::size_t>{80, 200, 320, 440, 560}))
        << "µm";
    EXPECT_EQ(InkIn(Part(picture, left - 3, top, 1, 320)), (std::vector<std::size_t>{53, 159, 266})) << "µm";
    EXPECT_EQ(InkIn(Part(picture, right + 2, top, 1, 320)), (std::vector<std::size_t>{79, 159, 239, 319})) << "0.5 V";
    EXPECT_LT(3 * ink(picture, left + 170, top + 329, 60), 2 * ink(picture, right + 8, top + 72, 50)) << "1 and 0.5";
    EXPECT_GT(ink(picture, left, 14, 640), 50) << "the title";
    EXPECT_GT(ink(picture, right + 56, top + 153, 20), 2) << "the name of the bar, in its middle";
    std::set<std::size_t> rows;
    for (const std::size_t place : InkIn(Part(picture, left, 0, 640, top - 2)))
        rows.insert(place / 640);
    EXPECT_GT(*rows.rbegin() - *rows.begin(), 8) << "letters of 13 pixels";
    EXPECT_GT(ink(draw("--op mean "), left, 14, 640), ink(picture, left, 14, 640) + 30) << "names the operator";
}

TEST_F(ExportTest, WritesTheFormatThatItIsAskedFor)
{
    MakeRagged("0");
    for (const std::string format : {"csv", "f64", "raw", "png", "png --grey"}) {
        Run(ofRagged + ("-o out." + format));
        const std::string bytes = ReadBytes("out." + format.substr(0, 3));
        for (const char* const output : {"plain", "other.raw"}) {
            EXPECT_EQ(Run(ofRagged + ("--format " + format + " -o " + output)).exitCode, 0) << format;
            EXPECT_EQ(ReadBytes(output), bytes) << format;
        }
    }
}

TEST_F(ExportTest, SaysWhatNumbersCannotHold)
{
    struct
    {
        const char *axes, *told;
        std::string row;
    } const cases[] = {
        {"Dim2Range=inf\nDim2Min=0\n", "no finite value", "0,,,,\n"},
        {"Dim2Range=0\nDim2Min=-1.7976931348623157e308\n", "",
         "0,-1.79769313e+308,-1.79769313e+308,-1.79769313e+308,-1.79769313e+308\n"},
        {"Dim0Range=1.7e308\nDim0Min=-1e308\nDim2Range=1\nDim2Min=0\n", "",
         ",-1e+308,-4.33333333e+307,1.33333333e+307,7e+307\n"},
    };
    for (const auto& [axes, told, row] : cases) {
        WriteOxd(oneChannel + "Version=2\nPoints=4\nLines=1\nSaveBits=8\n" + axes, "\1\2\3\4", "huge.oxd");
        for (const std::string format : {"csv", "f64", "png", "png --grey"}) {
            const Outcome outcome = Run("export huge.oxd -g Scan -c 0 -o out --format " + format);
            EXPECT_EQ(outcome.exitCode, *told != '\0' && format.starts_with("png") ? 1 : 0) << axes << format;
            EXPECT_NE(outcome.diagnostics.find(told), std::string::npos) << outcome.diagnostics;
            EXPECT_TRUE(outcome.exitCode == 0 || outcome.diagnostics.starts_with("oxd: huge.oxd: "));
            EXPECT_EQ(outcome.diagnostics.find("operator"), std::string::npos) << outcome.diagnostics;
            EXPECT_TRUE(format != "csv" || ReadBytes("out").find(row) != std::string::npos) << ReadBytes("out");
        }
    }
}

TEST_F(ExportTest, FindsChannelsBesideEmptySlots)
{
    const auto handle = Create("slots.oxd");
    CreateGroup(handle, 32);
    SetChannelCount(handle, 0, 3);
    for (const std::uint64_t slot : {1U, 2U}) {
        SetChannelXYDimension(handle, 0, slot, 1, 2 - slot);
        SetChannelData_SignalAxisName(handle, 0, slot, "Height");
    }
    SetChannelData_PixelRaw(handle, 0, 1, 0, 0, 7);
    Save(handle);
    const std::string ofSlot = "export slots.oxd --group Group0 -o out.raw --channel ";
    for (const auto& [channel, bytes] : {std::pair("1", 4U), {"2", 0U}, {"Height", 4U}}) { // 2 has no lines
        ResultsOf(ofSlot + channel);
        EXPECT_EQ(ReadBytes("out.raw"), std::string_view("\7\0\0", bytes)) << channel;
    }
    for (const char* const channel : {"0", "3", "''"})
        ExpectFailure(ofSlot + channel, 1, "no channel");
}

TEST_F(ExportTest, DrawsAnyShape)
{
    // Points and lines, minimum and range of the point axis, ticks below the picture.
    const std::tuple<std::uint64_t, std::uint64_t, double, double, std::size_t> shapes[] = {
        {1, 1, 0, HUGE_VAL, 0}, {2, 2, 5, 0, 1},     {2, 2, -0.75e308, 1.5e308, 1},
        {5000, 1, 0, 1, 11},    {1, 3000, 0, 1, 11}, {2048, 1500, 0, 1, 11}};
    for (const auto& [points, lines, min, range, ticks] : shapes) {
        const auto handle = Create("shape.oxd");
        CreateChannel(handle, 8, points, lines);
        SetChannelData_PointAxisMin(handle, 0, 0, min);
        SetChannelData_PointAxisRange(handle, 0, 0, range);
        Save(handle);
        ResultsOf("export shape.oxd --group Group0 --channel 0 --as curves --lines 0 -o out.png");
        EXPECT_EQ(ReadPicture<std::uint8_t>("out.png").width, 852) << "curves are drawn in one size";
        ResultsOf("export shape.oxd --group Group0 --channel 0 --as image -o out.png");
        const auto picture = ReadPicture<std::uint8_t>("out.png");
        ASSERT_LT(picture.width, 1400);
        ASSERT_GT(picture.height, 100);
        EXPECT_EQ(InkIn(Part(picture, left, picture.height - 59, picture.width - left - 135, 1)).size(), ticks)
            << points;
        ResultsOf("export shape.oxd --group Group0 --channel 0 --grey -o out.png");
        EXPECT_EQ(ReadPicture<std::uint16_t>("out.png").width, points);
        EXPECT_EQ(ReadPicture<std::uint16_t>("out.png").levels.size(), 2 * points * lines);
    }
}

TEST_F(ExportTest, TakesTheRangeThatItIsGiven)
{
    MakeRagged("0");
    const auto centre = [](const std::string& options) { // of the four samples of the first line, at the bottom
        EXPECT_LT(Run(ofRagged + options + " --map gray -o out.png").exitCode, 2) << options;
        const auto picture = ReadPicture<std::uint8_t>("out.png");
        std::vector<int> levels;
        for (const std::size_t x : {80U, 240U, 400U, 560U})
            levels.push_back(Part(picture, left + x, top + 280, 1, 1).levels.at(0));
        return levels;
    };
    // Of the values -1, -0.5, 0.5 and 1 V, and one of 0 V.
    EXPECT_EQ(centre("--range full"), (std::vector<int>{0, 64, 192, 255}));
    EXPECT_EQ(centre("--range percentile:25,75"), (std::vector<int>{0, 0, 255, 255}));
    EXPECT_EQ(centre("--range -2V:2V"), (std::vector<int>{64, 96, 159, 191}));
    EXPECT_EQ(centre("--range -2000:2000mV"), (std::vector<int>{64, 96, 159, 191}));
    EXPECT_EQ(centre("--range 0:1000000uV"), (std::vector<int>{0, 0, 128, 253}));
    ExpectMessage(std::string(ofRagged) + "--range 0:1 -o out.png", 0,
                  "40 % of the values are below the range of the colours, 0 % above it");

    for (const auto& [options, message] : {std::pair("--range 1:1", "needs the lower value first"),
                                           {"--range 1V:2m", "has two units"},
                                           {"--range 1m:2m", "the values are in \"V\""},
                                           {"--range percentile:5", "is none of full"},
                                           {"--range percentile:50,5", "needs two percentages"},
                                           {"--range percentile:-1,5", "needs two percentages"},
                                           {"--range wide", "is none of full"},
                                           {"--as image --lines 1", "--as curves asks for one"},
                                           {"--as curves --lines 1-3", "the lines of the channel are 0 to 2"},
                                           {"--as curves --lines 1-", "are no numbers of lines"},
                                           {"--as curves --lines ''", "are no numbers of lines"},
                                           {"--as curves --with 1", "no channel"},
                                           {"--as image --offset 1V", "--as curves asks for one"},
                                           {"--as curves --offset 1m", "the values are in \"V\""},
                                           {"--as curves --offset up", "is no number, such as 2nm"},
                                           {"--map jet", "--map"}})
        ExpectMessage(std::string(ofRagged) + options + " -o none.png",
                      std::string_view(message) == "no channel" ? 1 : 2, message);
    EXPECT_FALSE(std::filesystem::exists("none.png"));
    ExpectFailure(std::string(ofRagged) + "--title T -o none.csv", 2,
                  "options of pictures are for .png, .svg and .pdf only");
}

TEST_F(ExportTest, ShowsTheSamplesAloneOrWithTheFirstLineOnTop)
{
    MakeRagged("0");
    ResultsOf(std::string(ofRagged) + "-o whole.png");
    ResultsOf(std::string(ofRagged) + "--no-axes -o alone.png");
    ResultsOf(std::string(ofRagged) + "--no-axes --lines-first top -o turned.png");
    const auto alone = ReadPicture<std::uint8_t>("alone.png");
    const auto turned = ReadPicture<std::uint8_t>("turned.png");
    EXPECT_EQ(alone.levels, Part(ReadPicture<std::uint8_t>("whole.png"), left, top, 640, 320).levels);
    for (const std::size_t row : {220U, 310U}) // of the first line
        EXPECT_EQ(Part(alone, 0, row, 640, 1).levels, Part(turned, 0, 319 - row, 640, 1).levels);
    ResultsOf(std::string(ofRagged) + "--grey --lines-first top -o grey.png");
    EXPECT_EQ(ReadPicture<std::uint16_t>("grey.png").levels.at(0), 1) << "the lowest value is the first";
}

TEST_F(ExportTest, LooksAsApproved)
{
    MakeRagged("0");
    WriteOxd(oneChannel + "Version=3\nPoints=4\nLines=1\nSaveBits=8\nDim0Name=Z\nDim0Unit=m\nDim0Min=-3e-4\nDim0Range="
                          "-2e-9\nDim1Min=0\nDim1Range=0\nDim2Name=U\nDim2Unit=arb\nDim2Min=1e6\nDim2Range=0.5\n",
             "\x80\xC0\x40\x7F", "far.oxd");
    const std::string approved = std::string(OXD_APPROVED) + "/";
    const std::string images = std::string(OXD_IMAGES) + "/";
    const std::string curves = "export sample.oxd -g Spectroscopy -c Approach ";
    for (const auto& [arguments, file] :
         {std::pair(std::string(ofSample), images + "sample-raw.png"),
          {std::string(ofSample) + "--op parabola ", images + "sample-levelled.png"},
          {curves, images + "sample-series.png"},
          {curves + "--with Retract --lines 3,5 ", images + "sample-curves.png"},
          {curves + "--offset 20nm ", images + "sample-offset.png"},
          {std::string(ofSample) + "--op parabola --map viridis --range -0.2nm:0.2nm", images + "sample-map.png"},
          {std::string(ofSample) + "--op line --title 'Terraces, first line on top' --map gray_r --lines-first top",
           images + "sample-turned.png"},
          {std::string(ofRagged), approved + "ragged.png"},
          {std::string(ofRagged) + "--op derive ", approved + "ragged-derived.png"},
          {std::string(ofRagged) + "--range 0:0.25 --map gray_r --lines-first top --title 'A title'",
           approved + "ragged-options.png"},
          {"export far.oxd -g Scan -c 0 ", approved + "far.png"}}) {
        EXPECT_EQ(Run(arguments + " -o out.png").exitCode, 0) << file;
        ExpectAsApproved("out.png", file);
        const auto drawn = ReadPicture<std::uint8_t>("out.png");
        const auto shown = ReadPicture<std::uint8_t>(file);
        const auto samples = [&](const ColourPicture& of) { return Part(of, left, top, 512, of.height - 104); };
        EXPECT_EQ(CountDifferences(samples(drawn), samples(shown)), 0) << file;
    }
}
