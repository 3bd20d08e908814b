// Pictures for print: of any size and resolution, as vectors, and those of all channels of a file.
#include "tool/ToolTest.h"
#include "tool/export/Pictures.h"

#include <set>

class ExportFormsTest : public ToolTest
{
protected:
    static constexpr const char* ofSample = "export sample.oxd -g ForwardScan -c Topography ";
    static constexpr const char* ofCurves = "export sample.oxd -g Spectroscopy -c Retract --lines 0-2 ";

    static std::uint32_t BigEndianAt(const std::string& bytes, std::size_t place)
    {
        std::uint32_t number = 0;
        for (const char c : bytes.substr(place, 4))
            number = number << 8U | static_cast<unsigned char>(c);
        return number;
    }

    static std::set<std::string> NamesIn(const std::string& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.insert(entry.path().filename().string());
        return names;
    }

    static std::size_t CountOf(const std::string& part, const std::string& text)
    {
        std::size_t count = 0;
        for (auto place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
            ++count;
        return count;
    }
};

TEST_F(ExportFormsTest, HasTheSizeAndResolutionThatItIsGiven)
{
    const struct
    {
        const char* options;
        std::uint32_t width, height, perMetre; // pixels
    } cases[] = {{"--no-axes --size 96", 96, 96, 0},
                 {"--no-axes --size 85mm --dpi 300", 1003, 1003, 11811},
                 {"--no-axes --size 2inx1in", 96, 96, 0},
                 {"--no-axes --size 144pt --dpi 48", 96, 96, 1890},
                 {"--no-axes --size 200pxx100px --dpi 192", 200, 200, 7559},
                 {"--size 500", 500, 392, 0}, // a square of 288 pixels and its margins
                 {"--size 500x300 --dpi 192", 816, 600, 7559}};
    for (const auto& [options, width, height, perMetre] : cases) {
        ResultsOf(std::string(ofSample) + options + " -o out.png");
        const std::string png = ReadBytes("out.png");
        EXPECT_EQ(BigEndianAt(png, 16), width) << options;
        EXPECT_EQ(BigEndianAt(png, 20), height) << options;
        const auto resolution = png.find("pHYs");
        ASSERT_EQ(resolution != std::string::npos, perMetre > 0) << options;
        EXPECT_TRUE(perMetre == 0 || BigEndianAt(png, resolution + 4) == perMetre) << options;
        EXPECT_EQ(ReadPicture<std::uint8_t>("out.png").width, width) << options << ", checksums included";
    }
    ResultsOf(std::string(ofCurves) + "--size 600x400 -o out.png");
    EXPECT_EQ(BigEndianAt(ReadBytes("out.png"), 20), 395); // 388 by 291 pixels and their margins
    for (const auto& [options, message] : {std::pair("--size wide", "is none such as 800x600"),
                                           {"--size 0", "is none such as 800x600"},
                                           {"--size -5mm", "is none such as 800x600"},
                                           {"--size 5ft", "is none such as 800x600"},
                                           {"--size 300x", "is none such as 800x600"},
                                           {"--size 1e400", "is none such as 800x600"},
                                           {"--size 220", "no room for the picture"},
                                           {"--size 400x120", "no room for the picture"},
                                           {"--size 100in --dpi 1200", "more than 16384 pixels"},
                                           {"--dpi 1", "--dpi"}})
        ExpectMessage(std::string(ofSample) + options + " -o none.png", 2, message);
    EXPECT_FALSE(std::filesystem::exists("none.png"));
}

TEST_F(ExportFormsTest, DrawsAScaleBarAsApproved)
{
    const std::string options = "--op parabola --no-axes --size 85mm --dpi 150 ";
    ResultsOf(ofSample + options + "--scale-bar -o bar.png");
    ResultsOf(ofSample + options + "-o none.png");
    const auto bar = ReadPicture<std::uint8_t>("bar.png");
    const auto none = ReadPicture<std::uint8_t>("none.png");
    EXPECT_EQ(Part(bar, 0, 0, bar.width, bar.height * 3 / 4).levels,
              Part(none, 0, 0, bar.width, bar.height * 3 / 4).levels);
    // 1 of 5.02 micrometres: samples are at both ends of the 5.
    const std::size_t row = bar.height - static_cast<std::size_t>(18 * 150 / 96);
    const ColourPicture drawn = Part(bar, 0, row, bar.width, 1);
    const ColourPicture under = Part(none, 0, row, bar.width, 1);
    std::size_t black = 0;
    for (std::size_t i = 0; i < drawn.levels.size(); i += 3)
        black += drawn.levels[i] == 0x1A && drawn.levels[i] != under.levels[i] ? 1 : 0;
    EXPECT_NEAR(static_cast<double>(black), static_cast<double>(bar.width) / 5.02, 2);
    ExpectAsApproved("bar.png", std::string(OXD_IMAGES) + "/sample-print.png");
}

TEST_F(ExportFormsTest, WritesVectorsWithTheirTexts)
{
    ResultsOf(std::string(ofCurves) + "--title 'a < b & c > d' -o curves.svg");
    const std::string svg = ReadBytes("curves.svg");
    EXPECT_NE(svg.find("<title>a &lt; b &amp; c &gt; d</title>"), std::string::npos);
    EXPECT_NE(svg.find("\nGroup: Spectroscopy\nChannel: Retract\n"), std::string::npos);
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
    EXPECT_EQ(CountOf("stroke-linejoin:round", svg), 3) << "a line for each curve";
    for (std::size_t at = 0; (at = svg.find("stroke-linejoin:round", at + 1)) != std::string::npos;)
        EXPECT_EQ(svg.substr(svg.find(" d=", at), 9), " d=\"M 76 ") << "which begins on the left";
    ResultsOf(std::string(ofSample) + "--op mean -o image.svg --no-provenance");
    EXPECT_EQ(ReadBytes("image.svg").find("<title>"), std::string::npos);
    EXPECT_NE(ReadBytes("image.svg").find("data:image/png;base64,"), std::string::npos);

    for (const char* const suffix : {"svg", "pdf"}) {
        const std::string command = std::string(ofCurves) + "-o " + suffix;
        ResultsOf(command + "1 --format " + suffix);
        ResultsOf(command + "2 --format " + suffix);
        EXPECT_EQ(ReadBytes(std::string(suffix) + "1"), ReadBytes(std::string(suffix) + "2")) << "no time is in them";
    }
    const std::string pdf = ReadBytes("pdf1");
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.find("/Title (Spectroscopy: Retract)"), std::string::npos);
    EXPECT_NE(pdf.find("; Channel: Retract; "), std::string::npos);
    EXPECT_NE(pdf.find("/MediaBox [ 0 0 639 438 ]"), std::string::npos) << "852 by 584 pixels in points";
}

