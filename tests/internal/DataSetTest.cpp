// How changes of groups and channels travel up to the data set, and who may outlive whom.
#include "velflexlib/dataset/DataSet.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

std::shared_ptr<CDataGroup> NewGroup(CDataSet& dataSet)
{
    return dataSet.GetGroup(static_cast<std::uint64_t>(dataSet.CreateGroup("", 16)));
}

class DataSetTest : public ::testing::Test
{
protected:
    std::unique_ptr<CDataSet> dataSet = std::make_unique<CDataSet>();
    std::string log;

    DataSetTest()
    {
        dataSet->OnChanged.connect([this] { log += "[set]"; });
        dataSet->OnGroupNameChanged.connect([this](const std::string& name) { log += "[name " + name + "]"; });
        dataSet->OnGroupChanged.connect([this](CDataGroup& group) { log += "[group " + group.GetName() + "]"; });
        dataSet->OnBufferChanged.connect([this](CDataGroup& group, CDataBuffer& buffer, std::size_t line) {
            log += "[" + group.GetName() + "/" + buffer.GetGroupName() + " line " + std::to_string(line) + "]";
        });
    }

    void Listen(CDataGroup& group)
    {
        group.OnNameChanged.connect([this](const std::string&) { log += "name "; });
        group.OnChanged.connect([this](CDataGroup&) { log += "group "; });
        group.OnBufferChanged.connect([this](CDataGroup&, CDataBuffer&, std::size_t) { log += "line "; });
    }
};

TEST_F(DataSetTest, TheDataSetHearsOfChangesBeforeThoseWhoListenToTheGroup)
{
    const auto group = NewGroup(*dataSet);
    Listen(*group);
    group->SetChannelCount(1);
    const auto buffer = group->GetOrCreateChannelBuffer(0, 2, 2);
    group->SetName("G");
    group->SetName("G");
    buffer->SetPixelRaw(0, 1, 1);
    group->DeleteChannelBuffer(0);
    EXPECT_EQ(log, "[set][group Group0]group [group Group0]group [name G]name [G/G line 1]line [group G]group ");
    log.clear();
    EXPECT_TRUE(dataSet->DeleteGroup(CDataSet::invalidGroupId));
    EXPECT_FALSE(dataSet->DeleteGroup(5));
    EXPECT_EQ(log, "") << "nothing was deleted";
    EXPECT_TRUE(dataSet->DeleteGroup(0));
    dataSet->DeleteAllGroups();
    EXPECT_EQ(log, "[set][set]");
}

TEST_F(DataSetTest, AGroupIsHeardWhenNobodyListensToTheDataSet)
{
    CDataSet silent;
    const auto group = NewGroup(silent);
    const auto buffer = group->GetOrCreateChannelBuffer(0, 1, 1);
    buffer->SetPixelRaw(0, 0, 1);
    Listen(*group);
    buffer->SetPixelRaw(0, 0, 1);
    EXPECT_EQ(log, "line ");
}

TEST_F(DataSetTest, TheDataSetIsHeardWhenNobodyListensToTheGroup)
{
    const auto buffer = NewGroup(*dataSet)->GetOrCreateChannelBuffer(0, 1, 1);
    log.clear();
    buffer->SetPixelRaw(0, 0, 1);
    EXPECT_EQ(log, "[Group0/Group0 line 0]");
}

TEST_F(DataSetTest, GroupsAndChannelsOutliveTheirOwners)
{
    auto group = NewGroup(*dataSet);
    const auto buffer = group->GetOrCreateChannelBuffer(5, 1, 1);
    EXPECT_EQ(group->GetChannelCount(), 6U);
    dataSet.reset();
    log.clear();
    group->SetName("N");
    buffer->SetPixelRaw(0, 0, 1);
    group.reset();
    buffer->SetPixelRaw(0, 0, 2);
    EXPECT_EQ(log + buffer->GetGroupName(), "N");
}

} // namespace
