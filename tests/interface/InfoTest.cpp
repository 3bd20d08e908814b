// Info groups and items by position, and the same information as a tree of nodes.
#include "support/OxdTest.h"

#include <functional>

namespace {

using Call = std::function<void(std::uint64_t handle)>;

constexpr std::uint64_t root = 1;

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
    EXPECT_EQ(ReasonOf([&] { CreateInfoItem(handle, 0, "y", "2"); }),
              "Unable to create info item. Info item with given name already exists. Name: y");
    EXPECT_EQ(ReasonOf([&] { CreateInfoItem(handle, 0, "y", nullptr); }),
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
    EXPECT_EQ(GetMetaInfoItemChildCount(handle, root), 2U);
    EXPECT_EQ(SelectFirstChildMetaInfoItem(handle, root), scan);
    EXPECT_EQ(SelectNextMetaInfoItem(handle, scan), tool);
    EXPECT_EQ(SelectFirstChildMetaInfoItem(handle, scan), head);
    EXPECT_EQ(SelectNextMetaInfoItem(handle, head), gain);
    EXPECT_EQ(SelectParentMetaInfoItem(handle, gain), scan);
    EXPECT_EQ(SelectParentMetaInfoItem(handle, scan), root);
    for (const auto last : {root, tool, gain})
        EXPECT_EQ(ReasonOf([&] { SelectNextMetaInfoItem(handle, last); }), "No further items in this node available!");
    for (const auto childless : {head, gain})
        EXPECT_EQ(ReasonOf([&] { SelectFirstChildMetaInfoItem(handle, childless); }),
                  "Item isn't a group or has no childs. Handle: " + std::to_string(childless));
    EXPECT_EQ(Text(GetMetaInfoItemName, handle, root), "Root");
    EXPECT_EQ(Text(GetMetaInfoItemValue, handle, gain), "5");
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

TEST_F(InfoTest, ArgumentsAreCheckedInTheirOrderInFixedWords)
{
    struct Function
    {
        const char* action;
        std::function<void(std::uint64_t handle, std::uint64_t info, std::uint64_t item)> call;
    };
    const Function byInfo[] = {
        {"delete info", [](auto h, auto i, auto) { DeleteInfoGroup(h, i); }},
        {"get info name", [](auto h, auto i, auto) { GetInfoGroupName(h, i, nullptr, 1); }},
        {"set info name", [](auto h, auto i, auto) { SetInfoGroupName(h, i, nullptr); }},
        {"set new info index", [](auto h, auto i, auto) { SetInfoGroupNewIndex(h, i, 99); }},
        {"get info item count", [](auto h, auto i, auto) { GetInfoItemCount(h, i); }},
        {"create info item", [](auto h, auto i, auto) { CreateInfoItem(h, i, nullptr, nullptr); }},
        {"get info item index", [](auto h, auto i, auto) { GetInfoItemIndex(h, i, nullptr); }},
        {"delete all info items", [](auto h, auto i, auto) { DeleteAllInfoItems(h, i); }}};
    const Function byItem[] = {
        {"set info item value", [](auto h, auto i, auto k) { SetInfoItemValue(h, i, k, nullptr); }},
        {"get info item value", [](auto h, auto i, auto k) { GetInfoItemValue(h, i, k, nullptr, 1); }},
        {"set info item name", [](auto h, auto i, auto k) { SetInfoItemName(h, i, k, nullptr); }},
        {"get info item name", [](auto h, auto i, auto k) { GetInfoItemName(h, i, k, nullptr, 1); }},
        {"delete info item", [](auto h, auto i, auto k) { DeleteInfoItem(h, i, k); }}};
    CreateInfoGroupWithName(handle, "G");
    const auto expectNoInfo = [&](const Function& f) {
        EXPECT_EQ(ReasonOf([&] { f.call(77, 9, 9); }), "Handle does not exist") << f.action;
        EXPECT_EQ(ReasonOf([&] { f.call(handle, 0x9'0000'0001, 9); }),
                  std::string("Unable to ") + f.action + ". No info with given index available. Index: 38654705665");
    };
    for (const Function& f : byInfo)
        expectNoInfo(f);
    for (const Function& f : byItem) {
        expectNoInfo(f);
        EXPECT_EQ(ReasonOf([&] { f.call(handle, 0, 5); }),
                  std::string("Unable to ") + f.action + ". No info item with given index available. Index: 5");
    }
}

TEST_F(InfoTest, TextsAndNullPointersAreCheckedLast)
{
    CreateInfoGroupWithName(handle, "Group");
    CreateInfoItem(handle, 0, "Name", "Value");
    const auto group = SelectFirstChildMetaInfoItem(handle, root);
    const auto item = SelectFirstChildMetaInfoItem(handle, group);
    char text[1];
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"Unable to get info item value. Buffer to small. Minimum buffer size: 6",
         [&] { GetInfoGroupName(handle, 0, text, 5); }},
        {"Unable to get info name. Null pointer", [&] { GetInfoGroupName(handle, 0, nullptr, 6); }},
        {"Unable to get info item name. Buffer to small. Minimum buffer size: 5",
         [&] { GetInfoItemName(handle, 0, 0, text, 1); }},
        {"Unable to get info item value. Buffer to small. Minimum buffer size: 6",
         [&] { GetInfoItemValue(handle, 0, 0, text, 1); }},
        {"Unable to get info item name. Buffer to small. Minimum buffer size: 5",
         [&] { GetMetaInfoItemName(handle, root, text, 1); }},
        {"Unable to get info item value. Buffer to small. Minimum buffer size: 9",
         [&] { GetMetaInfoItemValue(handle, group, text, 1); }},
        {"Unable to create info. Null pointer", [&] { CreateInfoGroupWithName(handle, nullptr); }},
        {"Unable to get info index. Null pointer", [&] { GetInfoGroupIndex(handle, nullptr); }},
        {"Unable to create info item. Null pointer", [&] { CreateInfoItem(handle, 0, "n", nullptr); }},
        {"Unable to set info item value. Null pointer", [&] { SetMetaInfoItemValue(handle, item, nullptr); }},
        {"Unable to set info item name. Null pointer", [&] { SetMetaInfoItemName(handle, item, nullptr); }},
        {"Unable to add info item. Null pointer", [&] { AddMetaInfoItem(handle, group, nullptr, "v"); }},
        {"Unable to add info item. Null pointer", [&] { AddMetaInfoItemGroup(handle, root, nullptr); }},
    };
    for (const auto& [reason, call] : cases)
        EXPECT_EQ(ReasonOf(call), reason);
    EXPECT_EQ(Names(), "Group ");
    EXPECT_EQ(Items(0), "Name=Value ");
}

