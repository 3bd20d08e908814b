// What channels tell their listeners and know of themselves, how that travels up to the data set, and who may outlive
// whom.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/DataSetToVELConfig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

class DataSetTest : public ::testing::Test
{
protected:
    std::unique_ptr<CDataSet> dataSet = std::make_unique<CDataSet>();
    std::string log;

    DataSetTest()
    {
        dataSet->OnChanged.connect([this] { log += "[set]"; });
        dataSet->OnGroupNameChanged.connect([this](const std::string& name) { log += "[name " + name + "]"; });
        dataSet->OnGroupChanged.connect([this](CDataGroup& group) { log += "[group " + group.GetName() + "]"; });
        dataSet->OnBufferChanged.connect([this](CDataGroup& group, CDataBuffer& buffer, std::size_t line) {
            log += "[" + group.GetName() + "/" + buffer.GetGroupName() + " line " + std::to_string(line) + "]";
        });
    }
};

TEST_F(DataSetTest, ChangesTravelUp)
{
    const auto group = dataSet->GetGroup(static_cast<std::uint64_t>(dataSet->CreateGroup("", 16)));
    group->SetChannelCount(1);
    const auto buffer = group->GetOrCreateChannelBuffer(0, 2, 2);
    group->SetName("G");
    group->SetName("G");
    buffer->SetLineRaw(1, std::vector{1, 2});
    group->DeleteChannelBuffer(0);
    EXPECT_EQ(log, "[set][group Group0][group Group0][name G][G/G line 1][group G]");
    EXPECT_TRUE(dataSet->IsModified());
    dataSet->SetModified(false);
    log.clear();
    EXPECT_TRUE(dataSet->DeleteGroup(CDataSet::invalidGroupId));
    EXPECT_FALSE(dataSet->DeleteGroup(5) || dataSet->IsModified());
    EXPECT_TRUE(dataSet->DeleteGroup(0));
    EXPECT_EQ(log, "[set]");
    EXPECT_TRUE(dataSet->IsModified());
    dataSet->SetModified(false);
    dataSet->DeleteAllGroups();
    EXPECT_TRUE(dataSet->IsModified());
}

TEST_F(DataSetTest, TheDataSetHearsOfChangesBeforeThoseWhoListenToTheGroup)
{
    const auto group = dataSet->GetGroup(static_cast<std::uint64_t>(dataSet->CreateGroup("G", 16)));
    group->OnNameChanged.connect([this](const std::string&) { log += "name "; });
    group->OnChanged.connect([this](CDataGroup&) { log += "group "; });
    group->OnBufferChanged.connect([this](CDataGroup&, CDataBuffer&, std::size_t) { log += "line "; });
    log.clear();
    for (const std::uint64_t slot : {0U, 1U})
        group->GetOrCreateChannelBuffer(slot, 1, 1)->SetPixelRaw(0, 0, 1);
    group->SetName("N");
    for (const auto& channel : group->GetChannelBuffers())
        EXPECT_EQ(channel->GetGroupName(), "N");
    EXPECT_EQ(log, "[group G]group [G/G line 0]line [group G]group [G/G line 0]line [name N]name ");
    log.clear();
    CDataSet silent;
    const auto heard = silent.GetGroup(static_cast<std::uint64_t>(silent.CreateGroup("G", 16)));
    const auto buffer = heard->GetOrCreateChannelBuffer(0, 1, 1);
    buffer->SetPixelRaw(0, 0, 1);
    heard->OnBufferChanged.connect([this](CDataGroup&, CDataBuffer&, std::size_t) { log += "line "; });
    buffer->SetPixelRaw(0, 0, 1);
    EXPECT_EQ(log, "line ") << "the group alone is listened to";
}

TEST_F(DataSetTest, GroupsAndChannelsOutliveTheirOwners)
{
    auto group = dataSet->GetGroup(static_cast<std::uint64_t>(dataSet->CreateGroup("G", 16)));
    const auto buffer = group->GetOrCreateChannelBuffer(5, 1, 1);
    EXPECT_EQ(group->GetChannelCount(), 6U);
    dataSet.reset();
    log.clear();
    group->SetName("N");
    buffer->SetPixelRaw(0, 0, 1);
    group.reset();
    buffer->SetPixelRaw(0, 0, 2);
    EXPECT_EQ(log + buffer->GetGroupName(), "N");
}

