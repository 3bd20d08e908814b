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
    EXPECT_TRUE(a(Operation::IsConnected) && a(Operation::IsPending) && !a(Operation::IsBlocked));
    EXPECT_EQ(Emit(), "ab");
    for (const auto& [operation, called] : {std::pair(Operation::Block, "b"), {Operation::Unblock, "ab"}}) {
        EXPECT_TRUE(a(operation) && a(Operation::IsConnected));
        EXPECT_EQ(a(Operation::IsBlocked), operation == Operation::Block);
        EXPECT_EQ(Emit(), called);
    }
    EXPECT_FALSE(a(Operation::IsPending));
    EXPECT_TRUE(a(Operation::Disconnect));
    EXPECT_FALSE(a(Operation::Block) || a(Operation::Unblock) || a(Operation::IsConnected));
    EXPECT_EQ(Emit(), "b");
    for (int operation = 0; operation < 6; ++operation)
        EXPECT_FALSE(a(static_cast<Operation>(operation))) << "the clean-up has removed it";
    EXPECT_THROW(a(static_cast<Operation>(6)), std::runtime_error);
}

TEST_F(SigslotTest, ASlotMayConnectAndDisconnectOthersAndItselfWhileItIsCalled)
{
    lumox::sigslot_connection self, other;
    self = signal->connect([&](int depth) {
        log += 'a';
        other(Operation::Disconnect);
        if (self(Operation::Disconnect)) {
            Connect('n');
            signal->emit(depth + 1); // nested: cleans nothing up
        }
    });
    other = Connect('b');
    Connect('c');
    EXPECT_EQ(Emit(), "acc");
    EXPECT_EQ(Emit(), "cn");
}

TEST_F(SigslotTest, AConnectionAndARelayMayOutliveTheirSignalWhichASlotMayDestroy)
{
    const auto a = Connect('a');
    const auto relay = signal->relay();
    signal->connect([&](int) { signal.reset(); });
    Connect('b');
    for (int round = 0; round < 2; ++round) {
        (*relay)(0);
        EXPECT_EQ(log, "ab");
    }
    EXPECT_FALSE(a(Operation::IsConnected) || a(Operation::Disconnect));
}

TEST_F(SigslotTest, AnEmissionReachesWhoeverListensBehindAnyRelay)
{
    lumox::sigslot_unorderedslots<int> first, second;
    for (const auto* const target : {&first, &second})
        signal->connect(target->relay());
    EXPECT_EQ(Emit(), "");
    first.connect([this](int) { log += 'f'; });
    EXPECT_EQ(Emit(), "f");
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
