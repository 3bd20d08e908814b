// The info tree where the C interface cannot show it: insertion, paths, selection, signals, and depth.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <memory>
#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

std::unique_ptr<CInfoSetItem> Group(const std::string& name)
{
    return std::make_unique<CInfoSetItem>(name);
}

TEST(InfoSetTest, SubItemsAreInsertedWhereThereIsAPlace)
{
    CInfoSetItem group("G");
    for (const auto& [name, at] : {std::pair("b", 0), {"a", 0}, {"d", -1}, {"e", 3}, {"c", 2}})
        EXPECT_TRUE(group.InsertSubItem(Group(name), at)) << name;
    for (const int at : {6, -2})
        EXPECT_FALSE(group.InsertSubItem(Group("x"), at)) << at;
    std::string names;
    for (const auto& item : group.GetSubItems())
        names += item->GetName();
    EXPECT_EQ(names, "abcde");
    EXPECT_THROW(CInfoSetItem("i", "v").AddSubItem(Group("x")), std::runtime_error);
}

TEST(InfoSetTest, GroupsAreFoundDepthFirstAndKnowTheirPath)
{
    CInfoSet set;
    set.AddGroup(Group("Scan"));
    set.AddGroup(Group("Z"));
    set.GetGroup(0)->AddSubItem(std::make_unique<CInfoSetItem>("Z", "an item"));
    set.GetGroup(0)->AddSubItem(Group("Channel"));
    CInfoSetItem& channel = *set.GetGroup(0)->GetSubItems().back();
    channel.AddSubItem(Group("Z"));
    EXPECT_EQ(set.FindGroup("Z", true)->GetGroupPath(), "Scan\\Channel\\Z");
    EXPECT_EQ(set.FindGroup("Z", false)->GetGroupPath(), "Z");
    EXPECT_EQ(channel.GetGroupPath("suffix"), "Scan\\Channel\\suffix");
    EXPECT_EQ(set.FindGroup("z", true), nullptr);
    EXPECT_EQ(set.GetGroupIndex("z"), 1U);
    EXPECT_EQ(set.GetGroupName(-1) + set.GetGroupName(2) + set.GetGroupName(0), "Scan");
    EXPECT_TRUE(set.GetGroup(0)->DeleteSubItem(channel.GetSubItems().front().get())) << "wherever it is below";
    EXPECT_FALSE(set.GetGroup(0)->DeleteSubItem(set.GetGroup(1)));
    EXPECT_FALSE(set.GetGroup(0)->DeleteSubItem(nullptr));
    const auto loose = Group("L");
    loose->SetName("M");
    EXPECT_EQ(loose->GetName(), "M");
    EXPECT_EQ(loose->GetNext(), nullptr);
}

TEST(InfoSetTest, DeletingSelectsTheFirstGroupThatIsLeftAndWhatIsNotThereIsNeitherMovedNorDeleted)
{
    CInfoSet set;
    int changes = 0;
    set.OnChanged.connect([&] { ++changes; });
    for (const char* name : {"A", "B", "C"})
        EXPECT_TRUE(set.AddGroup(Group(name)));
    EXPECT_FALSE(set.InsertGroup(Group("D"), 4));
    EXPECT_FALSE(set.DeleteGroup("a")) << "deletion does not ignore case";
    EXPECT_FALSE(set.DeleteGroup(3U) || set.MoveGroup(0, 3) || set.MoveGroup(-1, 0));
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(set.DeleteGroup("A"));
    EXPECT_EQ(set.GetSelected(), set.GetGroup(0));
    set.DeleteAllGroups();
    EXPECT_EQ(set.GetSelected(), nullptr);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(set.IsModified());
}

// Adds `depth` groups, each in the one before it, the last one named "deepest".
void AddDeepTree(CInfoSet& set, int depth)
{
    auto top = Group("g");
    CInfoSetItem* deepest = top.get();
    for (int level = 1; level < depth; ++level) {
        deepest->AddSubItem(Group("g"));
        deepest = deepest->GetSubItems().front().get();
    }
    deepest->SetName("deepest");
    set.AddGroup(std::move(top));
}

// On a stack that recursion would overflow.
TEST(InfoSetTest, DepthIsLimitedByMemoryOnly)
{
    const auto work = [](void*) -> void* {
        CInfoSet set;
        AddDeepTree(set, 100'000);
        CInfoSetItem* const deepest = set.FindGroup("deepest", true);
        EXPECT_EQ(deepest->GetGroupPath().size(), 2U * 99'999 + 7);
        EXPECT_EQ(deepest->GetOwner(), &set);
        EXPECT_TRUE(set.GetGroup(0)->DeleteSubItem(deepest));

        CInfoSet saved;
        AddDeepTree(saved, 3000);
        veltaris::velstdlib::util::CVELConfig document;
        CInfoSetToVELConfig(saved, document, "S").Save();
        CInfoSet loaded;
        CInfoSetToVELConfig(loaded, document, "S").LoadTree(false);
        EXPECT_EQ(loaded.FindGroup("deepest", true)->GetGroupPath(), saved.FindGroup("deepest", true)->GetGroupPath());
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 262'144);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, work, nullptr), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace
