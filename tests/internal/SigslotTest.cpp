#include "lumox/sigslot.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using lumox::Operation;

namespace {

class SigslotTest : public ::testing::Test
{
protected:
    std::string log;
    std::unique_ptr<lumox::sigslot_unorderedslots<int>> signal = std::make_unique<lumox::sigslot_unorderedslots<int>>();

    lumox::sigslot_connection Connect(char name)
    {
        return signal->connect([this, name](int) { log += name; });
    }

    std::string Emit()
    {
        log.clear();
        signal->emit(0);
        return log;
    }
};

TEST_F(SigslotTest, AConnectionSwitchesItsSlotOffAndOn)
{
    const auto a = Connect('a');
    Connect('b');
    EXPECT_TRUE(a(Operation::IsPending));
    EXPECT_TRUE(a(Operation::IsConnected));
    EXPECT_EQ(Emit(), "ab");
    EXPECT_FALSE(a(Operation::IsPending));
    for (const auto operation : {Operation::Block, Operation::IsBlocked, Operation::IsConnected})
        EXPECT_TRUE(a(operation));
    EXPECT_EQ(Emit(), "b");
    EXPECT_TRUE(a(Operation::Unblock));
    EXPECT_FALSE(a(Operation::IsBlocked));
    EXPECT_EQ(Emit(), "ab");
    EXPECT_TRUE(a(Operation::Disconnect));
    for (const auto operation : {Operation::IsConnected, Operation::Block, Operation::Unblock, Operation::IsBlocked})
        EXPECT_FALSE(a(operation));
    EXPECT_EQ(Emit(), "b");
    EXPECT_FALSE(a(Operation::Disconnect)) << "the clean-up has removed it";
    EXPECT_THROW(a(static_cast<Operation>(6)), std::runtime_error);
}

TEST_F(SigslotTest, ASlotMayDisconnectItselfAndOthersWhileItIsCalled)
{
    lumox::sigslot_connection self, other;
    self = signal->connect([&](int) {
        log += 'a';
        self(Operation::Disconnect);
        other(Operation::Disconnect);
    });
    other = Connect('b');
    Connect('c');
    EXPECT_EQ(Emit(), "ac");
    EXPECT_EQ(Emit(), "c");
}

TEST_F(SigslotTest, ASlotConnectedDuringAnEmissionWaitsForTheNextOutermostOne)
{
    bool first = true;
    signal->connect([&](int depth) {
        log += 'a';
        if (std::exchange(first, false)) {
            Connect('n');
            signal->emit(depth + 1); // nested: cleans nothing up
        }
    });
    Connect('b');
    EXPECT_EQ(Emit(), "aabb");
    EXPECT_EQ(Emit(), "abn");
}

TEST_F(SigslotTest, AConnectionAndARelayMayOutliveTheirSignal)
{
    const auto a = Connect('a');
    const auto relay = signal->relay();
    (*relay)(0);
    EXPECT_EQ(log, "a");
    signal.reset();
    (*relay)(0);
    EXPECT_EQ(log, "a");
    EXPECT_FALSE(a(Operation::IsConnected));
    EXPECT_FALSE(a(Operation::Disconnect));
}

TEST_F(SigslotTest, ASlotMayDestroyTheSignalThatCallsIt)
{
    signal->connect([&](int) { signal.reset(); });
    Connect('b');
    EXPECT_EQ(Emit(), "b");
}

TEST_F(SigslotTest, OrderedSlotsAreCalledByRank)
{
    lumox::sigslot_orderedslots<double> ordered;
    for (const auto& [name, rank] : {std::pair('c', 2.0), {'a', -1.0}, {'d', 2.0}, {'b', 0.0}})
        ordered.connect([this, name = name](double) { log += name; }, rank);
    ordered.emit(1.5);
    EXPECT_EQ(log, "abcd");
}

} // namespace
