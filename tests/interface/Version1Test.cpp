// Files of version 1: frames of channels, units with SI prefixes, samples channel by channel.
#include "support/Lines.h"
#include "support/OxdTest.h"

namespace {

constexpr std::string_view lists = "ChannelCount=2\nFrameCount=2\nCh0-Fr0=A\nCh0-Fr1=B\nCh1-Fr0=C\nCh1-Fr1=D\n";
constexpr std::string_view channels =
    "[A]\nPoints=1\nLines=1\nFrame=First\nDim0Unit=nm\nDim0Range=2.5\nDim0Min=-1\nDim1Unit=m\nDim2Unit="
    "\xC2\xB5V\nDim2Range=3\n"
    "[B]\nPoints=1\nLines=1\nFrame=backwardscan\nDim0Unit=\xCE\xBCm\nDim1Unit= "
    "m\nDim1Range=7\nDim2Unit=MHz\nDim2Range=bad\n"
    "[C]\nPoints=1\nLines=1\nFrame=forwardSCAN\nCurLine=3\n[D]\nPoints=1\nLines=1\nFrame=Last\n";

class Version1Test : public OxdTest
{
protected:
    std::uint64_t OpenFrames(const std::string& version = "")
    {
        return Open(WriteOxd(("[DataSet]\n" + version).append(lists).append(channels), "\x01\x02\x03\x04"));
    }
};

TEST_F(Version1Test, FramesBecomeGroupsNamedByTheirLastChannel)
{
    for (const char* const version : {"", "Version=1\n"}) {
        const auto handle = OpenFrames(version);
        EXPECT_EQ(GetOxdVersion(handle), 1);
        ASSERT_EQ(GetGroupCount(handle), 2U);
        EXPECT_EQ(GroupName(handle, 0), "forwardSCAN");
        EXPECT_EQ(GroupName(handle, 1), "Last");
        EXPECT_EQ(GetLogicalGroupId(handle, 0), 0U);
        EXPECT_EQ(GetLogicalGroupId(handle, 1), 0U) << "one of its channels is a backward scan";
        for (std::uint64_t i = 0; i < 4; ++i)
            EXPECT_EQ(GetChannelData_PixelRaw(handle, i % 2, i / 2, 0, 0, 0), (i + 1) << 22U)
                << "samples come channel by channel, each through all frames";
        CloseOxdFile(handle);
    }
}

TEST_F(Version1Test, PrefixesOfUnitsScaleTheNumbersOfTheirAxis)
{
    const auto handle = OpenFrames();
    EXPECT_EQ(Text(GetChannelData_PointAxisUnit, handle, 0, 0), "m");
    EXPECT_DOUBLE_EQ(GetChannelData_PointAxisRange(handle, 0, 0), 2.5e-9);
    EXPECT_DOUBLE_EQ(GetChannelData_PointAxisMin(handle, 0, 0), -1e-9);
    EXPECT_EQ(Text(GetChannelData_LineAxisUnit, handle, 0, 0), "m") << "one character is a unit, not a prefix";
    EXPECT_EQ(GetChannelData_LineAxisRange(handle, 0, 0), 1) << "the default";
    EXPECT_EQ(Text(GetChannelData_SignalAxisUnit, handle, 0, 0), "V");
    EXPECT_DOUBLE_EQ(GetChannelData_SignalAxisRange(handle, 0, 0), 3e-6);
    EXPECT_EQ(Text(GetChannelData_PointAxisUnit, handle, 1, 0), "m") << "the Greek letter is the same prefix";
    EXPECT_EQ(Text(GetChannelData_LineAxisUnit, handle, 1, 0), "m") << "a blank stands for 1";
    EXPECT_EQ(GetChannelData_LineAxisRange(handle, 1, 0), 7);
    EXPECT_EQ(GetChannelData_SignalAxisRange(handle, 1, 0), 1e6) << "an unreadable number counts as missing";
}

TEST_F(Version1Test, AnyChannelOfAWellKnownNameGivesTheGroupItsLogicalId)
{
    const std::string header = "[DataSet]\nChannelCount=2\nFrameCount=300\n" + Lines(300, "Ch0-Fr#=A\nCh1-Fr#=B\n");
    const auto handle = Open(WriteOxd(header + "[A]\nFrame=BackwardScan\n[B]\nFrame=Other\n"));
    EXPECT_EQ(GetLogicalGroupId(handle, 7), 0U);
    EXPECT_EQ(GroupName(handle, 7), "Other");
    EXPECT_EQ(GetLogicalGroupId(handle, CreateGroup(handle, 16)), 300U) << "frames use the numbers up to 299";
}

TEST_F(Version1Test, ItIsSavedAsVersion2AndKeepsEachChannelsFrameName)
{
    const auto handle = OpenFrames();
    Save(handle);
    EXPECT_EQ(GetOxdVersion(handle), 2);
    const std::string saved = ReadBytes(Path("in.oxd"));
    for (const char* line :
         {"Frame=First\r\nCurLine=0", "Frame=forwardSCAN\r\nCurLine=3", "Frame=backwardscan", "Frame=Last"})
        EXPECT_NE(saved.find(line), std::string::npos) << line;
    const auto opened = Open(Path("in.oxd"));
    EXPECT_EQ(GetChannelData_PixelRaw(opened, 1, 0, 0, 0, 0), 2 << 22);
    EXPECT_DOUBLE_EQ(GetChannelData_PointAxisRange(opened, 0, 0), 2.5e-9);
}

TEST_F(Version1Test, IncompleteListsAreRefused)
{
    for (const char* const header : {"[DataSet]\n", "[DataSet]\nChannelCount=1\n", "[DataSet]\nFrameCount=1\n",
                                     "[DataSet]\nChannelCount=1\nFrameCount=1\n", "[Other]\nVersion=2\n",
                                     "[DataSet]\nChannelCount=1\nFrameCount=2\nCh0-Fr0=A\n[A]\n",
                                     "[DataSet]\nChannelCount=2147483647\nFrameCount=2147483647\n"})
        EXPECT_TRUE(ReasonOfOpening(WriteOxd(header)).starts_with("The hed file is corrupted.")) << header;
}

} // namespace
