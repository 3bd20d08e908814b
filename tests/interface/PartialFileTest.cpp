// What stays of a file that ends too early or has a fault in it, under the number that a failed open keeps.
#include "support/OxdTest.h"

#include <tuple>

namespace {

constexpr std::uint64_t kept = 1; // the smallest free number
const std::string shortStream = "basic_ios::clear: iostream error";

const std::string channels = "[A]\nVersion=3\nPoints=2\nLines=4\nSaveBits=16\nDim0Name=A\nLineDim1Points=0\n"
                             "LineDim3Points=1\n"
                             "[B]\nVersion=2\nPoints=3\nLines=2\nDim0Name=B\n"
                             "[C]\nVersion=2\nPoints=1\nLines=2\nSaveBits=32\nDim0Name=C\n[I]\n-- G --=x\na=1\n";
const std::string groupList = "[DataSet]\nVersion=2\nSetInfos=I\nGroupCount=2\nGr0-Count=2\nGr0-Ch0=A\nGr0-Ch1=B\n"
                              "Gr1-Count=1\nGr1-Ch0=C\n";
const std::string frameList = "[DataSet]\nSetInfos=I\nFrameCount=3\nChannelCount=1\nCh0-Fr0=A\nCh0-Fr1=B\nCh0-Fr2=C\n";

class PartialFileTest : public OxdTest
{
protected:
    // The file must not open for this reason, and the number that it keeps is given back by CloseOxdFile.
    static void ExpectFailure(const std::string& path, const std::string& reason)
    {
        EXPECT_EQ(ReasonOf([&] { EXPECT_EQ(OpenOxdFile(path.c_str()), 0U); }), reason);
    }

    // The lines of the three channels, in the order of the file.
    static std::vector<std::vector<std::int32_t>> Samples(std::uint64_t handle)
    {
        const bool hasFrames = GetGroupCount(handle) == 3;
        std::vector<std::vector<std::int32_t>> samples;
        for (std::uint64_t channel = 0; channel < 3; ++channel) {
            const auto group = hasFrames ? channel : channel / 2;
            const auto slot = hasFrames ? 0 : channel % 2;
            for (std::uint64_t line = 0; line < GetChannelData_Lines(handle, group, slot); ++line)
                samples.push_back(LineRaw(handle, group, slot, line));
        }
        return samples;
    }
};

TEST_F(PartialFileTest, AFileThatEndsEarlyKeepsItsHeaderAndExactlyTheWholeLines)
{
    const std::string data =
        "\1\2\3\4\5\6\7\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1A";
    constexpr std::size_t ends[] = {4, 4, 8, 12, 15, 18, 22, 26}; // of the lines, of which the second has no bytes
    for (const std::string& header : {groupList + channels, frameList + channels}) {
        const auto handle = Open(WriteOxd(header, data));
        const auto whole = Samples(handle);
        ASSERT_EQ(whole.size(), std::size(ends));
        CloseOxdFile(handle);
        for (std::size_t bytes = 0; bytes < data.size(); ++bytes) {
            auto expected = whole;
            for (std::size_t line = 0; line < whole.size(); ++line) {
                if (ends[line] > bytes)
                    expected[line].clear();
            }
            ExpectFailure(WriteOxd(header, data.substr(0, bytes)), shortStream);
            EXPECT_EQ(Samples(kept), expected) << bytes;
            EXPECT_EQ(Tree(kept), "G{a=1;}");
            EXPECT_EQ(Text(GetChannelData_PointAxisName, kept, GetGroupCount(kept) - 1, 0U), "C");
            Saved(kept);
            EXPECT_EQ(GetChannelData_Points(kept, GetGroupCount(kept) - 1, 0), 1U) << bytes;
            const auto again = Open(Path("out.oxd"));
            EXPECT_EQ(Samples(again), expected) << bytes;
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
        {"[A]\n" + badBits + "[B]\nVersion=4\n", "The hed file has an unknown version."},
        {"[A]\nPoints=9\nLines=9\n[B]\nLines=-1\n", "The hed file is corrupted."},
        {"[A]\n" + badBits + "[SetView]\nVersion=2\n", "The hed file has an unknown version."},
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
    const std::string list = "[DataSet]\nVersion=2\n";
    const std::string processor = list + "[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n[P]\nInstanceNo=0\n"
                                         "GUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\n[ProcessorSet-Slope:0]\n";
    const std::string longName(1'048'576 - 8, 'n');
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"[DataSet]\nFrameCount=1\n", "DataSet", "ChannelCount"},
        {"[DataSet]\nChannelCount=1\nFrameCount=0\n", "DataSet", "FrameCount"},
        {"[DataSet]\nChannelCount=2147483647\nFrameCount=2147483647\n", "DataSet", "FrameCount"},
        {"[DataSet]\nChannelCount=1\nFrameCount=2\nCh0-Fr0=A\n[A]\n", "DataSet", "Ch0-Fr1"},
        {list + "GroupCount=65537\n", "DataSet", "GroupCount"},
        {list + "GroupCount=2\nGr0-Count=1\nGr1-Count=1048576\n", "DataSet", "Gr1-Count"},
        {list + "GroupCount=1\nGr0-Count=99999\n" + Lines(99'999, "Gr0-Ch#=A\n") +
             "[A]\nFrame=" + std::string(1000, 'n') + "\n",
         "DataSet", "Gr0-Ch"}, // whichever is one too many
        {oneChannel + "Points=-1\n", "C", "Points"},
        {oneChannel + "Lines=-1\n", "C", "Lines"},
        {oneChannel + "Lines=1048577\n", "C", "Lines"},
        {oneChannel + "Version=3\nLines=2\nLineDim1Points=-1\n", "C", "LineDim1Points"},
        {list + "InfoSetCount=65537\n", "DataSet", "InfoSetCount"},
        {list + "InfoSetCount=1\nInfoSet0=G\n[DataSet\\G]\nSubSectionCount=65537\n", "DataSet\\G", "SubSectionCount"},
        {list + "InfoSetCount=1\nInfoSet0=" + longName + "\n[DataSet\\" + longName + "]\nSubSectionCount=4\n" +
             Lines(4, "SubSection#=#\n"),
         "DataSet\\" + longName, "SubSection3"},
        {list + "[SetView]\nViewCount=65537\n", "SetView", "ViewCount"},
        {list + "[SetView]\nViewCount=1\nView0=V\n[V]\nParCount=18446744073709551615\n", "V", "ParCount"},
        {list + "[ProcessorSet]\nProcessorCount=65537\n", "ProcessorSet", "ProcessorCount"},
        {processor + "InputCount=65537\n", "ProcessorSet-Slope:0", "InputCount"},
        {processor + "OutputCount=18446744073709551615\n", "ProcessorSet-Slope:0", "OutputCount"},
    };
    for (const auto& [header, section, key] : cases) {
        OpenOxdFile(WriteOxd(header).c_str());
        const std::string text = VELGetLastError();
        EXPECT_TRUE(ReasonIn(text).starts_with("The hed file is corrupted.")) << text.substr(0, 2000);
        EXPECT_NE(text.find("tag_section*] = " + section + "\n"), std::string::npos) << text.substr(0, 2000);
        EXPECT_NE(text.find("tag_key*] = " + key), std::string::npos) << text.substr(0, 2000);
        EXPECT_NE(text.find("tag_filename*] = " + Path("in.oxd") + "\n"), std::string::npos);
    }
}

} // namespace
