// What a channel announces, and what it knows of its samples.
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/operators/LineOperatorTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

class DatabufferTest : public ::testing::Test
{
protected:
    CDataBuffer buffer{16, 3, 4};

    bool SetLine(std::uint64_t line, std::vector<std::int32_t> values) { return buffer.SetLineRaw(line, values); }

    // Loads as many bytes, all 1 but the last two, into the buffer.
    void Load(std::size_t count, std::byte lastTwo = std::byte{1})
    {
        buffer.LoadSamples(count, [=](auto bytes, auto...) {
            std::ranges::fill(bytes, std::byte{1});
            std::ranges::fill(bytes.last(2), lastTwo);
        });
    }
};

TEST_F(DatabufferTest, OnlyWhatWasLoadedCountsAsUnchanged)
{
    EXPECT_FALSE(CDataBuffer(16, 0, 0).IsDataChanged());
    SetLine(1, {5});
    EXPECT_TRUE(buffer.IsDataChanged());
    Load(12);
    EXPECT_FALSE(buffer.IsDataChanged());
    buffer.SetPixelRaw(0, 0, 1);
    EXPECT_TRUE(buffer.IsDataChanged());
}

TEST_F(DatabufferTest, ReshapesAndWritesAreAnnouncedOnceAndLaterWhenThatIsHeldBack)
{
    std::string log;
    buffer.OnBeforeReshape.connect([&] { log += "<" + std::to_string(buffer.GetPoints()); });
    buffer.OnAfterReshape.connect([&] { log += ">" + std::to_string(buffer.GetPoints()); });
    buffer.OnChanged.connect([&](CDataBuffer&, std::size_t line) { log += "c" + std::to_string(line); });
    buffer.SetXYDimension(3, 4); // as it is
    buffer.SetXYDimension(2, 4);
    SetLine(1, {5});
    buffer.SetPixelRaw(1, 3, 9);
    EXPECT_FALSE(SetLine(4, {1}) || SetLine(0, {1, 2, 3}) || buffer.SetPixelRaw(2, 0, 1));
    EXPECT_EQ(log, "<3>2c1c3");

    log.clear();
    buffer.HoldNotifications();
    buffer.SetXYDimension(5, 4);
    buffer.SetXYDimension(6, 4);
    SetLine(0, {1});
    SetLine(2, {1});
    EXPECT_EQ(log, "<2<5");
    buffer.ReleaseNotifications();
    buffer.ReleaseNotifications();
    EXPECT_EQ(log, "<2<5>6c2");
}

TEST_F(DatabufferTest, WholeLinesWidenTheObservedRangeAndPixelsOnlyInLinesWritten)
{
    buffer.SetPixelRaw(0, 0, -900);
    EXPECT_EQ(buffer.GetDataRange(), CRawRange());
    SetLine(1, {4, 6, 5});
    buffer.SetPixelRaw(2, 1, 70);
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{4, 70}));
    SetLine(1, {5, 6});
    std::int32_t padding = 1;
    EXPECT_TRUE(buffer.ReadPixelRaw(2, 1, GetLineOperator(LineOpID::RawData), padding));
    EXPECT_EQ(padding, 0);
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{0, 70})) << "it never narrows";
    buffer.SetXYDimension(3, 3);
    EXPECT_EQ(buffer.GetDataRange(), CRawRange());
}

TEST_F(DatabufferTest, AllLoadedSamplesEnterTheRangeWheneverItIsAskedFor)
{
    constexpr int loaded = 0x0101 << 14;
    const std::pair<std::function<void()>, CRawRange> edits[] = {
        {[&] { SetLine(0, {-5, 7}); }, {-5, loaded}},        {[&] { buffer.SetPixelRaw(0, 0, 9); }, {9, loaded}},
        {[&] { buffer.SetPixelRaw(0, 1, 9); }, {9, loaded}}, // the zeros beside it in line 1 were never loaded
        {[&] { SetLine(1, {}); }, {loaded, loaded}},         {[&] { buffer.PrepareForSave(); }, {loaded, 2 * loaded}},
    };
    for (const auto& [edit, range] : edits) {
        for (const bool isAskedBefore : {false, true}) {
            buffer.SetBitCount(16);
            buffer.Restore(3, 2, {{0, CLineAxis{2, 0, 0}}, {1, CLineAxis{0, 0, 0}}}, 0);
            Load(6, std::byte(range.highest / loaded)); // 2 beyond the valid points of line 0
            if (isAskedBefore)
                buffer.GetDataRange();
            edit();
            EXPECT_EQ(buffer.GetDataRange(), range) << range.highest << isAskedBefore;
        }
    }
}

TEST_F(DatabufferTest, CorrectedSamplesAreThoseOfTheCurrentLine)
{
    const auto corrected = [&] {
        std::int32_t value = 0;
        EXPECT_TRUE(buffer.ReadPixelRaw(0, 0, GetLineOperator(LineOpID::MeanFit), value));
        return value;
    };
    SetLine(0, {3, 6, 9});
    EXPECT_EQ(corrected(), -3);
    buffer.SetXYDimension(3, 1);
    EXPECT_EQ(corrected(), 0);
    buffer.Restore(2, 1, {}, 0);
    for (const int last : {1, 3}) {
        Load(4, std::byte(last));
        EXPECT_EQ(corrected(), -(0x0101 << 13) * (last - 1)) << "also when it is loaded again";
    }
}

} // namespace