TEST_F(InfoTest, TheRootAndNodesOfTheWrongKindAreRefused)
{
    const auto group = AddMetaInfoItemGroup(handle, root, "G");
    const auto item = AddMetaInfoItem(handle, group, "i", "v");
    const std::pair<const char*, std::function<void(std::uint64_t)>> rootFirst[] = {
        {"Unable to get parent of ROOT item", [](auto h) { SelectParentMetaInfoItem(h, root); }},
        {"Unable to add non group info item to ROOT item. Only group items are allowed.",
         [](auto h) { AddMetaInfoItem(h, root, "n", "v"); }},
        {"Unable to delete ROOT item.", [](auto h) { DeleteMetaInfoItem(h, root); }}};
    for (const auto& function : rootFirst) {
        for (const std::uint64_t file : {handle, std::uint64_t{77}})
            EXPECT_EQ(ReasonOf([&] { function.second(file); }), function.first);
    }
    const std::pair<const char*, std::function<void(std::uint64_t)>> fileFirst[] = {
        {"Unable to set info item name of ROOT item", [](auto h) { SetMetaInfoItemName(h, root, nullptr); }},
        {"Unable to get info item value from ROOT item", [](auto h) { GetMetaInfoItemValue(h, root, nullptr, 0); }},
        {"Unable to set info item value of ROOT item", [](auto h) { SetMetaInfoItemValue(h, root, nullptr); }}};
    for (const auto& function : fileFirst) {
        EXPECT_EQ(ReasonOf([&] { function.second(handle); }), function.first);
        EXPECT_EQ(ReasonOf([&] { function.second(77); }), "Handle does not exist");
    }
    EXPECT_EQ(ReasonOf([&] { SetMetaInfoItemValue(handle, group, "v"); }),
              "Unable to set info item value of group item");
    EXPECT_EQ(ReasonOf([&] { AddMetaInfoItem(handle, item, "n", "v"); }), "Unable to add info item to non group item.");
    EXPECT_EQ(ReasonOf([&] { AddMetaInfoItemGroup(handle, item, "n"); }), "Unable to add info item to non group item.");
    for (const Call& call :
         {Call(GetInfoGroupCount), Call(CreateInfoGroup), Call(DeleteAllInfoGroups), Call(GetMetaInfoTreeRootHandle),
          Call(DeleteAllMetaInfoItems), Call([](auto h) { GetMetaInfoItemChildCount(h, root); }),
          Call([](auto h) { SelectFirstChildMetaInfoItem(h, root); }),
          Call([](auto h) { SelectNextMetaInfoItem(h, root); })})
        EXPECT_EQ(ReasonOf([&] { call(77); }), "Handle does not exist");
}

