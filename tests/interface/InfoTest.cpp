// Info groups and items by position, and the same information as a tree of nodes.
#include "support/OxdTest.h"

#include <algorithm>
#include <functional>
#include <random>

namespace {

using InfoTest = NewDataSetTest;

TEST_F(InfoTest, GroupsAreCreatedFoundMovedAndDeletedByPosition)
{
    EXPECT_EQ(CreateInfoGroupWithName(handle, "A"), 0U);
    EXPECT_EQ(CreateInfoGroupWithName(handle, "b"), 1U);
    EXPECT_EQ(CreateInfoGroup(handle), 2U);
    EXPECT_EQ(CreateInfoGroupWithName(handle, "A"), 3U);
    EXPECT_EQ(GetInfoGroupIndex(handle, "B"), 1U) << "the case of letters does not matter";
    EXPECT_EQ(GetInfoGroupIndex(handle, ""), 2U) << "an empty name is a name";
    EXPECT_EQ(ReasonOf([&] { GetInfoGroupIndex(handle, "C"); }), "No info with given name found. Name: C");
    SetInfoGroupName(handle, 2, "c");
    SetInfoGroupNewIndex(handle, 0, 2);
    EXPECT_EQ(Tree(handle), "b{}c{}A{}A{}");
    for (const std::uint64_t bad : {std::uint64_t{4}, ~std::uint64_t{0}, std::uint64_t{0x8000'0000}})
        EXPECT_EQ(ReasonOf([&] { SetInfoGroupNewIndex(handle, 0, bad); }), "Error while moving info") << bad;
    SetInfoGroupNewIndex(handle, 2, 0x1'0000'0000);
    EXPECT_EQ(Tree(handle), "A{}b{}c{}A{}") << "only the low 32 bits count";
    DeleteInfoGroup(handle, 3);
    EXPECT_EQ(Tree(handle), "A{}b{}c{}") << "the one at the position, not the first of the name";
    EXPECT_EQ(Text(GetInfoGroupName, handle, 1U), "b");
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
    EXPECT_EQ(Tree(handle), "G{X=1;y=two;z=1;Y=;}");
    EXPECT_EQ(Text(GetInfoItemValue, handle, 0U, 1U), "two");
    DeleteInfoItem(handle, 0, 1);
    EXPECT_EQ(Tree(handle), "G{X=1;z=1;Y=;}");
    EXPECT_EQ(CreateInfoItem(handle, 0, "", "6"), 3U);
    EXPECT_EQ(GetInfoItemIndex(handle, 0, ""), 3U);
}

TEST_F(InfoTest, TheTreeIsWalkedFromNodeToNode)
{
    const auto scan = AddMetaInfoItemGroup(handle, root, "Scan");
    const auto tool = AddMetaInfoItemGroup(handle, root, "Tool");
    const auto head = AddMetaInfoItemGroup(handle, scan, "Head");
    const auto gain = AddMetaInfoItem(handle, scan, "Gain", "5");
    EXPECT_EQ(GetMetaInfoTreeRootHandle(handle), root);
    EXPECT_EQ(Tree(handle), "Scan{Head{}Gain=5;}Tool{}");
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
    EXPECT_EQ(Tree(handle), "Scan{Head{}gain=6;}Tool{}");
    EXPECT_EQ(Text(GetInfoItemName, handle, 0U, 0U), "gain") << "items are counted without the groups among them";
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

// Long rows that keep changing, beside a plain list of what must be in them: groups at the top, and items among groups.
TEST_F(InfoTest, NodesAreFoundByNameAndPositionWhateverComesAndGoes)
{
    std::minstd_rand random;
    const auto below = [&](std::size_t count) { return random() % count; };
    // Few enough that many nodes share one.
    const auto randomName = [&] { return (below(2) == 0 ? "Name" : "NAME") + std::to_string(below(300)); };
    for (const bool atTop : {true, false}) {
        const auto file = Create();
        const auto parent = atTop ? root : AddMetaInfoItemGroup(file, root, "G");
        std::vector<std::pair<std::string, std::uint64_t>> nodes;
        const auto expectedTree = [&] {
            std::string text;
            for (const auto& [name, node] : nodes)
                text += name + (IsMetaInfoItemAGroup(file, node) ? "{}" : "=v;");
            return text;
        };
        for (int round = 0; round < 3000; ++round) {
            const std::string name = randomName();
            const bool addsGroup = atTop || below(4) == 0;
            nodes.emplace_back(name, addsGroup ? AddMetaInfoItemGroup(file, parent, name.c_str())
                                               : AddMetaInfoItem(file, parent, name.c_str(), "v"));
            const std::size_t position = below(nodes.size());
            const auto victim = nodes.begin() + static_cast<std::ptrdiff_t>(position);
            if (const auto what = below(8); what == 0 && atTop) {
                SetInfoGroupNewIndex(file, position, 0);
                std::rotate(nodes.begin(), victim, victim + 1);
            } else if (what < 2) {
                victim->first = randomName();
                SetMetaInfoItemName(file, victim->second, victim->first.c_str());
            } else if (what < 6) {
                DeleteMetaInfoItem(file, victim->second);
                nodes.erase(victim);
            }
            auto counted = nodes;
            std::erase_if(counted, [&](const auto& node) { return IsMetaInfoItemAGroup(file, node.second) != atTop; });
            const auto index = atTop ? GetInfoGroupIndex(file, name.c_str()) : GetInfoItemIndex(file, 0, name.c_str());
            const bool isFound = !VELHasLastError();
            VELGetLastError();
            const std::size_t compared = atTop ? 4U : 0U; // the case of a group's letters does not matter
            const auto expected = std::ranges::find_if(
                counted, [&](const auto& node) { return node.first.substr(compared) == name.substr(compared); });
            ASSERT_EQ(isFound ? index : counted.size(), static_cast<std::size_t>(expected - counted.begin())) << round;
            const std::size_t at = below(counted.size() + 1);
            ASSERT_TRUE(atTop || at == counted.size() || Text(GetInfoItemName, file, 0U, at) == counted[at].first);
            if (round % 50 == 0) {
                ASSERT_EQ(Tree(file, parent), expectedTree()) << round;
            }
        }
        std::erase_if(nodes, [&](const auto& node) { return !IsMetaInfoItemAGroup(file, node.second); });
        DeleteAllInfoItems(file, 0);
        EXPECT_EQ(Tree(file, parent), expectedTree());
    }
}

} // namespace
