// Long rows of information nodes that keep changing, beside a plain list of what must be in them.
#include "support/OxdTest.h"

#include <algorithm>
#include <random>

namespace {

class InfoRowTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();

    std::size_t Random(std::size_t below) { return m_random() % below; }
    // Few enough that many nodes share one.
    std::string RandomName() { return (Random(2) == 0 ? "Name" : "NAME") + std::to_string(Random(300)); }

    // Names of all nodes below the group, walking from one to the next.
    std::vector<std::string> Walk(std::uint64_t group) const
    {
        std::vector<std::string> names;
        auto node = SelectFirstChildMetaInfoItem(handle, group);
        for (auto left = GetMetaInfoItemChildCount(handle, group); left > 0; --left) {
            names.push_back(Text(GetMetaInfoItemName, handle, node));
            if (left > 1)
                node = SelectNextMetaInfoItem(handle, node);
        }
        return names;
    }

    // What a lookup gave, or the count, past the last, when it failed.
    static std::ptrdiff_t Found(std::uint64_t index, std::size_t count)
    {
        const bool failed = VELHasLastError();
        VELGetLastError();
        return static_cast<std::ptrdiff_t>(failed ? count : index);
    }

private:
    std::minstd_rand m_random;
};

struct Node
{
    std::string name;
    bool isGroup;
    std::uint64_t handle;
};

std::vector<std::string> NamesOf(const std::vector<Node>& nodes, bool withGroups)
{
    std::vector<std::string> names;
    for (const Node& node : nodes) {
        if (withGroups || !node.isGroup)
            names.push_back(node.name);
    }
    return names;
}

TEST_F(InfoRowTest, ItemsAmongGroupsAreFoundByNameAndPositionWhateverComesAndGoes)
{
    const auto parent = AddMetaInfoItemGroup(handle, root, "G");
    std::vector<Node> nodes;
    for (int round = 0; round < 4000; ++round) {
        const std::string name = RandomName();
        if (Random(4) == 0)
            nodes.push_back({name, true, AddMetaInfoItemGroup(handle, parent, name.c_str())});
        else
            nodes.push_back({name, false, AddMetaInfoItem(handle, parent, name.c_str(), "v")});
        const auto victim = nodes.begin() + static_cast<std::ptrdiff_t>(Random(nodes.size()));
        if (round > 500 || Random(2) == 0) {
            DeleteMetaInfoItem(handle, victim->handle);
            nodes.erase(victim);
        } else {
            victim->name = RandomName();
            SetMetaInfoItemName(handle, victim->handle, victim->name.c_str());
        }
        const auto items = NamesOf(nodes, false);
        ASSERT_EQ(Found(GetInfoItemIndex(handle, 0, name.c_str()), items.size()),
                  std::ranges::find(items, name) - items.begin())
            << round;
        const auto position = Random(items.size() + 1);
        ASSERT_TRUE(position == items.size() || Text(GetInfoItemName, handle, 0U, position) == items[position]);
        if (round % 50 == 0) {
            ASSERT_EQ(Walk(parent), NamesOf(nodes, true)) << round;
        }
    }
    DeleteAllInfoItems(handle, 0);
    std::erase_if(nodes, [](const Node& node) { return !node.isGroup; });
    EXPECT_EQ(Walk(parent), NamesOf(nodes, true));
    EXPECT_FALSE(VELHasLastError());
}

TEST_F(InfoRowTest, TheFirstGroupOfANameIsFoundWhateverMoves)
{
    std::vector<std::string> names;
    for (int round = 0; round < 3000; ++round) {
        const std::string name = RandomName();
        names.push_back(name);
        CreateInfoGroupWithName(handle, name.c_str());
        const std::size_t position = Random(names.size());
        const auto at = names.begin() + static_cast<std::ptrdiff_t>(position);
        if (const auto what = Random(8); what == 0) {
            std::rotate(names.begin(), at, at + 1);
            SetInfoGroupNewIndex(handle, position, 0);
        } else if (what == 1) {
            *at = RandomName();
            SetInfoGroupName(handle, position, at->c_str());
        } else if (what < 6) {
            names.erase(at);
            DeleteInfoGroup(handle, position);
        }
        const auto found =
            std::ranges::find_if(names, [&](const auto& other) { return other.substr(4) == name.substr(4); });
        ASSERT_EQ(Found(GetInfoGroupIndex(handle, name.c_str()), names.size()), found - names.begin()) << round;
        if (round % 50 == 0) {
            ASSERT_EQ(Walk(root), names) << round;
        }
    }
}

} // namespace
