// Corrected files say how they were made, which can be repeated, and pictures say what they show.
#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>
#include <png.h>

#include <map>
#include <memory>
#include <tuple>

namespace {

using OrderedJson = nlohmann::ordered_json;

constexpr const char* noted = "Provenance/Step 1/";

// The texts of a picture by their keys.
std::map<std::string, std::string> TextsIn(const std::string& file)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(std::fopen(file.c_str(), "rb"), std::fclose);
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, stream.get());
    png_read_info(png, info);
    png_textp texts = nullptr;
    const int count = png_get_text(png, info, &texts, nullptr);
    std::map<std::string, std::string> found;
    for (int i = 0; i < count; ++i)
        found[texts[i].key] = texts[i].text;
    EXPECT_EQ(found.size(), count);
    png_destroy_read_struct(&png, &info, nullptr);
    return found;
}

} // namespace

class ProvenanceTest : public ToolTest
{
protected:
    static void Replace(const std::string& file, const std::string& text, const std::string& by)
    {
        std::string bytes = ReadBytes(file);
        bytes.replace(bytes.find(text), text.size(), by);
        WriteBytes(file, bytes);
    }

    static void ExpectReplay(const std::string& files, int exitCode, const std::string& part)
    {
        const Outcome outcome = Run("replay " + files);
        EXPECT_EQ(outcome.exitCode, exitCode) << files;
        EXPECT_NE((outcome.results + outcome.diagnostics).find(part), std::string::npos)
            << outcome.results << outcome.diagnostics;
    }

    static inline const std::string ofTopography = " -g ForwardScan -c Topography --op ";
};

TEST_F(ProvenanceTest, IsAGroupForEachCorrection)
{
    std::filesystem::create_directory("folder");
    const auto handle = Create("folder/in.oxd");
    CreateChannel(handle, 32, 300, 7);
    for (std::uint64_t line = 0; line < 7; ++line) {
        std::vector<std::int32_t> samples(300);
        for (std::size_t point = 0; point < samples.size(); ++point)
            samples[point] = static_cast<std::int32_t>(line * 300 + point) * 99991 - 1000;
        SetChannelData_LineRaw(handle, 0, 0, line, samples.data());
    }
    Save(handle);
    ResultsOf("correct folder/in.oxd -g Group0 -c 0 --op parabola -o a.oxd");
    ResultsOf("correct a.oxd -g id:0 -c 0 --op mean -o b.oxd");

    const OrderedJson first = OrderedJson::parse(ResultsOf("info --json a.oxd"))["info"];
    const OrderedJson both = OrderedJson::parse(ResultsOf("info --json b.oxd"))["info"];
    ASSERT_EQ(both.size(), 1);
    EXPECT_EQ(both[0]["name"], "Provenance");
    ASSERT_EQ(both[0]["groups"].size(), 2);
    EXPECT_EQ(both[0]["groups"][0], first[0]["groups"][0]) << "a step stays as it is";
    std::vector<std::string> items;
    for (const OrderedJson& item : first[0]["groups"][0]["items"])
        items.push_back(item["name"].get<std::string>() + "=" + item["value"].get<std::string>());
    EXPECT_EQ(items,
              (std::vector<std::string>{
                  "Time=2020-01-02T03:04:05Z", std::string("Tool=oxd ") + OXD_VERSION,
                  std::string("Library=VELOxdDll ") + OXD_VERSION, "Source=in.oxd", "Group=Group0", "Group id=0",
                  "Channel=Noname", "Channel index=0", "Operator=parabola",
                  "SHA-256 of samples before=d3daba1de0bc02aa250270f4bbe18fb37cf8ef85b829ae4fb9d763d1bd16b5ae"}));
    EXPECT_EQ(ResultsOf("get b.oxd 'Provenance/Step 2/Operator'"), "mean\n");
}

TEST_F(ProvenanceTest, LeavesTheRestOfTheFileAsItWouldBe)
{
    ResultsOf("correct sample.oxd -o plain.oxd --no-provenance" + ofTopography + "line");
    ResultsOf("correct sample.oxd -o noted.oxd" + ofTopography + "line");
    EXPECT_EQ(Run("get plain.oxd 'Provenance/Step 1/Tool'").exitCode, 1);
    const std::string difference = ResultsOf("set plain.oxd Scan/Lines 256 --dry-run");
    EXPECT_TRUE(difference.starts_with("no samples change\n")) << difference;
    EXPECT_EQ(Run("diff plain.oxd noted.oxd --ignore information").exitCode, 0);
}

