// Pictures of numbers, read by the library that other programs read them with.
#include "tool/ToolTest.h"
#include "tool/export/Pictures.h"

#ifdef OXD_HAS_TIFF
#include <nlohmann/json.hpp>
#include <tiffio.h>

#include <cmath>
#include <memory>

class ExportTiffTest : public ToolTest
{
protected:
    // A scan of 2 lines of 3 points, 2 by 4 micrometres large, the second of which ends after its first point.
    void WriteSmall(int savedBits, const std::string& samples) const
    {
        const std::string header =
            "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=G\nGr0-ID=0\nGr0-Count=1\nGr0-Ch0=C\n[C]\nVersion=3\n"
            "Points=3\nLines=2\nDim0Unit=\xC2\xB5m\nDim0Range=2\nDim0Min=0\nDim1Unit=m\nDim1Range=4e-6\nDim1Min=0\n"
            "Dim2Name=\xC2\xB5\nDim2Unit=V\nDim2Range=2\nDim2Min=-1\nLineDim0Points=3\nLineDim1Points=1\nSaveBits=";
        WriteOxd(header + std::to_string(savedBits) + "\n", samples, "small.oxd");
    }
};

// A small picture as a program that shows such files gets it: a row for each line, the top one first.
struct Tiff
{
    std::vector<std::vector<double>> rows;
    float x = 0; // pixels per centimetre
    float y = 0;
    std::string description;
};

template <typename Sample>
std::vector<double> ReadRow(TIFF* file, std::uint32_t width, std::uint32_t y)
{
    std::vector<Sample> row(width);
    EXPECT_EQ(TIFFReadScanline(file, row.data(), y), 1);
    return {row.begin(), row.end()};
}

Tiff ReadTiff(const char* name)
{
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> file(TIFFOpen(name, "r"), TIFFClose);
    Tiff tiff;
    if (!file) {
        ADD_FAILURE() << name;
        return tiff;
    }
    std::uint32_t width = 0, height = 0;
    std::uint16_t bits = 0, format = 0;
    TIFFGetField(file.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(file.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(file.get(), TIFFTAG_SAMPLEFORMAT, &format);
    const auto readRow = format == SAMPLEFORMAT_IEEEFP ? ReadRow<float>
                         : bits == 16                  ? ReadRow<std::int16_t>
                                                       : ReadRow<std::int32_t>;
    for (std::uint32_t y = 0; y < height; ++y) {
        tiff.rows.push_back(readRow(file.get(), width, y));
    }
    TIFFGetField(file.get(), TIFFTAG_XRESOLUTION, &tiff.x);
    TIFFGetField(file.get(), TIFFTAG_YRESOLUTION, &tiff.y);
    const char* text = "";
    TIFFGetField(file.get(), TIFFTAG_IMAGEDESCRIPTION, &text);
    tiff.description = text;
    return tiff;
}

TEST_F(ExportTiffTest, WritesRealValuesToScaleAsTiff)
{
    struct Case
    {
        std::string arguments, unit;
        bool isOnTop;
    };
    WriteSmall(8, "\x01\x02\x03\x04\x05\x06");
    for (const Case& one : {Case{"small.oxd -g G -c 0", "V", false}, Case{"small.oxd -g G -c 0", "V", true},
                            Case{"sample.oxd -g ForwardScan -c Topography --op derive", "m/point", false}}) {
        Run("export " + one.arguments + (one.isOnTop ? " --lines-first top" : "") + " -o out.tiff");
        Run("export " + one.arguments + " -o out.f64");
        const auto expected = Numbers<double>(ReadBytes("out.f64"));
        const Tiff tiff = ReadTiff("out.tiff");
        ASSERT_EQ(tiff.rows.size() * tiff.rows.front().size(), expected.size()) << one.arguments;
        const auto description = nlohmann::json::parse(tiff.description);
        EXPECT_EQ(description["unit"], one.unit);
        EXPECT_EQ(description["firstLine"], one.isOnTop ? "top" : "bottom");
        if (one.unit != "V") {
            continue; // its zeros are not those of real values
        }
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const double value = tiff.rows[one.isOnTop ? i / 3 : 1 - i / 3][i % 3];
            EXPECT_EQ(std::isnan(value), std::isnan(expected[i]));
            EXPECT_TRUE(std::isnan(value) || value == static_cast<float>(expected[i])) << i;
        }
        EXPECT_FLOAT_EQ(tiff.x, 10000);
        EXPECT_FLOAT_EQ(tiff.y, 2500);
        EXPECT_EQ(description["channel"], "\xC2\xB5");
    }
}

// Each pixel gives the value again by the two numbers in the description.
TEST_F(ExportTiffTest, WritesRawSamplesAsTiff)
{
    struct Case
    {
        int savedBits, bits;
        std::string samples;
        std::vector<std::vector<double>> rows; // the upper one is of the second line, which has one sample
    };
    for (const Case& one :
         {Case{8, 16, "\x01\xFE\x03\x04\x05\x06", {{1024, 0, 0}, {256, -512, 768}}},
          Case{16, 16, std::string("\x01\x00\xFE\xFF\x00\x80\xFF\x7F\0\0\0\0", 12), {{32767, 0, 0}, {1, -2, -32768}}},
          Case{32,
               32,
               std::string("\x04\0\0\0\xF8\xFF\xFF\xFF\0\0\0\x80\xFF\xFF\xFF\x7F\0\0\0\0\0\0\0\0", 24),
               {{536870911, 0, 0}, {1, -2, -536870912}}}}) {
        WriteSmall(one.savedBits, one.samples);
        ExpectMessage("export small.oxd -g G -c 0 --raw -o out.tif", 0, "2 missing samples are written as 0");
        Run("export small.oxd -g G -c 0 -o out.f64");
        const auto values = Numbers<double>(ReadBytes("out.f64"));
        const Tiff tiff = ReadTiff("out.tif");
        EXPECT_EQ(tiff.rows, one.rows) << one.savedBits;
        const auto raw = nlohmann::json::parse(tiff.description)["raw"];
        EXPECT_EQ(raw["bits"], one.bits);
        for (const std::size_t i : {0U, 1U, 2U, 3U}) {
            const double pixel = tiff.rows[1 - i / 3][i % 3];
            EXPECT_NEAR(raw["offset"].get<double>() + raw["factor"].get<double>() * pixel, values[i], 1e-12) << i;
        }
    }
    ExpectFailure("export small.oxd -g G -c 0 --raw -o out.png", 2, "--raw is for .tif only");
    ExpectFailure("export small.oxd -g G -c 0 --raw --grey -o out.tif", 2, "excludes");
}
#else
class ExportTiffTest : public ToolTest
{
};

TEST_F(ExportTiffTest, SaysThatThisBuildHasNoTiff)
{
    for (const char* const raw : {"", "--raw "}) {
        ExpectFailure(std::string("export sample.oxd -g ForwardScan -c Phase ") + raw + "-o out.tif", 5,
                      "this build of oxd cannot write TIFF files");
    }
}
#endif