TEST_F(ExportFormsTest, ExportsAllChannelsIntoAFolder)
{
    ResultsOf("export sample.oxd --all -g Spectroscopy --format csv -o some");
    EXPECT_EQ(NamesIn("some"), (std::set<std::string>{"Spectroscopy-Approach.csv", "Spectroscopy-Retract.csv"}));
    ResultsOf("export sample.oxd --all -o all");
    EXPECT_EQ(NamesIn("all").size(), 8);
    ResultsOf("export sample.oxd -g BackwardScan -c Phase -o phase.png");
    EXPECT_EQ(ReadBytes("all/BackwardScan-Phase.png"), ReadBytes("phase.png"));

    const std::string channel = "Version=3\nPoints=1\nLines=1\nSaveBits=8\n";
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=a/b:c\nGr0-ID=0\nGr0-Count=3\nGr0-Ch0=One\nGr0-Ch1=Two\n"
             "Gr0-Ch2=Three\n[One]\n" +
                 channel + "Dim2Name=..\n[Two]\n" + channel + "Dim2Name=x\n[Three]\n" + channel + "Dim2Name=X\n",
             "\x80\x80\x80", "odd.oxd");
    Run("export odd.oxd --all --format raw -o odd"); // which has no axes
    EXPECT_EQ(NamesIn("odd"), (std::set<std::string>{"a_b_c-...raw", "a_b_c-x.raw", "a_b_c-X-2.raw"}));
}

