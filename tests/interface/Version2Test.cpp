// What a version-2 file may leave out, and what it may not ask for.
#include "support/OxdTest.h"

#include <cmath>

namespace {

class Version2Test : public OxdTest
{
};

constexpr std::string_view badContent = "The hed file is corrupted.";

TEST_F(Version2Test, MissingKeysHaveDefaults)
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
    ChangeOxdFilename(handle, Path("out.oxd").c_str());
    Save(handle);
    const std::string saved = ReadBytes(Path("out.oxd"));
    EXPECT_NE(saved.find("Frame=Unknown\r\n"), std::string::npos);
    EXPECT_NE(saved.find("SaveBits=16\r\n"), std::string::npos);
}

TEST_F(Version2Test, TheFrameNameOfAChannelSurvivesUntilItsGroupIsRenamed)
{
    const auto handle = Open(WriteOxd(
        "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=G\nGr0-Count=2\nGr0-Ch0=A\n[A]\nFrame=F\nSaveBits=16\n"));
    SetChannelXYDimension(handle, 0, 1, 1, 1);
    for (const char* const frame : {"F", "N"}) {
        Save(handle);
        const std::string saved = ReadBytes(Path("in.oxd"));
        EXPECT_NE(saved.find(std::string("Frame=") + frame + "\r\n"), std::string::npos) << saved;
        EXPECT_NE(saved.find("SaveBits=32\r\n"), std::string::npos) << "that of the channel which was added";
        SetGroupName(handle, 0, "N");
    }
}

TEST_F(Version2Test, WhatCannotBeReadIsRefused)
{
    const std::string list = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n";
    const std::string processor =
        "[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n[P]\nInstanceNo=0\nGUID=";
    const std::string slope = processor + "{AB0B4062-81AF-464B-A7F7-75B11891ACF8}\n[ProcessorSet-Slope:0]\n";
    const std::string view = "[DataSet]\nVersion=2\n[SetView]\nViewCount=1\nView0=V\n[V]\n";
    const std::pair<std::string, std::string_view> cases[] = {
        {"[DataSet]\nVersion=3\n", "The hed file has an unknown version."},
        {"[DataSet]\nVersion=0\n", "The hed file has an unknown version."},
        {"[DataSet]\nVersion=2\n[SetView]\nVersion=2\n", "The hed file has an unknown version."},
        {"[DataSet]\nVersion=2\n[SetView]\nViewCount=65537\n", badContent},
        {"[DataSet]\nVersion=2\n[ProcessorSet]\nProcessorCount=65537\n", badContent},
        {list + "[A]\nVersion=4\n", "The hed file has an unknown version."},
        {list + "[A]\nPoints=-1\n", badContent},
        {list + "[A]\nLines=-1\n", badContent},
        {list + "[A]\nVersion=3\nLines=1\nPoints=1\nLineDim0Points=-1\n", badContent},
        {list + "[A]\nLines=1\nPoints=1\nSaveBits=12\n", "Invalid bit count: 12"},
        {list + "[A]\nLines=99\nPoints=99\nSaveBits=64\n", "Invalid bit count: 64"},
        {"[DataSet]\nVersion=2\n[]\n", "Empty section name not allowed"},
        {view + "ViewTyp=7\n", "invalid map<K, T> key"},
        {view + "ViewTyp=-1\n", "invalid map<K, T> key"},
        {view + "LineOp=6\n", "invalid map<K, T> key"},
        {view + "ViewMode=2\n", "invalid map<K, T> key"},
        {view + "GraphMode=3\n", "invalid map<K, T> key"},
        {view + "ParCount=18446744073709551615\n", badContent},
        {view + "ZRange=5\n", "invalid vector<T> subscript"},
        {view + "ParCount=1\nPar0=one,a,b\n", "invalid stoi argument"},
        {view + "ParCount=1\nPar0=2147483648,a,b\n", "stoi argument out of range"},
        {processor + "x\n", "invalid map<K, T> key"},
        {processor + "{ab0b4062-81af-464b-a7f7-75b11891acf8}\n", "invalid map<K, T> key"}, // not with its case
        {slope + "InputCount=65537\n", badContent},
        {slope + "OutputCount=18446744073709551615\n", badContent},
        // More than the file has, or may ask for.
        {list + "[A]\nPoints=2147483647\nLines=2147483647\nSaveBits=32\n", "basic_ios::clear: iostream error"},
        {list + "[A]\nPoints=9\nLines=1\n", "basic_ios::clear: iostream error"},
        {list + "[A]\nPoints=0\nLines=2147483647\n", badContent},
        {list + "[A]\nPoints=2147483648\nLines=1\n", ""}, // no int: the default
        {list + "[A]\nPoints=2147483647\nLines=0\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=65537\n", badContent},
        {"[DataSet]\nVersion=2\nGroupCount=65536\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=-1\n", ""},
        {"[DataSet]\nVersion=2\nGroupCount=2\nGr0-Count=1048576\nGr1-Count=1\n", badContent},
        {"[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1048576\n", ""},
    };
    for (const auto& [header, reason] : cases) {
        const std::string actual = ReasonOfOpening(WriteOxd(header, "12345678"));
        EXPECT_TRUE(actual.starts_with(reason) && actual.empty() == reason.empty()) << header << '\n' << actual;
    }
    OpenOxdFile(WriteOxd("[DataSet]\nVersion=1234567\n").c_str());
    const std::string text = VELGetLastError();
    EXPECT_NE(text.find("tag_fileversion*] = 1234567\n"), std::string::npos) << text;
    EXPECT_NE(text.find("tag_filename*] = " + Path("in.oxd") + "\n"), std::string::npos) << text;
}

TEST_F(Version2Test, NumbersThatAreNoneOrNotZeroButLookAlikeStayWithTheirLines)
{
    const auto handle =
        Open(WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=A\n[A]\nVersion=3\nPoints=2\nLines=2\n"
                      "Dim0Range=nan\nLineDim0Points=1\nLineDim1Min=-0\n",
                      "1234"));
    SetChannelData_PointAxisRange(handle, 0, 0, 5);
    EXPECT_EQ(GetChannelData_PointAxisRangePerLine(handle, 0, 0, 0), 5) << "it was as undefined as the channel's";
    EXPECT_TRUE(std::signbit(GetChannelData_PointAxisMinPerLine(handle, 0, 0, 1)));
}

} // namespace
