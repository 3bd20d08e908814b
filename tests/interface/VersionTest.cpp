// Files of version 1: frames of channels, units with SI prefixes, samples channel by channel. Files of version 2.
#include "support/Lines.h"
#include "support/OxdTest.h"

#include <cmath>

namespace {

constexpr std::string_view frames =
    "ChannelCount=2\nFrameCount=2\nCh0-Fr0=A\nCh0-Fr1=B\nCh1-Fr0=C\nCh1-Fr1=D\n"
    "[A]\nPoints=1\nLines=1\nFrame=First\nDim0Unit=nm\nDim0Range=2.5\nDim0Min=-1\nDim1Unit=m\nDim2Unit="
    "\xC2\xB5V\nDim2Range=3\n"
    "[B]\nPoints=1\nLines=1\nFrame=backwardscan\nDim0Unit=\xCE\xBCm\nDim1Unit= "
    "m\nDim1Range=7\nDim2Unit=MHz\nDim2Range=bad\n"
    "[C]\nPoints=1\nLines=1\nFrame=forwardSCAN\nCurLine=3\n[D]\nPoints=1\nLines=1\nFrame=Last\n";

using VersionTest = OxdTest;

TEST_F(VersionTest, FramesBecomeGroupsNamedByTheirLastChannelAndAreSavedAsVersion2)
{
    for (const char* const version : {"", "Version=1\n"}) {
        const auto handle = Open(WriteOxd(("[DataSet]\n" + std::string(version)).append(frames), "\x01\x02\x03\x04"));
        EXPECT_EQ(GetOxdVersion(handle), 1);
        ASSERT_EQ(GetGroupCount(handle), 2U);
        EXPECT_EQ(GroupName(handle, 0), "forwardSCAN");
        EXPECT_EQ(GroupName(handle, 1), "Last");
        EXPECT_EQ(GetLogicalGroupId(handle, 0), 0U);
        EXPECT_EQ(GetLogicalGroupId(handle, 1), 0U) << "one of its channels is a backward scan";
        for (std::uint64_t i = 0; i < 4; ++i)
            EXPECT_EQ(GetChannelData_PixelRaw(handle, i % 2, i / 2, 0, 0, 0), (i + 1) << 22U)
                << "samples come channel by channel, each through all frames";
        const std::string saved = Saved(handle);
        EXPECT_EQ(GetOxdVersion(handle), 2);
        for (const char* line :
             {"Frame=First\r\nCurLine=0", "Frame=forwardSCAN\r\nCurLine=3", "Frame=backwardscan", "Frame=Last"})
            EXPECT_NE(saved.find(line), std::string::npos) << line << ": each channel keeps its frame's name";
    }
}

TEST_F(VersionTest, PrefixesOfUnitsScaleTheNumbersOfTheirAxis)
{
    const auto handle = Open(WriteOxd("[DataSet]\n" + std::string(frames), "1234"));
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

TEST_F(VersionTest, ChannelsBeyondTheCountsAreNotLoadedAndCostNoOther)
{
    const auto handle = Open(WriteOxd("[DataSet]\nChannelCount=2\nFrameCount=1\nCh0-Fr0=A\nCh0-Fr1=A\nCh1-Fr0=A\n"
                                      "Ch2-Fr0=A\n[A]\nPoints=1\nLines=1\n",
                                      "\1\2"));
    EXPECT_EQ(GetGroupCount(handle), 1U);
    EXPECT_EQ(GetChannelCount(handle, 0), 2U);
    for (std::uint64_t channel = 0; channel < 2; ++channel)
        EXPECT_EQ(GetChannelData_PixelRaw(handle, 0, channel, 0, 0, 0), (channel + 1) << 22U);
}

TEST_F(VersionTest, LogicalIdsGoOnBehindTheNumbersOfFrames)
{
    const auto handle = Open(WriteOxd("[DataSet]\nChannelCount=1\nFrameCount=300\n" + Lines(300, "Ch0-Fr#=A\n")));
    EXPECT_EQ(GetLogicalGroupId(handle, CreateGroup(handle, 16)), 300U);
}

TEST_F(VersionTest, MissingKeysHaveDefaults)
{
    const auto handle =
        Open(WriteOxd("[DataSet]\nVersion=2\nGroupCount=6\nGr0-Count=2\nGr0-Ch1=A\nGr1-Name=backwardscan\n"
                      "Gr2-Name=SPECTROSCOPY\nGr3-ID=7\nGr4-Name=Other\nGr5-ID=-1\nGr5-Count=-3\n"
                      "[A]\nVersion=2\nPoints=2\nLines=1\nDim1Range=1,5\nDim2Min=inf\n",
                      "\x7F\x80"));
    EXPECT_EQ(GroupName(handle, 0), "Group0");
    const std::uint64_t ids[] = {256, 0, 1, 7, 257, 258};
    for (std::uint64_t group = 0; group < 6; ++group)
        EXPECT_EQ(GetLogicalGroupId(handle, group), ids[group]) << group;
    EXPECT_FALSE(HasChannelBuffer(handle, 0, 0));
    EXPECT_EQ(GetChannelCount(handle, 5), 0U);
    EXPECT_EQ(LineRaw(handle, 0, 1, 0), (std::vector{532676608, -536870912})) << "8 bits unless stated";
    EXPECT_EQ(Text(GetChannelData_LineAxisName, handle, 0, 1), "Noname");
    EXPECT_EQ(GetChannelData_LineAxisRange(handle, 0, 1), 0) << "a decimal comma is no number";
    EXPECT_EQ(GetChannelData_SignalAxisMin(handle, 0, 1), HUGE_VAL);
    const std::string saved = Saved(handle);
    EXPECT_NE(saved.find("Frame=Unknown\r\n"), std::string::npos);
    EXPECT_NE(saved.find("SaveBits=16\r\n"), std::string::npos);
}

TEST_F(VersionTest, TheFrameNameOfAChannelSurvivesUntilItsGroupIsRenamed)
{
    const auto handle = Open(WriteOxd(
        "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=G\nGr0-Count=2\nGr0-Ch0=A\n[A]\nFrame=F\nSaveBits=16\n"));
    SetChannelXYDimension(handle, 0, 1, 1, 1);
    for (const auto& [first, second] : {std::pair("F", "G"), std::pair("N", "N")}) {
        const std::string saved = Saved(handle);
        const auto frame = saved.find(std::string("Frame=") + first + "\r\n");
        EXPECT_NE(frame, std::string::npos) << saved;
        EXPECT_NE(saved.find(std::string("Frame=") + second + "\r\n", frame + 1), std::string::npos) << saved;
        EXPECT_NE(saved.find("SaveBits=32\r\n"), std::string::npos) << "that of the channel which was added";
        SetGroupName(handle, 0, "N");
    }
}

TEST_F(VersionTest, WhatCannotBeReadIsRefused)
{
    const std::string view = "[DataSet]\nVersion=2\n[SetView]\nViewCount=1\nView0=V\n[V]\n";
    const std::pair<std::string, std::string_view> cases[] = {
        {"[Other]\nVersion=2\n", "The hed file is corrupted."},
        {"[DataSet]\nVersion=3\n", "The hed file has an unknown version."},
        {"[DataSet]\nVersion=2\n[]\n", "Empty section name not allowed"},
        {view + "ViewTyp=7\n", "invalid map<K, T> key"},
        {view + "ZRange=5\n", "invalid vector<T> subscript"},
        {view + "ParCount=1\nPar0=one,a,b\n", "invalid stoi argument"},
        {view + "ParCount=1\nPar0=2147483648,a,b\n", "stoi argument out of range"},
        {"[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n[P]\nInstanceNo=0\n"
         "GUID={ab0b4062-81af-464b-a7f7-75b11891acf8}\n",
         "invalid map<K, T> key"}, // not with its case
        // More than the file has, or may ask for.
        {oneChannel + "Points=2147483647\nLines=2147483647\nSaveBits=32\n", "basic_ios::clear: iostream error"},
        {oneChannel + "Points=2147483648\nLines=1\n", ""}, // no int: the default
        {oneChannel + "Points=2147483647\nLines=0\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=65536\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=-1\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1048576\n", ""},
    };
    for (const auto& [header, reason] : cases) {
        const std::string actual = ReasonOfOpening(WriteOxd(header, "12345678"));
        EXPECT_TRUE(actual.starts_with(reason) && actual.empty() == reason.empty()) << header << '\n' << actual;
    }
    OpenOxdFile(WriteOxd("[DataSet]\nVersion=1234567\n").c_str());
    const std::string text = VELGetLastError();
    EXPECT_NE(text.find("tag_fileversion*] = 1234567\n"), std::string::npos) << text;
}

TEST_F(VersionTest, NumbersThatAreNoneOrNotZeroButLookAlikeStayWithTheirLines)
{
    const auto handle = Open(WriteOxd(
        oneChannel + "Version=3\nPoints=2\nLines=2\nDim0Range=nan\nLineDim0Points=1\nLineDim1Min=-0\n", "1234"));
    SetChannelData_PointAxisRange(handle, 0, 0, 5);
    EXPECT_EQ(GetChannelData_PointAxisRangePerLine(handle, 0, 0, 0), 5) << "it was as undefined as the channel's";
    EXPECT_TRUE(std::signbit(GetChannelData_PointAxisMinPerLine(handle, 0, 0, 1)));
}

} // namespace
