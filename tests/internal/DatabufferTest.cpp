// What a channel tells its listeners and knows of itself.
#include "velflexlib/dataset/Databuffer.h"

#include <gtest/gtest.h>

#include <array>
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

TEST_F(DatabufferTest, LoadedSamplesAreInTheRangeEvenWhenOverwrittenBeforeItIsAskedFor)
{
    CSampleBlock loaded = buffer.GetBlankSamples();
    for (std::uint64_t line = 0; line < 4; ++line) {
        const auto first = static_cast<std::int32_t>(10 + 3 * line);
        loaded.Write(line, 0, std::array{first, first + 1, first + 2});
    }
    buffer.FinishLoading(std::move(loaded));
    EXPECT_EQ(buffer.GetLineState(3), 3U);
    EXPECT_FALSE(buffer.IsEmpty());
    EXPECT_FALSE(buffer.IsDataChanged());
    SetLine(3, {15, 15, 15});
    buffer.SetPixelRaw(0, 0, 15);
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{10, 21}));
}

TEST_F(DatabufferTest, SamplesStayAsTheFileHasThemUntilOneDoesNotFit)
{
    const auto width = [&] {
        SampleWidth held{};
        buffer.AccessSamples([&](const CSampleBlock& samples) { held = samples.Width(); });
        return held;
    };
    buffer.Restore(3, 4, {{2, {0, 0, 0}}}, 0);
    SetLine(0, {1 << 14, -(1 << 14), CRawRange::lowestPossible});
    SetLine(2, {1 << 14});
    EXPECT_EQ(width(), SampleWidth::Bits16);
    buffer.SetPixelRaw(1, 3, 1);
    EXPECT_EQ(width(), SampleWidth::Bits32);
    EXPECT_EQ(Line(0), (std::vector{1 << 14, -(1 << 14), CRawRange::lowestPossible}));
    EXPECT_EQ(Line(2), (std::vector{1 << 14}));
    EXPECT_EQ(Line(3), (std::vector{0, 1, 0}));
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{CRawRange::lowestPossible, 1 << 14}));
}

TEST_F(DatabufferTest, ModeTwoKeepsTheTopThirtyBitsOfAnInteger)
{
    const double values[] = {4.0, -1.0, 1e300};
    EXPECT_TRUE(buffer.SetLineReal(0, values, RealToRawMode::FullScale));
    EXPECT_EQ(Line(0), (std::vector{1, -1, 536870911}));
    EXPECT_FALSE(buffer.SetLineReal(0, values, static_cast<RealToRawMode>(3)));
    EXPECT_FALSE(buffer.SetPixelReal(0, 0, 1, static_cast<RealToRawMode>(0)));
}

TEST_F(DatabufferTest, OnlyThreeAxesExist)
{
    EXPECT_THROW(buffer.GetAxisRange(3), std::out_of_range);
    EXPECT_THROW(buffer.SetAxisMin(3, 0), std::out_of_range);
}

TEST_F(DatabufferTest, LinesThatHoldNoSamplesGetStorageWhenTheyAreWritten)
{
    buffer.Restore(3, 4, {{0, {0, 0, 0}}, {2, {0, 0, 0}}}, 0);
    EXPECT_EQ(buffer.GetStoredSampleCount(), 6U);
    SetLine(1, {1, 2, 3});
    SetLine(3, {4, 5, 6});
    SetLine(0, {});
    EXPECT_EQ(buffer.GetStoredSampleCount(), 6U) << "nothing was written to it";
    EXPECT_TRUE(Line(0).empty());
    buffer.SetPixelRaw(1, 2, 9);
    EXPECT_EQ(Line(1), (std::vector{1, 2, 3}));
    EXPECT_EQ(Line(2), (std::vector{0, 9}));
    EXPECT_EQ(Line(3), (std::vector{4, 5, 6}));
}

TEST_F(DatabufferTest, ALineWrittenWhileOthersAreShortenedStaysWhole)
{
    buffer.Restore(3, 2, {{0, {1, 0, 0}}, {1, {2, 0, 0}}}, 0);
    const auto connection = buffer.OnBeforeReshape.connect([this] { SetLine(0, {7, 8, 9}); });
    buffer.PrepareForSave();
    EXPECT_EQ(Line(0), (std::vector{7, 8, 9}));
}

} // namespace
