// What stays of a file that ends too early or has a fault in it, under the number that a failed open keeps.
#include "support/OxdTest.h"

#include <tuple>

namespace {

constexpr std::uint64_t kept = 1; // the smallest free number
const std::string shortStream = "basic_ios::clear: iostream error";

struct Line
{
    std::uint64_t group;
    std::uint64_t channel;
    std::uint64_t line;
    std::uint64_t bytes;
};

const std::string channels = "[A]\nVersion=3\nPoints=2\nLines=4\nSaveBits=16\nDim0Name=A\nLineDim1Points=0\n"
                             "LineDim3Points=1\n"
                             "[B]\nVersion=2\nPoints=3\nLines=2\nDim0Name=B\n"
                             "[C]\nVersion=2\nPoints=1\nLines=2\nSaveBits=32\nDim0Name=C\n[I]\n-- G --=x\na=1\n";
const std::string groups = "[DataSet]\nVersion=2\nSetInfos=I\nGroupCount=2\nGr0-Count=2\nGr0-Ch0=A\nGr0-Ch1=B\n"
                           "Gr1-Count=1\nGr1-Ch0=C\n";
const std::string frames = "[DataSet]\nSetInfos=I\nFrameCount=3\nChannelCount=1\nCh0-Fr0=A\nCh0-Fr1=B\nCh0-Fr2=C\n";

// In the order of the file; line 1 of the first channel has no bytes.
std::vector<Line> LinesInFile(bool hasFrames)
{
    std::vector<Line> lines;
    const std::uint64_t sizes[3][4] = {{4, 0, 4, 4}, {3, 3}, {4, 4}};
    for (std::uint64_t c = 0; c < 3; ++c) {
        for (std::uint64_t y = 0; y < (c == 0 ? 4U : 2U); ++y)
            lines.push_back({hasFrames ? c : c / 2, hasFrames ? 0 : c % 2, y, sizes[c][y]});
    }
    return lines;
}

class PartialFileTest : public OxdTest
{
protected:
    static std::vector<std::vector<std::int32_t>> Samples(std::uint64_t handle, const std::vector<Line>& lines)
    {
        std::vector<std::vector<std::int32_t>> samples;
        for (const Line& l : lines)
            samples.push_back(LineRaw(handle, l.group, l.channel, l.line));
        return samples;
    }

    // The whole file's lines that end within so many bytes, the others empty.
    static std::vector<std::vector<std::int32_t>>
    Within(std::uint64_t bytes, std::vector<std::vector<std::int32_t>> samples, const std::vector<Line>& lines)
    {
        std::uint64_t end = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            end += lines[i].bytes;
            if (end > bytes)
                samples[i].clear();
        }
        return samples;
    }

    // The file must not open for this reason, and the number that it keeps is given back by CloseOxdFile.
    static void ExpectFailure(const std::string& path, const std::string& reason)
    {
        EXPECT_EQ(ReasonOf([&] { EXPECT_EQ(OpenOxdFile(path.c_str()), 0U); }), reason);
    }
};

TEST_F(PartialFileTest, AFileThatEndsEarlyKeepsItsHeaderAndExactlyTheWholeLines)
{
    const std::string data =
        "\1\2\3\4\5\6\7\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1A";
    for (const bool hasFrames : {false, true}) {
        const std::string header = (hasFrames ? frames : groups) + channels;
        const auto lines = LinesInFile(hasFrames);
        const auto handle = Open(WriteOxd(header, data));
        const auto whole = Samples(handle, lines);
        CloseOxdFile(handle);
        for (std::size_t bytes = 0; bytes < data.size(); ++bytes) {
            ExpectFailure(WriteOxd(header, data.substr(0, bytes)), shortStream);
            EXPECT_EQ(Samples(kept, lines), Within(bytes, whole, lines)) << bytes;
            EXPECT_EQ(Tree(kept), "G{a=1;}");
            EXPECT_EQ(Text(GetChannelData_PointAxisName, kept, lines.back().group, lines.back().channel), "C");
            EXPECT_EQ(GetChannelData_Lines(kept, lines.back().group, lines.back().channel), 2U);

            ChangeOxdFilename(kept, Path("kept.oxd").c_str());
            Save(kept);
            const auto again = Open(Path("kept.oxd"));
            for (std::size_t i = 0; i < lines.size(); ++i) {
                const auto saved = LineRaw(again, lines[i].group, lines[i].channel, lines[i].line);
                EXPECT_EQ(saved, Within(bytes, whole, lines)[i]) << bytes;
            }
            CloseOxdFile(again);
            CloseOxdFile(kept);
        }
    }
}