TEST_F(ProvenanceTest, HasTheTimeThatItIsTold)
{
    for (const auto& [seconds, time] : {std::pair("0", "1970-01-01T00:00:00Z"),
                                        {"951827696", "2000-02-29T12:34:56Z"},
                                        {"253402300799", "9999-12-31T23:59:59Z"}}) {
        SetVariable("SOURCE_DATE_EPOCH", seconds);
        ResultsOf("correct sample.oxd -o out.oxd" + ofTopography + "mean");
        EXPECT_EQ(ResultsOf(std::string("get out.oxd '") + noted + "Time'"), std::string(time) + "\n");
    }
    for (const char* const wrong : {"-1", "1e3", "253402300800", "99999999999999999999", "x"}) {
        SetVariable("SOURCE_DATE_EPOCH", wrong);
        ExpectFailure("correct sample.oxd -o new.oxd" + ofTopography + "mean", 2, "oxd: SOURCE_DATE_EPOCH: ");
    }
    EXPECT_FALSE(std::filesystem::exists("new.oxd"));
}

TEST_F(ProvenanceTest, ProvesHowAFileWasMade)
{
    ResultsOf("correct sample.oxd -o one.oxd" + ofTopography + "parabola");
    SetVariable("SOURCE_DATE_EPOCH", "1");
    ResultsOf("correct one.oxd -g id:1 -c 2 --op derive -o two.oxd");
    ResultsOf("correct two.oxd -o three.oxd" + ofTopography + "mean");
    EXPECT_EQ(ResultsOf("replay three.oxd sample.oxd"), "three.oxd: the same as what comes of 3 steps on sample.oxd\n");
    ExpectReplay("three.oxd two.oxd", 0, "1 step on two.oxd");
    for (const auto& [files, exitCode, part] :
         {std::tuple("one.oxd three.oxd", 1, "three.oxd: its own provenance does not lead to that of one.oxd"),
          {"one.oxd one.oxd", 1, "does not lead"},
          {"sample.oxd one.oxd", 4, "sample.oxd: no provenance"},
          {"one.oxd missing.oxd", 3, "missing.oxd: No such file"}})
        ExpectReplay(files, exitCode, part);
    EXPECT_EQ(Run("replay one.oxd").exitCode, 2);

    ResultsOf("set two.oxd Scan/Lines 257 -o changed.oxd");
    ExpectReplay("changed.oxd sample.oxd", 1, "of the header\n");
    std::string bytes = ReadBytes("two.oxd");
    const std::size_t samples = bytes.find("#!") + 2;
    constexpr std::size_t place = 2 * std::size_t{256 * 256 + 3 * 256 + 5};
    bytes[samples + place] ^= 1;
    WriteBytes("changed.oxd", bytes);
    ExpectReplay("changed.oxd sample.oxd", 1, "channel \"Deflection\" of group 0, line 3, point 5\n");
    WriteBytes("changed.oxd", ReadBytes("two.oxd") + "x");
    ExpectReplay("changed.oxd sample.oxd", 1, "the end of the samples\n");

    bytes = ReadBytes("sample.oxd");
    bytes[bytes.find("#!") + 2] ^= 1;
    WriteBytes("other.oxd", bytes);
    ExpectReplay("two.oxd other.oxd", 1, "step 1 of 2 was taken on other samples than those of other.oxd");
}

TEST_F(ProvenanceTest, IsNotRepeatedWhereItMakesNoSense)
{
    ResultsOf("correct sample.oxd -o out.oxd" + ofTopography + "line");
    for (const auto& [text, by] : {std::pair("Operator=line", "Operator=life"),
                                   {"Operator=line", "operation=lin"},
                                   {"Group id=0", "Group id=x"},
                                   {"Channel index=0", "Channel index=-"},
                                   {"samples before=", "samples before=g"}}) {
        WriteBytes("damaged.oxd", ReadBytes("out.oxd"));
        Replace("damaged.oxd", text, by);
        ExpectReplay("damaged.oxd sample.oxd", 4, "damaged.oxd: its provenance has no ");
    }
    Replace("out.oxd", "Channel index=0", "Channel index=9");
    ExpectReplay("out.oxd sample.oxd", 1, "no channel \"9\"");
}

