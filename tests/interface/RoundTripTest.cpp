// What is saved is what is opened again.
#include "support/OxdTest.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace {

using RoundTripTest = OxdTest;

TEST_F(RoundTripTest, EveryWidthKeepsTheTopBitsInLittleEndianOrder)
{
    std::vector<std::vector<std::int32_t>> lines(70, std::vector<std::int32_t>(300)); // more than is converted at once
    for (std::uint64_t i = 0; i < 21'000; ++i)
        lines[i / 300][i % 300] = static_cast<std::int32_t>(i * 7919 * 2'654'435 % 1'073'741'824) - 536'870'912;
    std::ranges::copy(std::array{-536870912, 536870911, -1, 1}, lines[0].begin());
    for (const auto& [bits, dropped, firstBytes] :
         {std::tuple(8, 22, std::string("\x80\x7F\xFF\x00", 4)),
          {16, 14, {"\x00\x80\xFF\x7F\xFF\xFF\x00\x00", 8}},
          {32, 0, {"\x00\x00\x00\x80\xFC\xFF\xFF\x7F\xFC\xFF\xFF\xFF\x04\x00\x00\x00", 16}}}) {
        const auto handle = Create();
        const auto group = CreateChannel(handle, bits, 300, 70);
        for (std::uint64_t y = 0; y < 70; ++y)
            SetChannelData_LineRaw(handle, group, 0, y, lines[y].data());
        EXPECT_NE(Saved(handle).find("\r\n#!" + firstBytes), std::string::npos) << bits;
        const auto opened = Open(Path("out.oxd"));
        for (std::uint64_t y = 0; y < 70; ++y) {
            auto expected = lines[y];
            for (std::int32_t& sample : expected)
                sample = sample >> dropped << dropped;
            ASSERT_EQ(LineRaw(opened, 0, 0, y), expected) << bits << " bits, line " << y;
        }
        CloseOxdFile(handle);
    }
}

TEST_F(RoundTripTest, GroupsAreNumberedAnewAndSlotsStayEmpty)
{
    const auto handle = Create();
    for (const char* name : {"ForwardScan", "gone", "Spectroscopy"})
        SetGroupName(handle, CreateGroup(handle, 16), name);
    DeleteGroup(handle, 1);
    SetLogicalGroupId(handle, 2, 0xFFFFFFF0);
    SetChannelCount(handle, 2, 3);
    SetChannelXYDimension(handle, 2, 1, 2, 1);
    SetChannelData_PointAxisRange(handle, 2, 1, 1.234567e-5);
    Save(handle);

    const auto opened = Open(Path("out.oxd"));
    EXPECT_EQ(GetGroupCount(opened), 2U);
    EXPECT_EQ(GetLogicalGroupId(opened, 0), 256U);
    EXPECT_EQ(GetLogicalGroupId(opened, 1), 0xFFFFFFF0);
    EXPECT_FALSE(HasChannelBuffer(opened, 1, 0));
    EXPECT_EQ(GetChannelData_PointAxisRange(opened, 1, 1), 1.23457e-05) << "headers keep six digits";
    EXPECT_EQ(GetLogicalGroupId(opened, CreateGroup(opened, 16)), 257U) << "the counter goes on behind the ids read";
}

TEST_F(RoundTripTest, LinesWithAxesOfTheirOwnAndLinesWithoutSamplesSurvive)
{
    const auto handle = Open(WriteOxd(oneChannel + "Version=3\nPoints=3\nLines=4\nSaveBits=32\nDim0Range=1\nDim0Min=0\n"
                                                   "LineDim1Points=2\nLineDim2Points=0\nLineDim3Min=0.5\n"
                                                   "linedim3range=7\nLineDim03Points=1\nLineDim4Points=1\n",
                                      std::string(36, '\x04')));
    EXPECT_EQ(LineRaw(handle, 0, 0, 1).size(), 2U);
    EXPECT_EQ(GetChannelData_PointsPerLine(handle, 0, 0, 2), 0U);
    EXPECT_EQ(GetChannelData_PointsPerLine(handle, 0, 0, 3), 3U);
    EXPECT_EQ(GetChannelData_PointAxisMinPerLine(handle, 0, 0, 3), 0.5);
    EXPECT_EQ(GetChannelData_PointAxisRangePerLine(handle, 0, 0, 3), 7);
    EXPECT_EQ(LineRaw(handle, 0, 0, 3), std::vector(3, 0x01010101));
    for (const int lineOp : {1, 2, 3, 4, 5})
        EXPECT_TRUE(LineRaw(handle, 0, 0, 2, lineOp).empty());

    const std::string saved = Saved(handle);
    EXPECT_NE(saved.find("LineDim0Range=1\r\nLineDim0Min=0\r\nLineDim0Points=3\r\nLineDim1Range=1\r\n"),
              std::string::npos);
    EXPECT_NE(saved.find("LineDim2Points=0\r\nLineDim3Range=7\r\nLineDim3Min=0.5\r\nLineDim3Points=3\r\nSaveMode="),
              std::string::npos);
    EXPECT_TRUE(saved.ends_with("#!" + std::string(36, '\x04')));

    // A changed point axis takes along the lines that still had its old value; writing raises what a line holds.
    SetChannelData_PointAxisMin(handle, 0, 0, 0.25);
    EXPECT_EQ(GetChannelData_PointAxisMinPerLine(handle, 0, 0, 1), 0.25);
    EXPECT_EQ(GetChannelData_PointAxisMinPerLine(handle, 0, 0, 3), 0.5);
    SetChannelData_LineRaw(handle, 0, 0, 1, std::array{1, 2, 3}.data());
    EXPECT_EQ(LineRaw(handle, 0, 0, 1), (std::vector{1, 2, 3}));
    EXPECT_EQ(LineRaw(handle, 0, 0, 3), std::vector(3, 0x01010101)) << "the others stay";
}

TEST_F(RoundTripTest, AScanThatGoesOnKeepsItsEmptyLinesEmpty)
{
    const std::string path = WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch0=C\nGr0-Ch1=D\n"
                                      "[C]\nVersion=3\nPoints=2\nLines=5\nSaveBits=32\nLineDim0Points=0\n"
                                      "LineDim2Points=0\nLineDim3Points=0\nLineDim4Points=0\n"
                                      "[D]\nPoints=1\nLines=1\nSaveBits=32\n",
                                      {"\4\0\0\0\4\0\0\0\4\0\0\0", 12});
    std::vector<std::vector<std::int32_t>> lines{{}, {1, 1}, {}, {}, {}};
    for (const std::uint64_t line : {3U, 0U, 4U}) {
        const auto handle = Open(path);
        if (line == 3)
            SetChannelData_PixelRaw(handle, 0, 0, 1, line, 7);
        else
            SetChannelData_LineRaw(handle, 0, 0, line, std::array{0, 7}.data());
        lines[line] = {0, 7};
        Save(handle);
        CloseOxdFile(handle);
        const auto opened = Open(path);
        for (std::uint64_t y = 0; y < lines.size(); ++y)
            EXPECT_EQ(LineRaw(opened, 0, 0, y), lines[y]) << y << " after writing " << line;
        EXPECT_EQ(LineRaw(opened, 0, 1, 0), std::vector{1}) << "the channel behind stays where it is";
        CloseOxdFile(opened);
    }
}

TEST_F(RoundTripTest, SavingShortensAChannelToItsLongestLine)
{
    const auto saved = Saved(
        Open(WriteOxd(oneChannel + "Version=3\nPoints=3\nLines=2\nSaveBits=16\nLineDim0Points=1\nLineDim1Points=2\n",
                      {"\x01\x00\x02\x00\x03\x00\x04\x00\x05\x00\x06\x00", 12})));
    EXPECT_NE(saved.find("Version=3\r\nPoints=2\r\nLines=2\r\n"), std::string::npos);
    EXPECT_TRUE(saved.ends_with(std::string_view("#!\x01\x00\x02\x00\x04\x00\x05\x00", 10)));
}

} // namespace
