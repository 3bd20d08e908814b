// Groups, slots and axes in memory.
#include "support/Axes.h"
#include "support/OxdTest.h"

#include <functional>

namespace {

using StructureTest = NewDataSetTest;

TEST_F(StructureTest, GroupIdsAreReusedAndLogicalIdsAreNot)
{
    for (std::uint64_t id = 0; id < 4; ++id) {
        EXPECT_EQ(CreateGroup(handle, 16), id);
        EXPECT_EQ(GroupName(handle, id), "Group" + std::to_string(id));
        EXPECT_EQ(GetLogicalGroupId(handle, id), 256 + id);
    }
    DeleteGroup(handle, 1);
    DeleteGroup(handle, 2);
    ASSERT_EQ(GetGroupCount(handle), 2U);
    std::vector<std::uint64_t> ids(2);
    GetAllGroupIds(handle, ids.data());
    EXPECT_EQ(ids, (std::vector<std::uint64_t>{0, 3}));
    for (const std::uint64_t id : {1U, 2U, 4U})
        EXPECT_EQ(CreateGroup(handle, 16), id);
    EXPECT_EQ(GetLogicalGroupId(handle, 4), 262U);
    DeleteAllGroups(handle);
    EXPECT_EQ(GetGroupCount(handle), 0U);
    EXPECT_EQ(CreateGroup(handle, 16), 0U);
    EXPECT_EQ(GetLogicalGroupId(handle, 0), 256U);
    SetLogicalGroupId(handle, 0, 0xAFFFFFFFFULL);
    EXPECT_EQ(GetLogicalGroupId(handle, 0), 0xFFFFFFFFU) << "only the low 32 bits count";
}

TEST_F(StructureTest, GroupsAreFoundByTheirExactName)
{
    for (int group = 0; group < 2; ++group)
        SetGroupName(handle, CreateGroup(handle, 16), "Scan");
    EXPECT_EQ(ReasonOf([&] { EXPECT_EQ(GetGroupId(handle, "Scan"), 0U); }), "");
    SetGroupName(handle, 0, "scan");
    EXPECT_EQ(GetGroupId(handle, "Scan"), 1U);
    EXPECT_EQ(ReasonOf([&] { GetGroupId(handle, "SCAN"); }),
              "Unable to get group index. No group with given name available. Index: SCAN");
}

TEST_F(StructureTest, AnotherSlotCountDropsAllChannelsAndTheSameOneNone)
{
    const auto group = CreateChannel(handle, 16, 2, 2);
    SetChannelCount(handle, group, 1);
    EXPECT_TRUE(HasChannelBuffer(handle, group, 0));
    SetChannelCount(handle, group, 2);
    EXPECT_FALSE(HasChannelBuffer(handle, group, 0));
    EXPECT_EQ(ReasonOf([&] { SetChannelCount(handle, group, 1'048'577); }), "std::bad_alloc");
    EXPECT_EQ(GetChannelCount(handle, group), 2U);
}

TEST_F(StructureTest, OnlyAnotherSizeWithinTheLimitsDiscardsTheSamples)
{
    CreateChannel(handle, 16, 2, 2);
    const auto resize = [&](auto points, auto lines) {
        return [=, this] { SetChannelXYDimension(handle, 0, 0, points, lines); };
    };
    const auto keepsSamples = [&](const std::function<void()>& call, const char* reason) {
        SetChannelData_PixelRaw(handle, 0, 0, 0, 1, 7);
        EXPECT_EQ(ReasonOf(call), reason);
        return GetChannelData_PixelRaw(handle, 0, 0, 0, 1, 0) == 7;
    };
    EXPECT_TRUE(keepsSamples(resize(2U, 2U), ""));
    EXPECT_TRUE(keepsSamples([&] { SetChannelData_Points(handle, 0, 0, 2); }, ""));
    EXPECT_TRUE(keepsSamples([&] { SetChannelData_Lines(handle, 0, 0, 2); }, ""));
    EXPECT_FALSE(keepsSamples([&] { SetChannelData_Lines(handle, 0, 0, 65536); }, ""));
    EXPECT_FALSE(keepsSamples(resize(2U, 2U), ""));
    EXPECT_FALSE(keepsSamples([&] { SetChannelData_Points(handle, 0, 0, 65536); }, ""));
    const std::pair<std::uint64_t, std::uint64_t> sizes[] = {{65536, 65537}, {1ULL << 31, 1}, {1, 1ULL << 31},
                                                             {0, 1'048'577}, {~0ULL, ~0ULL},  {1ULL << 33, 1ULL << 31}};
    for (const auto& size : sizes)
        EXPECT_TRUE(keepsSamples(resize(size.first, size.second), "std::bad_alloc"));
    EXPECT_EQ(ReasonOf(resize(0U, 1'048'576U)), "");
    EXPECT_EQ(ReasonOf(resize(0x7FFFFFFFU, 0U)), "");
}

TEST_F(StructureTest, EachAxisKeepsItsOwnTextsAndNumbers)
{
    const auto g = CreateChannel(handle, 16, 2, 2);
    int count = 0;
    for (const AxisProperty& p : axisProperties) {
        p.setText(handle, g, 0, ("\xC2\xB5" + std::to_string(++count)).c_str());
        p.setNumber(handle, g, 0, count);
    }
    count = 0;
    for (const AxisProperty& p : axisProperties) {
        EXPECT_EQ(Text(p.getText, handle, g, 0), "\xC2\xB5" + std::to_string(++count));
        EXPECT_EQ(p.getNumber(handle, g, 0), count);
    }
    EXPECT_EQ(GetChannelData_PointAxisMinPerLine(handle, g, 0, 1), 1) << "lines follow the point axis";
    EXPECT_EQ(GetChannelData_PointAxisRangePerLine(handle, g, 0, 1), 2);
}

TEST_F(StructureTest, AChannelThatIsGoneIsNotFoundAgain)
{
    std::uint64_t file = 0;
    const auto isThere = [&] { return ReasonOf([&] { GetChannelData_PixelRaw(file, 0, 0, 0, 0, 0); }).empty(); };
    const std::function<void()> ways[] = {
        [&] { DeleteChannelBuffer(file, 0, 0); }, [&] { SetChannelCount(file, 0, 0); }, [&] { DeleteGroup(file, 0); },
        [&] { DeleteAllGroups(file); },           [&] { CloseOxdFile(file); },
    };
    for (const auto& remove : ways) {
        CloseOxdFile(file);
        file = Create();
        EXPECT_FALSE(isThere()) << "another file, perhaps of the same number";
        CreateChannel(file, 16, 2, 2);
        SetChannelData_PixelRaw(file, 0, 0, 0, 0, 7);
        EXPECT_TRUE(isThere());
        remove();
        EXPECT_FALSE(isThere()) << &remove - ways;
    }
}

} // namespace
