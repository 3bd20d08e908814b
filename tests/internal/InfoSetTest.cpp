// The info tree where the C interface cannot show it: insertion, paths, selection, signals, and depth.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/InfoSetToVELConfig.h"
#include "velstdlib/util/ContainerHelper.h"

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

std::string NamesBelow(const CInfoSetItem& group)
{
    std::string names;
    for (const auto& item : group.GetSubItems())
        names += item->GetName();
    return names;
}

TEST(InfoSetTest, SubItemsAreInsertedWhereThereIsAPlace)
{
    CInfoSetItem group("G");
    EXPECT_TRUE(group.InsertSubItem(Group("b"), 0));
    EXPECT_TRUE(group.InsertSubItem(Group("a"), 0));
    EXPECT_TRUE(group.InsertSubItem(Group("d"), -1));
    EXPECT_TRUE(group.InsertSubItem(Group("e"), 3));
    EXPECT_TRUE(group.InsertSubItem(Group("c"), 2));
    EXPECT_FALSE(group.InsertSubItem(Group("x"), 6));
    EXPECT_FALSE(group.InsertSubItem(Group("x"), -2));
    EXPECT_EQ(NamesBelow(group), "abcde");
    CInfoSetItem item("i", "v");
    EXPECT_THROW(item.AddSubItem(Group("x")), std::runtime_error);
    EXPECT_THROW(item.GetGroupPath(), std::runtime_error);
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
}

TEST(InfoSetTest, DeletingSelectsTheFirstGroupThatIsLeft)
{
    CInfoSet set;
    int changes = 0;
    set.OnChanged.connect([&] { ++changes; });
    for (const char* name : {"A", "B", "C"})
        EXPECT_TRUE(set.AddGroup(Group(name)));
    EXPECT_FALSE(set.InsertGroup(Group("X"), 4));
    EXPECT_FALSE(set.DeleteGroup("a")) << "deletion does not ignore case";
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(set.DeleteGroup("A"));
    EXPECT_EQ(set.GetSelected(), set.GetGroup(0));
    EXPECT_TRUE(set.MoveGroup(0, 1));
    EXPECT_FALSE(set.MoveGroup(0, 2));
    EXPECT_FALSE(set.MoveGroup(0, -1));
    EXPECT_FALSE(set.MoveGroup(-1, 0));
    EXPECT_EQ(set.GetGroupName(0), "C");
    set.DeleteAllGroups();
    EXPECT_EQ(set.GetSelected(), nullptr);
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(set.IsModified());
    std::vector<int> elements{1, 2};
    EXPECT_THROW(veltaris::velstdlib::util::MoveElement(elements, 2, 0), std::out_of_range);
    EXPECT_THROW(veltaris::velstdlib::util::MoveElement(elements, 0, 2), std::out_of_range);
}

// Runs the function on a stack that recursion over deep trees would overflow.
void RunOnSmallStack(void* (*function)(void*))
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 262'144);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, function, nullptr), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
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

TEST(InfoSetTest, DepthIsLimitedByMemoryOnly)
{
    RunOnSmallStack([](void*) -> void* {
        CInfoSet set;
        AddDeepTree(set, 100'000);
        CInfoSetItem* const deepest = set.FindGroup("deepest", true);
        EXPECT_EQ(deepest->GetGroupPath().size(), 2U * 99'999 + 7);
        EXPECT_EQ(deepest->GetOwner(), &set);
        EXPECT_TRUE(set.GetGroup(0)->DeleteSubItem(deepest));
        AddDeepTree(set, 100'000);
        return nullptr;
    });
}

TEST(InfoSetTest, DeepTreesAreSavedAndLoaded)
{
    RunOnSmallStack([](void*) -> void* {
        CInfoSet saved;
        AddDeepTree(saved, 3000);
        veltaris::velstdlib::util::CVELConfig document;
        CInfoSetToVELConfig(saved, document, "S").Save();
        CInfoSet loaded;
        CInfoSetToVELConfig(loaded, document, "S").LoadTree(false);
        EXPECT_EQ(loaded.FindGroup("deepest", true)->GetGroupPath(), saved.FindGroup("deepest", true)->GetGroupPath());
        return nullptr;
    });
}

} // namespace