// Names that no file keeps, lines that cannot be read, 8 bits that become 16, and numbers that a save rounds.
TEST_F(ProvenanceTest, ProvesWhatWasMadeOfAnyFile)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=2\nGr0-Count=1\nGr0-Ch0=B\nGr1-Name= #\nGr1-Count=1\nGr1-Ch0=C\n"
             "SetInfos=I\n[I]\nscansize=1\nA=b\n[B]\nPoints=1\nLines=1\nSaveBits=16\n"
             "[C]\nVersion=3\nPoints=4\nLines=3\nSaveBits=8\nDim0Range=1.23456789\nDim2Name=a\\b=c\nLineDim0Points=2\n"
             "LineDim1Points=9\nLineDim2Points=4\n",
             std::string("\7\7\1\3\0\0\0\0\0\0\10\12\13\50", 14), " in.oxd");
    EXPECT_EQ(Run("correct ' in.oxd' -g id:1 -c 0 --op mean -o one.oxd").exitCode, 4) << "one line cannot be read";
    EXPECT_EQ(Run("correct one.oxd -g id:1 -c 0 --op line -o two.oxd").exitCode, 4);
    ExpectReplay("two.oxd ' in.oxd'", 0, "2 steps on  in.oxd");
    ExpectReplay("two.oxd one.oxd", 0, "1 step on one.oxd");
}

TEST_F(ProvenanceTest, IsNotRecordedWhereItWouldNotBeKept)
{
    ResultsOf("set sample.oxd provenance/note 1 --create -o clash.oxd");
    const std::string correct = "correct clash.oxd -o out.oxd" + ofTopography + "mean";
    ExpectMessage(correct, 2, "oxd: out.oxd: its provenance would not be kept");
    ExpectMessage("process clash.oxd -o out.oxd", 2, "oxd: out.oxd: its provenance would not be kept");
    EXPECT_FALSE(std::filesystem::exists("out.oxd"));
    ResultsOf(correct + " --no-provenance");

    ResultsOf("set sample.oxd Provenance/Sample 1 --create -o own.oxd");
    ResultsOf("correct own.oxd -o out.oxd" + ofTopography + "mean");
    EXPECT_EQ(ResultsOf("get out.oxd Provenance/Sample"), "1\n");
    ExpectReplay("out.oxd own.oxd", 0, "the same");
}

TEST_F(ProvenanceTest, IsInPictures)
{
    std::filesystem::create_directory("folder");
    std::filesystem::rename("sample.oxd", "folder/sample.oxd");
    const std::string picture = "export folder/sample.oxd -g ForwardScan -c Phase -o out.png ";
    std::map<std::string, std::string> expected{{"Title", "ForwardScan: Phase, line fit"},
                                                {"Software", "oxd " OXD_VERSION},
                                                {"Source", "sample.oxd"},
                                                {"Group", "ForwardScan"},
                                                {"Channel", "Phase"},
                                                {"Operator", "line"}};
    for (const std::string kind : {"", "--grey "}) {
        ResultsOf(picture + kind + "--op line");
        auto texts = TextsIn("out.png");
        EXPECT_TRUE(texts["Range"].ends_with(" \xC2\xB0")) << texts["Range"];
        if (!kind.empty()) {
            EXPECT_EQ(texts["Range"], texts["Value of level 1"].substr(0, texts["Value of level 1"].find(' ')) +
                                          " .. " + texts["Value of level 65535"]);
            texts.erase("Value of level 1");
            texts.erase("Value of level 65535");
        }
        texts.erase("Range");
        EXPECT_EQ(texts, expected);
        ResultsOf(picture + kind);
        EXPECT_FALSE(TextsIn("out.png").contains("Operator"));
        ResultsOf(picture + kind + "--no-provenance");
        EXPECT_EQ(TextsIn("out.png").size(), kind.empty() ? 0 : 2);
    }
    for (const std::string table : {"out.csv", "out.raw"}) {
        ResultsOf("export folder/sample.oxd -g ForwardScan -c Phase -o " + table);
        EXPECT_EQ(ReadBytes(table).find("sample.oxd"), std::string::npos);
    }
}
