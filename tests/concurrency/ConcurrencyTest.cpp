#include "velflexlib/dataset/DataSet.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

constexpr int rounds = 300;

// Runs every job in a thread of its own, `rounds` times, all at once.
void RunTogether(const std::vector<std::function<void(int)>>& jobs)
{
    std::vector<std::jthread> threads;
    threads.reserve(jobs.size());
    for (const auto& job : jobs) {
        threads.emplace_back([&job] {
            for (int round = 0; round < rounds; ++round)
                job(round);
        });
    }
}

TEST(ConcurrencyTest, ABufferIsReadWrittenAndReshapedAtOnce)
{
    CDataBuffer buffer(16, 8, 4);
    std::atomic<int> torn = 0;
    buffer.OnChanged.connect([](CDataBuffer& changed, std::size_t) { changed.GetDataRange(); });
    const auto writeLine = [&](int round) { buffer.SetLineRaw(1, std::vector(8, round)); };
    const auto readLine = [&](int) {
        std::array<std::int32_t, 8> samples{};
        buffer.ReadLineRaw(1, GetLineOperator(LineOpID::RawData), samples.data());
        for (const auto sample : samples)
            torn += sample == samples.front() ? 0 : 1;
        double pixel = 0;
        buffer.ReadPixelReal(1, 1, GetLineOperator(LineOpID::LineFit), pixel);
    };
    RunTogether({writeLine, writeLine, readLine, readLine,
                 [&](int round) { buffer.SetXYDimension(8, 4 + static_cast<std::uint64_t>(round % 2)); },
                 [&](int round) { buffer.SetAxisMin(pointAxis, round); }, [&](int) { buffer.PrepareForSave(); },
                 [&](int) { buffer.GetLineAxis(0); }});
    EXPECT_EQ(torn, 0) << "a line is read as it was written, whole";
    EXPECT_EQ(buffer.GetPoints(), 8U);
}

TEST(ConcurrencyTest, GroupsAreCreatedEditedAndDeletedAtOnce)
{
    CDataSet dataSet;
    dataSet.OnGroupChanged.connect([&](CDataGroup& group) { group.GetName(); });
    dataSet.OnChanged.connect([&] { dataSet.GetAllGroupIds(); });
    const auto anyGroup = [&](int round, const std::function<void(CDataGroup&)>& edit) {
        if (const auto group = dataSet.GetGroup(static_cast<std::uint64_t>(round % 5)))
            edit(*group);
    };
    RunTogether({[&](int) { dataSet.CreateGroup("", 16); },
                 [&](int round) { dataSet.DeleteGroup(static_cast<std::uint64_t>(round % 7)); },
                 [&](int round) { anyGroup(round, [&](auto& g) { g.SetName(std::to_string(round)); }); },
                 [&](int round) {
                     anyGroup(round, [&](auto& g) { g.GetOrCreateChannelBuffer(2, 4, 4)->SetPixelRaw(0, 0, 1); });
                 },
                 [&](int round) {
                     anyGroup(round, [&](auto& g) { g.SetChannelCount(static_cast<std::uint64_t>(round % 4)); });
                 },
                 [&](int) { dataSet.GetGroupId("Group3"); }, [&](int) { dataSet.PrepareForSave(); }});
    EXPECT_EQ(dataSet.GetAllGroupIds().size(), dataSet.GetGroupCount());
}

TEST(ConcurrencyTest, SlotsComeAndGoWhileASignalIsEmitted)
{
    lumox::sigslot_unorderedslots<int> signal;
    std::atomic<int> calls = 0;
    const auto connectAndDisconnect = [&](int) {
        const auto connection = signal.connect([&](int) { ++calls; });
        connection(lumox::Operation::Block);
        connection(lumox::Operation::Unblock);
        connection(lumox::Operation::Disconnect);
    };
    signal.connect([&](int depth) {
        if (depth == 0)
            signal.emit(1);
    });
    const auto counter = signal.connect([&](int) { ++calls; });
    RunTogether(
        {connectAndDisconnect, connectAndDisconnect, [&](int) { signal.emit(0); }, [&](int) { signal.emit(0); }});
    EXPECT_GE(calls, 4 * rounds);
}

} // namespace
