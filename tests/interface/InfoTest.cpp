// Info groups and items by position, and the same information as a tree of nodes.
#include "support/OxdTest.h"

#include <algorithm>
#include <functional>
#include <random>

namespace {

class InfoTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();

    std::string Names() const
    {
        std::string names;
        for (std::uint64_t info = 0; info < GetInfoGroupCount(handle); ++info)
            names += Text(GetInfoGroupName, handle, info) + " ";
        return names;
    }

    std::string Items(std::uint64_t info) const
    {
        std::string items;
        for (std::uint64_t item = 0; item < GetInfoItemCount(handle, info); ++item)
            items += Text(GetInfoItemName, handle, info, item) + "=" + Text(GetInfoItemValue, handle, info, item) + " ";
        return items;
    }
};

TEST_F(InfoTest, GroupsAreCreatedFoundMovedAndDeletedByPosition)
{
    EXPECT_EQ(CreateInfoGroupWithName(handle, "A"), 0U);
    EXPECT_EQ(CreateInfoGroupWithName(handle, "b"), 1U);
    EXPECT_EQ(CreateInfoGroup(handle), 2U);
    EXPECT_EQ(CreateInfoGroupWithName(handle, "A"), 3U);
    EXPECT_EQ(GetInfoGroupIndex(handle, "B"), 1U) << "the case of letters does not matter";
    EXPECT_EQ(ReasonOf([&] { GetInfoGroupIndex(handle, "C"); }), "No info with given name found. Name: C");
    SetInfoGroupName(handle, 2, "c");
    SetInfoGroupNewIndex(handle, 0, 2);
    EXPECT_EQ(Names(), "b c A A ");
    SetInfoGroupNewIndex(handle, 3, 0);
    EXPECT_EQ(Names(), "A b c A ");
    for (const std::uint64_t bad : {std::uint64_t{4}, ~std::uint64_t{0}, std::uint64_t{0x8000'0000}})
        EXPECT_EQ(ReasonOf([&] { SetInfoGroupNewIndex(handle, 0, bad); }), "Error while moving info") << bad;
    SetInfoGroupNewIndex(handle, 0, 0x1'0000'0001);
    EXPECT_EQ(Names(), "b A c A ") << "only the low 32 bits count";
    DeleteInfoGroup(handle, 3);
    EXPECT_EQ(Names(), "b A c ") << "the one at the position, not the first of the name";
    DeleteAllInfoGroups(handle);
    EXPECT_EQ(GetInfoGroupCount(handle), 0U);
}

TEST_F(InfoTest, ItemsAreCreatedFoundEditedAndDeletedByPosition)
{
    CreateInfoGroupWithName(handle, "G");
    for (const char* name : {"x", "y", "z"})
        EXPECT_EQ(ReasonOf([&] { CreateInfoItem(handle, 0, name, "1"); }), "");
    for (const char* const value : {"2", static_cast<const char*>(nullptr)})
        EXPECT_EQ(ReasonOf([&] { CreateInfoItem(handle, 0, "y", value); }),
                  "Unable to create info item. Info item with given name already exists. Name: y");
    EXPECT_EQ(CreateInfoItem(handle, 0x1'0000'0000, "Y", ""), 3U);
    SetInfoItemValue(handle, 0, 1, "two");
    SetInfoItemName(handle, 0, 0, "X");
    EXPECT_EQ(GetInfoItemIndex(handle, 0, "Y"), 3U);
    EXPECT_EQ(ReasonOf([&] { GetInfoItemIndex(handle, 0, "x"); }),
              "Unable to get info item index. No info item with given name available. Name: x");
    EXPECT_EQ(Items(0), "X=1 y=two z=1 Y= ");
    DeleteInfoItem(handle, 0, 1);
    EXPECT_EQ(Items(0), "X=1 z=1 Y= ");
    DeleteAllInfoItems(handle, 0);
    EXPECT_EQ(GetInfoItemCount(handle, 0), 0U);
}

TEST_F(InfoTest, TheTreeIsWalkedFromNodeToNode)
{
    const auto scan = AddMetaInfoItemGroup(handle, root, "Scan");
    const auto tool = AddMetaInfoItemGroup(handle, root, "Tool");
    const auto head = AddMetaInfoItemGroup(handle, scan, "Head");
    const auto gain = AddMetaInfoItem(handle, scan, "Gain", "5");
    EXPECT_EQ(GetMetaInfoTreeRootHandle(handle), root);
    EXPECT_EQ(Tree(handle), "Scan{Head{}Gain=5;}Tool{}");
    EXPECT_EQ(SelectFirstChildMetaInfoItem(handle, root), scan);
    EXPECT_EQ(SelectNextMetaInfoItem(handle, scan), tool);
    EXPECT_EQ(SelectParentMetaInfoItem(handle, gain), scan);
    EXPECT_EQ(SelectParentMetaInfoItem(handle, scan), root);
    for (const auto last : {root, tool, gain})
        EXPECT_EQ(ReasonOf([&] { SelectNextMetaInfoItem(handle, last); }), "No further items in this node available!");
    for (const auto childless : {head, gain})
        EXPECT_EQ(ReasonOf([&] { SelectFirstChildMetaInfoItem(handle, childless); }),
                  "Item isn't a group or has no childs. Handle: " + std::to_string(childless));
    EXPECT_EQ(Text(GetMetaInfoItemName, handle, root), "Root");
    EXPECT_EQ(Text(GetMetaInfoItemValue, handle, head), "--------");
    EXPECT_TRUE(IsMetaInfoItemAGroup(77, root));
    EXPECT_TRUE(IsMetaInfoItemAGroup(77, head)) << "the file is not looked at";
    EXPECT_FALSE(IsMetaInfoItemAGroup(77, gain));
    SetMetaInfoItemName(handle, gain, "gain");
    SetMetaInfoItemValue(handle, gain, "6");
    EXPECT_EQ(Items(0), "gain=6 ");
    EXPECT_EQ(Names(), "Scan Tool ") << "both families see the same groups";
    DeleteMetaInfoItem(handle, head);
    DeleteMetaInfoItem(handle, scan);
    EXPECT_EQ(SelectFirstChildMetaInfoItem(handle, root), tool);
    DeleteAllMetaInfoItems(handle);
    EXPECT_EQ(GetInfoGroupCount(handle), 0U);
}

TEST_F(InfoTest, TheRootAndNodesOfTheWrongKindAreRefused)
{
    const auto group = AddMetaInfoItemGroup(handle, root, "G");
    const auto item = AddMetaInfoItem(handle, group, "i", "v");
    const std::pair<const char*, std::function<void(std::uint64_t)>> cases[] = {
        {"Unable to get parent of ROOT item", [](auto h) { SelectParentMetaInfoItem(h, root); }},
        {"Unable to add non group info item to ROOT item. Only group items are allowed.",
         [](auto h) { AddMetaInfoItem(h, root, "n", "v"); }},
        {"Unable to delete ROOT item.", [](auto h) { DeleteMetaInfoItem(h, root); }},
        {"Unable to set info item name of ROOT item", [](auto h) { SetMetaInfoItemName(h, root, nullptr); }},
        {"Unable to get info item value from ROOT item", [](auto h) { GetMetaInfoItemValue(h, root, nullptr, 0); }},
        {"Unable to set info item value of ROOT item", [](auto h) { SetMetaInfoItemValue(h, root, nullptr); }},
        {"Unable to set info item value of group item", [=](auto h) { SetMetaInfoItemValue(h, group, "v"); }},
        {"Unable to add info item to non group item.", [=](auto h) { AddMetaInfoItem(h, item, "n", "v"); }},
        {"Unable to add info item to non group item.", [=](auto h) { AddMetaInfoItemGroup(h, item, "n"); }}};
    for (const auto& function : cases) {
        EXPECT_EQ(ReasonOf([&] { function.second(handle); }), function.first);
        // The first three are refused whatever the file.
        EXPECT_EQ(ReasonOf([&] { function.second(77); }),
                  &function < cases + 3 ? function.first : "Handle does not exist");
    }
}

// Long rows of nodes that keep changing, beside a plain list of what must be in them.
class InfoRowTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();

    std::size_t Random(std::size_t below) { return m_random() % below; }
    // Few enough that many nodes share one.
    std::string RandomName() { return (Random(2) == 0 ? "Name" : "NAME") + std::to_string(Random(300)); }

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

TEST_F(InfoRowTest, ItemsAmongGroupsAreFoundByNameAndPositionWhateverComesAndGoes)
{
    struct Node
    {
        std::string name;
        bool isGroup;
        std::uint64_t handle;
    };
    const auto parent = AddMetaInfoItemGroup(handle, root, "G");
    std::vector<Node> nodes;
    const auto expectedTree = [&] {
        std::string text;
        for (const Node& node : nodes)
            text += node.name + (node.isGroup ? "{}" : "=v;");
        return text;
    };
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
        std::vector<std::string> items;
        for (const Node& node : nodes) {
            if (!node.isGroup)
                items.push_back(node.name);
        }
        ASSERT_EQ(Found(GetInfoItemIndex(handle, 0, name.c_str()), items.size()),
                  std::ranges::find(items, name) - items.begin())
            << round;
        const auto position = Random(items.size() + 1);
        ASSERT_TRUE(position == items.size() || Text(GetInfoItemName, handle, 0U, position) == items[position]);
        if (round % 50 == 0) {
            ASSERT_EQ(Tree(handle, parent), expectedTree()) << round;
        }
    }
    DeleteAllInfoItems(handle, 0);
    std::erase_if(nodes, [](const Node& node) { return !node.isGroup; });
    EXPECT_EQ(Tree(handle, parent), expectedTree());
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
            std::string expectedTree;
            for (const std::string& group : names)
                expectedTree += group + "{}";
            ASSERT_EQ(Tree(handle), expectedTree) << round;
        }
    }
}

} // namespace
