#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/operators/LineOperatorTable.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

constexpr int rounds = 300;

// Runs all jobs concurrently, each in a thread of its own and `rounds` times.
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

TEST(ConcurrencyTest, BufferIsReadWrittenAndReshapedConcurrently)
{
    CDataBuffer buffer(16, 8, 4);
    std::atomic<int> torn = 0;
    buffer.OnChanged.connect([](CDataBuffer& changed, std::size_t line) {
        changed.SetAxisName(signalAxis, std::to_string(line));
        changed.GetDataRange();
    });
    buffer.OnBeforeReshape.connect([&] { buffer.CanReadLine(0); });
    buffer.OnAfterReshape.connect([&] { buffer.SetPixelRaw(0, 0, 1); });
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
                 [&](int) { buffer.GetLineAxis(0); },
                 [&](int) {
                     buffer.HoldNotifications();
                     buffer.ReleaseNotifications();
                 }});
    EXPECT_EQ(torn, 0) << "a line must be read as it was written, as a whole";
    EXPECT_EQ(buffer.GetPoints(), 8U);
}

TEST(ConcurrencyTest, GroupsAreCreatedEditedAndDeletedConcurrently)
{
    CDataSet dataSet;
    dataSet.OnGroupChanged.connect([&](CDataGroup& group) { group.GetName(); });
    dataSet.OnGroupNameChanged.connect([&](const std::string& name) { dataSet.GetGroupId(name); });
    dataSet.OnBufferChanged.connect([&](CDataGroup& group, CDataBuffer& buffer, std::size_t) {
        group.SetLogicalGroupId(static_cast<std::uint32_t>(dataSet.GetGroupCount()));
        buffer.GetGroupName();
        group.GetChannelBuffers();
    });
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

// A thread that finds a value already set neither sets it again nor announces it.
TEST(ConcurrencyTest, ValueThatSeveralThreadsSetIsSetOnce)
{
    constexpr int threads = 4;
    const auto group = std::make_shared<CDataGroup>(0, "", 0, 16);
    CDataBuffer buffer(16, 1, threads);
    std::atomic<int> announced = 0;
    std::atomic<int> lost = 0;
    group->OnNameChanged.connect([&](const std::string&) { ++announced; });
    group->OnChanged.connect([&](CDataGroup&) { ++announced; });
    buffer.OnBeforeReshape.connect([] { std::this_thread::yield(); });
    // Threads spin until all have arrived: on Windows, std::barrier does not always wake those that sleep.
    std::atomic<int> arrived = 0;
    const auto meet = [&] {
        const int present = (arrived++ / threads + 1) * threads;
        while (arrived < present)
            std::this_thread::yield();
    };
    std::vector<std::function<void(int)>> jobs;
    for (std::uint64_t line = 0; line < threads; ++line) {
        jobs.emplace_back([&, line](int round) {
            const auto number = static_cast<std::uint64_t>(round) + 1;
            meet();
            group->SetName(std::to_string(number));
            group->SetChannelCount(number);
            buffer.SetXYDimension(1, threads + number);
            buffer.SetPixelRaw(0, line, 5);
            meet();
            std::int32_t value = 0;
            buffer.ReadPixelRaw(0, line, GetLineOperator(LineOpID::RawData), value);
            lost += value == 5 ? 0 : 1;
        });
    }
    RunTogether(jobs);
    EXPECT_EQ(announced, 2 * rounds) << "once for the name and once for the number of slots in each round";
    EXPECT_EQ(lost, 0) << "setting the current size again must discard nothing";
}

TEST(ConcurrencyTest, SlotsAreConnectedAndDisconnectedDuringEmission)
{
    lumox::sigslot_unorderedslots<int> signal;
    std::atomic<int> calls = 0;
    const auto connectAndDisconnect = [&](int) { signal.connect([&](int) { ++calls; })(lumox::Operation::Disconnect); };
    signal.connect([&](int depth) {
        connectAndDisconnect(depth);
        if (depth == 0)
            signal.emit(1);
    });
    const auto counter = signal.connect([&](int) { ++calls; });
    RunTogether(
        {connectAndDisconnect, connectAndDisconnect, [&](int) { signal.emit(0); }, [&](int) { signal.emit(0); }});
    EXPECT_GE(calls, 4 * rounds);
}

} // namespace
