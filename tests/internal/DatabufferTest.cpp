// What a channel tells its listeners and knows of itself.
#include "velflexlib/dataset/Databuffer.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

class DatabufferTest : public ::testing::Test
{
protected:
    CDataBuffer buffer{16, 3, 4};
    std::string log;

    DatabufferTest()
    {
        buffer.OnBeforeReshape.connect([this] { log += "<" + std::to_string(buffer.GetPoints()); });
        buffer.OnAfterReshape.connect([this] { log += ">" + std::to_string(buffer.GetPoints()); });
        buffer.OnChanged.connect([this](CDataBuffer&, std::size_t line) { log += "c" + std::to_string(line); });
    }

    bool SetLine(std::uint64_t line, std::vector<std::int32_t> values) { return buffer.SetLineRaw(line, values); }

    std::vector<std::int32_t> Line(std::uint64_t line) const
    {
        std::vector<std::int32_t> read(buffer.GetLineAxis(line).count);
        EXPECT_TRUE(buffer.ReadLineRaw(line, GetLineOperator(LineOpID::RawData), read.data()));
        return read;
    }
};

TEST_F(DatabufferTest, AnnouncesReshapesAndWritesOnce)
{
    buffer.SetXYDimension(3, 4);
    EXPECT_EQ(log, "") << "the same size is no change";
    buffer.SetXYDimension(2, 4);
    SetLine(1, {5});
    buffer.SetPixelRaw(1, 3, 9);
    EXPECT_EQ(log, "<3>2c1c3");
    EXPECT_FALSE(SetLine(4, {1}));
    EXPECT_FALSE(SetLine(0, {1, 2, 3}));
    EXPECT_FALSE(buffer.SetPixelRaw(2, 0, 1));
    EXPECT_EQ(log, "<3>2c1c3") << "a failed write announces nothing";
}

TEST_F(DatabufferTest, HeldBackNotificationsComeOnceWhenReleased)
{
    buffer.HoldNotifications();
    buffer.SetXYDimension(5, 4);
    buffer.SetXYDimension(6, 4);
    SetLine(0, {1});
    SetLine(2, {1});
    EXPECT_EQ(log, "<3<5");
    buffer.ReleaseNotifications();
    EXPECT_EQ(log, "<3<5>6c2");
    buffer.ReleaseNotifications();
    EXPECT_EQ(log, "<3<5>6c2");
}

TEST_F(DatabufferTest, ShortLinesAreFilledUpWithZeros)
{
    EXPECT_TRUE(SetLine(1, {7, 8, 9}));
    EXPECT_TRUE(SetLine(1, {5}));
    EXPECT_EQ(Line(1), (std::vector{5, 0, 0}));
    EXPECT_EQ(buffer.GetLineState(1), 3U);
    EXPECT_EQ(buffer.GetLineState(0), 0U);
    EXPECT_EQ(buffer.GetCurrentLine(), 1U);
}

TEST_F(DatabufferTest, WholeLinesWidenTheObservedRangeAndPixelsOnlyInLinesWritten)
{
    EXPECT_EQ(buffer.GetDataRange(), CRawRange());
    EXPECT_TRUE(buffer.IsEmpty());
    EXPECT_FALSE(buffer.IsDataChanged());
    buffer.SetPixelRaw(0, 0, -900);
    EXPECT_EQ(buffer.GetDataRange(), CRawRange());
    EXPECT_TRUE(buffer.IsEmpty());
    EXPECT_TRUE(buffer.IsDataChanged());
    SetLine(1, {4, 6, 5});
    buffer.SetPixelRaw(2, 1, 70);
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{4, 70}));
    EXPECT_FALSE(buffer.IsEmpty());
    SetLine(1, {5, 5, 5});
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{4, 70})) << "it never narrows";
}

TEST_F(DatabufferTest, ModeTwoKeepsTheTopThirtyBitsOfAnInteger)
{
    const double values[] = {4.0, -1.0, 1e300};
    EXPECT_TRUE(buffer.SetLineReal(0, values, RealToRawMode::FullScale));
    EXPECT_EQ(Line(0), (std::vector{1, -1, 536870911}));
}

} // namespace
