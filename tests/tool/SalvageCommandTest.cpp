// What oxd salvage saves and tells, and what it leaves alone. What is certain is tested with src/salvage.
#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>
#include <png.h>

#include <cstdlib>
#include <sstream>

class SalvageCommandTest : public ToolTest
{
protected:
    using json = nlohmann::json;

    // A copy of the sample in which the first `before` behind the head of a section is `after`.
    static void Damage(const std::string& section, const std::string& before, const std::string& after,
                       const std::string& file)
    {
        std::string bytes = ReadBytes("sample.oxd");
        const auto place = bytes.find(before, bytes.find("[" + section + "]"));
        ASSERT_NE(place, std::string::npos);
        WriteBytes(file, bytes.replace(place, before.size(), after));
    }

    // The second half of the last channel of the first group is lost.
    static void CutOff(const std::string& file)
    {
        const std::string bytes = ReadBytes("sample.oxd");
        constexpr std::size_t lines = 256;
        constexpr std::size_t lineBytes = 512;
        WriteBytes(file, bytes.substr(0, bytes.find("#!") + 2 + (2 * lines + lines / 2) * lineBytes + 11));
    }

    // The grey levels of a picture in 8 bits, line by line.
    static std::string ReadLevels(const std::string& path, std::size_t& width)
    {
        png_image picture{};
        picture.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&picture, path.c_str()) == 0)
            return {};
        picture.format = PNG_FORMAT_GRAY;
        width = picture.width;
        std::string levels(PNG_IMAGE_SIZE(picture), '\0');
        const png_color background{1, 1, 1};
        png_image_finish_read(&picture, &background, levels.data(), 0, nullptr);
        return levels;
    }
};

TEST_F(SalvageCommandTest, RestoresAFileInWhichOneByteOfTheHeaderIsDamaged)
{
    Damage("DataSet-0:1", "Points=256", "Points=2S6", "size.oxd");
    const Outcome outcome = ExpectMessage("salvage size.oxd -o out.oxd", 0, "is taken as \"Points=256\" instead of");
    EXPECT_EQ(ResultsOf("diff sample.oxd out.oxd"), "");
    const auto map = json::parse(outcome.results);
    EXPECT_EQ(map["header"], "repaired");
    EXPECT_EQ(map["repair"]["found"], "Points=2S6");
    EXPECT_EQ(map["channels"].size(), 8);
}

TEST_F(SalvageCommandTest, SavesTheLinesThatACutFileHasAndDrawsThem)
{
    CutOff("cut.oxd");
    const Outcome outcome = ExpectMessage("salvage cut.oxd --map map.json --png map.png -o out.oxd", 0,
                                          "128 of 256 lines are saved, 128 are missing at the end of the file");
    EXPECT_EQ(outcome.results, "");
    const auto map = json::parse(ReadBytes("map.json"));
    const json lines = {{{"first", 0}, {"last", 127}, {"state", "saved"}},
                        {{"first", 128}, {"last", 255}, {"state", "missing"}}};
    EXPECT_EQ(map["channels"][2]["ranges"], lines);
    EXPECT_EQ(map["channels"][3]["savedLines"], 0);
    EXPECT_EQ(ResultsOf("diff sample.oxd out.oxd --ignore samples --ignore structure"), ""); // views, processors, all
    EXPECT_EQ(Run("export out.oxd -g ForwardScan -c Phase -o out.f64").exitCode, 0);
    EXPECT_EQ(Run("export sample.oxd -g ForwardScan -c Phase -o sample.f64").exitCode, 0);
    const std::size_t half = std::size_t{128} * 256 * sizeof(double);
    EXPECT_EQ(ReadBytes("out.f64").substr(0, half), ReadBytes("sample.f64").substr(0, half));

    std::size_t width = 0;
    const std::string levels = ReadLevels("map.png", width);
    ASSERT_EQ(width, map["channels"].size() * 20);
    const auto at = [&](std::size_t row, std::size_t channel) {
        return static_cast<unsigned char>(levels.at(row * width + channel * 20 + 8));
    };
    for (const std::size_t row : {0, 127}) {
        EXPECT_GT(at(row, 0), 250);
        EXPECT_LT(at(row, 2), 5);
        EXPECT_GT(at(row + 128, 2), 250);
        EXPECT_LT(at(row + 128, 3), 5);
    }
}

TEST_F(SalvageCommandTest, SaysThatViewsAndProcessorsAreLostWithTheEndOfTheHeader)
{
    const std::string bytes = ReadBytes("sample.oxd");
    WriteBytes("cut.oxd", bytes.substr(0, bytes.find("[SetView-1]") + 30));
    ExpectMessage("salvage cut.oxd -o out.oxd", 0, "its views, processors and unknown sections are not kept");
    ExpectMessage("validate out.oxd", 0, "");
}

TEST_F(SalvageCommandTest, DoubtsOnlyWhatIsUncertain)
{
    const std::string bytes = ReadBytes("sample.oxd");
    const auto messages = [](const std::string& file) { return Run("salvage " + file + " -o out.oxd").diagnostics; };
    WriteBytes("cut.oxd", bytes.substr(0, bytes.find("[SetView-1]") + 30));
    EXPECT_TRUE(messages("cut.oxd").starts_with("oxd: cut.oxd: The header has no certain end"));
    std::istringstream whole(messages("sample.oxd"));
    for (std::string line; std::getline(whole, line);)
        EXPECT_TRUE(line.starts_with("oxd: sample.oxd: group ") && line.ends_with(" lines are saved.")) << line;
}

TEST_F(SalvageCommandTest, LeavesFilesAloneIfItCannotDoWhatItIsAskedTo)
{
    WriteBytes("foreign.oxd", "no header");
    WriteBytes("out.oxd", "old");
    ExpectMessage("salvage foreign.oxd -o out.oxd", 4, "nothing in it is certain");
    ExpectFailure("salvage missing.oxd -o out.oxd", 3, "No such file");
    ExpectFailure("salvage sample.oxd -o sample.oxd", 2, "is the file to read");
    ExpectFailure("salvage sample.oxd --png sample.oxd -o new.oxd", 2, "is the file to read");
    ExpectFailure("salvage sample.oxd --map out.oxd -o out.oxd", 2, "is to hold two things");
    ExpectFailure("salvage sample.oxd --map none/map.json -o new.oxd", 5, "none");
    ExpectFailure("salvage sample.oxd --map out.oxd --no-clobber -o other.oxd", 5, "out.oxd");
    EXPECT_EQ(ReadBytes("out.oxd"), "old");
}

#ifdef OXD_SCHEMA_CHECK
TEST_F(SalvageCommandTest, MapsFitTheirSchema)
{
    Damage("DataSet-0:1", "Points=256", "Points=2S6", "size.oxd");
    CutOff("cut.oxd");
    WriteBytes("short.oxd", ReadBytes("sample.oxd").substr(0, 700));
    std::string maps;
    for (const std::string name : {"size", "cut", "short"}) {
        EXPECT_EQ(Run("salvage " + name + ".oxd --map " + name + ".json -o out.oxd").exitCode, 0) << name;
        maps += " " + name + ".json";
    }
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
    EXPECT_EQ(std::system((OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/salvage.schema.json'" + maps).c_str()), 0);
}
#endif