TEST_F(DataSetTest, ProcessorsAreConnectedToTheChannelsThatWereLoaded)
{
    veltaris::velstdlib::util::CVELConfig document;
    document.GetContent().Parse(
        "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch1=A\n[ProcessorSet]\nProcessorCount=1\n"
        "Processor0=P\n[P]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=0\n"
        "[ProcessorSet-Slope:0]\nInputCount=2\nInput0Group=0\nInput0Channel=1\nInput1Group=0\n"
        "OutputCount=1\nOutput0Group=9\nOutput0Channel=0\n[SetView]\nViewCount=2\n",
        false);
    CDataSetToVELConfig(*dataSet).LoadHeader(document, "DataSet", false);
    const CProcessorBase& slope = *dataSet->GetProcessorSet().GetProcessors().at(0);
    ASSERT_NE(dataSet->GetGroup(0)->GetChannelBuffer(1), nullptr);
    EXPECT_EQ(slope.GetInputs().GetBuffer(0), dataSet->GetGroup(0)->GetChannelBuffer(1));
    EXPECT_EQ(slope.GetInputs().GetBuffer(1), nullptr);
    EXPECT_EQ(slope.GetOutputs().GetBuffer(0), nullptr);
    dataSet->GetGroup(0)->DeleteChannelBuffer(1);
    EXPECT_EQ(slope.GetInputs().GetBuffer(0), nullptr) << "a processor keeps no channel alive";
    EXPECT_EQ(dataSet->GetViewSet().GetViews().size(), 2U);
}

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

TEST_F(DatabufferTest, AnnouncesReshapesAndWritesOnceAndWhenThatIsHeldBackLater)
{
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
    EXPECT_TRUE(buffer.IsEmpty() && buffer.IsDataChanged());
    SetLine(1, {4, 6, 5});
    buffer.SetPixelRaw(2, 1, 70);
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{4, 70}));
    EXPECT_FALSE(buffer.IsEmpty());
    SetLine(1, {5, 6});
    EXPECT_EQ(Line(1), (std::vector{5, 6, 0})) << "short lines are padded";
    EXPECT_EQ(buffer.GetDataRange(), (CRawRange{0, 70})) << "it never narrows";
    buffer.SetXYDimension(3, 3);
    EXPECT_EQ(buffer.GetDataRange(), CRawRange());
    buffer.SetXYDimension(3, 4);
    SetLine(1, {5});
    EXPECT_EQ(buffer.GetLineState(1), 3U);
    EXPECT_EQ(buffer.GetLineState(0), 0U);
    EXPECT_EQ(buffer.GetCurrentLine(), 1U);
}

TEST_F(DatabufferTest, ModesOfRealValuesAreFewAndOneKeepsTheTopThirtyBitsOfAnInteger)
{
    const double values[] = {4.0, -1.0, 1e300};
    EXPECT_TRUE(buffer.SetLineReal(0, values, RealToRawMode::FullScale));
    EXPECT_EQ(Line(0), (std::vector{1, -1, 536870911}));
    EXPECT_FALSE(buffer.SetLineReal(9, values, RealToRawMode::FullScale));
    constexpr auto noMode = static_cast<RealToRawMode>(9);
    EXPECT_FALSE(buffer.SetLineReal(0, values, noMode) || buffer.SetPixelReal(0, 0, 0.5, noMode));
}

TEST_F(DatabufferTest, SamplesAreLoadedAsFarAsTheyGo)
{
    using Bytes = std::span<std::byte>;
    const auto restore = [&] { buffer.Restore(2, 5, {{1, CLineAxis{0, 0, 0}}, {3, CLineAxis{0, 0, 0}}}, 4); };
    const auto counts = [&] {
        std::string text;
        for (std::uint64_t line = 0; line < 5; ++line)
            text += std::to_string(Line(line).size()) + std::to_string(buffer.GetLineState(line)) + " ";
        return text;
    };
    restore();
    EXPECT_EQ(counts(), "00 00 00 00 00 ") << "no samples yet";
    EXPECT_EQ(log, "<3");
    buffer.ReleaseNotifications();
    EXPECT_EQ(log, "<3>2");

    const auto load = [](Bytes bytes, SampleWidth, std::size_t&) { std::ranges::fill(bytes, std::byte{1}); };
    for (const auto& [bytes, expected] : {std::pair(0U, "00 00 00 00 00 "),
                                          {3U, "00 00 00 00 00 "},
                                          {4U, "23 03 00 00 00 "},
                                          {7U, "23 03 00 00 00 "},
                                          {11U, "23 03 23 03 00 "},
                                          {12U, "23 03 23 03 23 "}}) {
        buffer.SetBitCount(16);
        restore();
        log.clear();
        EXPECT_EQ(buffer.LoadSamples(bytes, load), bytes == 12);
        EXPECT_EQ(counts() + log, expected + std::string(">2")) << bytes;
    }
    EXPECT_EQ(Line(4), (std::vector{0x0101 << 14, 0x0101 << 14}));
}

