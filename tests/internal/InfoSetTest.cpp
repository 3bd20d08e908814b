// The info tree is as deep as memory allows, on a stack that recursion would overflow.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <memory>
#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

// Adds `depth` groups, each in the one before it, the last one named "deepest".
void AddDeepTree(CInfoSet& set, int depth)
{
    auto top = std::make_unique<CInfoSetItem>("g");
    CInfoSetItem* deepest = top.get();
    for (int level = 1; level < depth; ++level) {
        deepest->AddSubItem(std::make_unique<CInfoSetItem>("g"));
        deepest = deepest->GetSubItems().front().get();
    }
    deepest->SetName("deepest");
    set.AddGroup(std::move(top));
}

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