TEST_F(ExportFormsTest, ShowsAllChannelsSideBySide)
{
    // Cells of 480 x 400 pixels, 12 apart and below a head of 36: three in a row, two below.
    ResultsOf("export sample.oxd --sheet --no-axes --as image -g ForwardScan -o sheet.png");
    const auto sheet = ReadPicture<std::uint8_t>("sheet.png");
    EXPECT_EQ(sheet.width, 12 + 2 * 492);
    EXPECT_EQ(sheet.height, 36 + 2 * 412);
    const auto meanOf = [](const ColourPicture& picture) {
        return std::accumulate(picture.levels.begin(), picture.levels.end(), 0.0) /
               static_cast<double>(picture.levels.size());
    };
    for (std::size_t i = 0; i < 3; ++i) {
        ResultsOf("export sample.oxd --no-axes -g ForwardScan -o one.png -c " + std::to_string(i));
        const ColourPicture small = Part(sheet, 12 + i % 2 * 492, 36 + i / 2 * 412, 400, 400);
        EXPECT_NEAR(meanOf(small), meanOf(ReadPicture<std::uint8_t>("one.png")), 1) << i;
    }
    EXPECT_EQ(meanOf(Part(sheet, 12 + 492, 36 + 412, 480, 400)), 255) << "nothing in the last cell";

    std::string bytes = ReadBytes("sample.oxd");
    const auto place = bytes.find("Points=256", bytes.find("[DataSet-0:1]"));
    WriteBytes("damaged.oxd", bytes.replace(place, 10, "Points=2S6"));
    ExpectMessage("export damaged.oxd --sheet -o some.svg", 4, "the samples of channel \"Phase\" may not");
    EXPECT_TRUE(ReadBytes("some.svg").ends_with("</svg>\n"));
    ExpectFailure("export sample.oxd --sheet -o none.csv", 2, "a sheet is a .png, .svg or .pdf");
    ExpectFailure("export sample.oxd --sheet --size 9 -o none.png", 2, "are for a picture of one channel");
    WriteOxd("[DataSet]\nVersion=2\n", "", "empty.oxd");
    ExpectFailure("export empty.oxd --sheet -o none.png", 1, "has no channels to show");
    EXPECT_FALSE(std::filesystem::exists("none.png"));
}

TEST_F(ExportFormsTest, GoesOnWithOtherChannelsAfterOneThatFails)
{
    std::string bytes = ReadBytes("sample.oxd");
    const auto place = bytes.find("Points=256", bytes.find("[DataSet-0:1]"));
    WriteBytes("damaged.oxd", bytes.replace(place, 10, "Points=2S6"));
    const Outcome outcome =
        ExpectMessage("export damaged.oxd --all -o out", 4, "the samples of channel \"Phase\" may not");
    EXPECT_EQ(NamesIn("out"), (std::set<std::string>{"ForwardScan-Topography.png"}));
    ExpectMessage("export sample.oxd --all -o out --no-clobber", 5, "ForwardScan-Topography.png: ");
    EXPECT_EQ(NamesIn("out").size(), 8);
    ExpectFailure("export sample.oxd --all -o sample.oxd", 5, "sample.oxd: ");
    ExpectFailure("export sample.oxd --all -g Nothing -o none", 1, "no group \"Nothing\"");
    ExpectFailure("export sample.oxd --all -c 0 -o none", 2, "--channel excludes --all");
    ExpectFailure("export sample.oxd -g ForwardScan -o none.png", 2, "--channel is required");
    EXPECT_FALSE(std::filesystem::exists("none"));
}