TEST_F(DatabufferTest, CorrectedSamplesAreThoseOfTheCurrentLine)
{
    const auto corrected = [&] {
        std::int32_t value = 0;
        EXPECT_TRUE(buffer.ReadPixelRaw(0, 0, GetLineOperator(LineOpID::MeanFit), value));
        return value;
    };
    const auto load = [&](std::byte last) {
        buffer.LoadSamples(4, [=](auto bytes, auto...) {
            std::ranges::fill(bytes, std::byte{0});
            bytes.back() = last;
        });
    };
    SetLine(0, {3, 6, 9});
    EXPECT_EQ(corrected(), -3);
    buffer.SetXYDimension(3, 1);
    EXPECT_EQ(corrected(), 0);
    buffer.SetBitCount(8);
    buffer.Restore(4, 1, {}, 0);
    load(std::byte{4});
    EXPECT_EQ(corrected(), -(1 << 22));
    buffer.SetPixelRaw(3, 0, 8);
    EXPECT_EQ(corrected(), -2);
    buffer.SetBitCount(8);
    load(std::byte{8});
    EXPECT_EQ(corrected(), -(2 << 22)) << "loaded again";
}

TEST_F(DatabufferTest, AFailedLoadKeepsTheLinesThatWereDone)
{
    buffer.Restore(2, 3, {}, 0);
    const auto fail = [](std::span<std::byte> bytes, SampleWidth, std::size_t& filled) {
        std::ranges::fill(bytes.first(7), std::byte{1});
        filled = 7;
        throw std::runtime_error("the disk is gone");
    };
    EXPECT_THROW(buffer.LoadSamples(100, fail), std::runtime_error);
    EXPECT_EQ(Line(0), (std::vector{0x0101 << 14, 0x0101 << 14}));
    EXPECT_TRUE(Line(1).empty() && Line(2).empty());
    buffer.SetPixelRaw(1, 2, 8);
    EXPECT_EQ(Line(1), (std::vector{0, 0})) << "a write makes ordinary lines of the missing ones";
    EXPECT_EQ(Line(2), (std::vector{0, 8}));

    buffer.SetBitCount(12);
    buffer.Restore(2, 3, {}, 0);
    EXPECT_THROW(buffer.LoadSamples(100, fail), std::runtime_error);
    EXPECT_TRUE(Line(0).empty());
    log.clear();
    SetLine(2, {1});
    EXPECT_EQ(log, "c2") << "failures release notifications";
}

TEST_F(DatabufferTest, AHeaderMayPromiseMoreThanAnyChannelCanHold)
{
    buffer.Restore(65536, (1ULL << 31) - 1, {}, 0);
    EXPECT_FALSE(buffer.LoadSamples(65536 * 2 + 1, [](auto bytes, auto...) { std::ranges::fill(bytes, std::byte{}); }));
    EXPECT_EQ(buffer.GetStoredSampleCount(), 65536U);
    EXPECT_THROW(buffer.SetPixelRaw(0, 1, 1), std::bad_alloc);
    EXPECT_TRUE(Line(1).empty() && Line((1ULL << 31) - 2).empty());
    EXPECT_TRUE(buffer.SetPixelRaw(0, 0, 1));
    EXPECT_THROW(buffer.Restore(1, 1ULL << 31, {}, 0), std::bad_alloc);
    EXPECT_EQ(log, "<3>65536c0") << "a size that is refused holds no notifications back";
    buffer.SetPixelRaw(0, 0, 2);
    EXPECT_EQ(log, "<3>65536c0c0");
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
            buffer.LoadSamples(6, [&](auto bytes, auto...) {
                std::ranges::fill(bytes, std::byte{1});
                if (range.highest == 2 * loaded)
                    std::ranges::fill(bytes.last(2), std::byte{2}); // beyond the valid points of line 0
            });
            if (isAskedBefore)
                buffer.GetDataRange();
            edit();
            EXPECT_EQ(buffer.GetDataRange(), range) << range.highest << isAskedBefore;
        }
    }
}

} // namespace