TEST_F(PartialFileTest, FaultsOfTheHeaderComeBeforeThoseOfTheSamples)
{
    const std::string list = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch0=A\nGr0-Ch1=B\n";
    const std::string good = "Points=2\nLines=1\n";
    const std::string badBits = good + "SaveBits=12\n";
    const std::pair<std::string, std::string_view> cases[] = {
        {"[A]\n" + badBits + "[B]\nVersion=9\n", "The hed file has an unknown version."},
        {"[A]\nPoints=9\nLines=9\n[B]\nLines=-1\n", "The hed file is corrupted."},
        {"[A]\n" + badBits + "[SetView]\nVersion=9\n", "The hed file has an unknown version."},
        {"[A]\nPoints=9\nLines=9\n[B]\n" + badBits, shortStream},
        {"[A]\n" + badBits + "[B]\nPoints=9\nLines=9\n", "Invalid bit count: 12"},
    };
    for (const auto& [sections, reason] : cases)
        EXPECT_TRUE(ReasonOfOpening(WriteOxd(list + sections, "1234")).starts_with(reason)) << sections;

    ExpectFailure(WriteOxd(list + "[A]\n" + good + "[B]\n" + badBits, "\1\2\3\4"), "Invalid bit count: 12");
    EXPECT_EQ(LineRaw(kept, 0, 0, 0), (std::vector{1 << 22, 2 << 22}));
    EXPECT_EQ(GetChannelData_Points(kept, 0, 1), 2U);
    EXPECT_TRUE(LineRaw(kept, 0, 1, 0).empty());
}

TEST_F(PartialFileTest, BadContentNamesItsSectionAndKey)
{
    const std::string frame = "[DataSet]\nChannelCount=1\nFrameCount=";
    const std::string list = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n[A]\n";
    const std::string processor = "[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n[P]\n"
                                  "InstanceNo=0\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\n[ProcessorSet-Slope:0]\n";
    const std::string longName(1'048'576 - 8, 'n');
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"[DataSet]\nFrameCount=1\n", "DataSet", "ChannelCount"},
        {frame + "0\n", "DataSet", "FrameCount"},
        {frame + "9\n", "DataSet", "FrameCount"},
        {frame + "2\nCh0-Fr0=A\n", "DataSet", "Ch0-Fr1"},
        {"[DataSet]\nVersion=2\nGroupCount=65537\n", "DataSet", "GroupCount"},
        {"[DataSet]\nVersion=2\nGroupCount=2\nGr0-Count=1\nGr1-Count=1048576\n", "DataSet", "Gr1-Count"},
        {"[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=99999\n" + Lines(99'999, "Gr0-Ch#=A\n") +
             "[A]\nFrame=" + std::string(1000, 'n') + "\n",
         "DataSet", "Gr0-Ch"},
        {list + "Points=-1\n", "A", "Points"},
        {list + "Lines=-1\n", "A", "Lines"},
        {list + "Lines=1048577\n", "A", "Lines"},
        {list + "Version=3\nLines=2\nLineDim1Points=-1\n", "A", "LineDim1Points"},
        {"[DataSet]\nVersion=2\nInfoSetCount=65537\n", "DataSet", "InfoSetCount"},
        {"[DataSet]\nVersion=2\nInfoSetCount=1\nInfoSet0=G\n[DataSet\\G]\nSubSectionCount=65537\n", "DataSet\\G",
         "SubSectionCount"},
        {"[DataSet]\nVersion=2\nInfoSetCount=1\nInfoSet0=" + longName + "\n[DataSet\\" + longName +
             "]\nSubSectionCount=4\n" + Lines(4, "SubSection#=#\n"),
         "DataSet\\" + longName, "SubSection3"},
        {"[DataSet]\nVersion=2\n[SetView]\nViewCount=65537\n", "SetView", "ViewCount"},
        {"[DataSet]\nVersion=2\n[SetView]\nViewCount=1\nView0=V\n[V]\nParCount=65537\n", "V", "ParCount"},
        {"[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=65537\n", "ProcessorSet", "ProcessorCount"},
        {processor + "InputCount=65537\n", "ProcessorSet-Slope:0", "InputCount"},
        {processor + "OutputCount=65537\n", "ProcessorSet-Slope:0", "OutputCount"},
    };
    for (const auto& [header, section, key] : cases) {
        OpenOxdFile(WriteOxd(header).c_str());
        const std::string text = VELGetLastError();
        const auto end = key == "Gr0-Ch" ? std::string() : "\n";
        EXPECT_NE(text.find("tag_section*] = " + section + "\n"), std::string::npos) << text.substr(0, 2000);
        EXPECT_NE(text.find("tag_key*] = " + key + end), std::string::npos) << text.substr(0, 2000);
        EXPECT_NE(text.find("tag_filename*] = " + Path("in.oxd") + "\n"), std::string::npos);
    }
}

} // namespace