TEST_F(InfoTest, HandlesOfDeadForeignAndInventedNodesAreFailures)
{
    const auto group = AddMetaInfoItemGroup(handle, root, "G");
    const auto below = AddMetaInfoItem(handle, AddMetaInfoItemGroup(handle, group, "S"), "i", "v");
    const auto other = Create("other.oxd");
    const auto foreign = AddMetaInfoItemGroup(other, root, "F");
    const auto refound = SelectFirstChildMetaInfoItem(handle, group);
    DeleteMetaInfoItem(handle, group);
    EXPECT_NE(AddMetaInfoItemGroup(handle, root, "new"), group) << "handles are not given out again";
    const std::pair<std::string, std::function<void(std::uint64_t)>> functions[] = {
        {"get info item child count", [&](auto node) { GetMetaInfoItemChildCount(handle, node); }},
        {"get info item name", [&](auto node) { GetMetaInfoItemName(handle, node, nullptr, 1); }},
        {"set info item name", [&](auto node) { SetMetaInfoItemName(handle, node, "n"); }},
        {"get info item value", [&](auto node) { GetMetaInfoItemValue(handle, node, nullptr, 1); }},
        {"set info item value", [&](auto node) { SetMetaInfoItemValue(handle, node, "v"); }},
        {"select first child of info item", [&](auto node) { SelectFirstChildMetaInfoItem(handle, node); }},
        {"select next info item", [&](auto node) { SelectNextMetaInfoItem(handle, node); }},
        {"select parent of info item", [&](auto node) { SelectParentMetaInfoItem(handle, node); }},
        {"add info item", [&](auto node) { AddMetaInfoItem(handle, node, "n", "v"); }},
        {"add info item", [&](auto node) { AddMetaInfoItemGroup(handle, node, "n"); }},
        {"delete info item", [&](auto node) { DeleteMetaInfoItem(handle, node); }}};
    for (const std::uint64_t node : {group, below, refound, foreign, std::uint64_t{0}, ~std::uint64_t{0}}) {
        for (const auto& function : functions)
            EXPECT_EQ(ReasonOf([&] { function.second(node); }), "Unable to " + function.first + ". Unknown error")
                << node;
    }
    CloseOxdFile(other);
    EXPECT_EQ(ReasonOf([&] { IsMetaInfoItemAGroup(other, foreign); }), "Unable to evaluate info item. Unknown error");
    EXPECT_EQ(GetMetaInfoItemChildCount(handle, root), 1U);
}

} // namespace
