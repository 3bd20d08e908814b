// How changes travel up from channels to groups to the data set, and who may outlive whom.
#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/DataSetToVELConfig.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace veltaris::velflexlib::dataset;

namespace {

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
};

TEST_F(DataSetTest, ChangesTravelUp)
{
    const auto group = dataSet->GetGroup(static_cast<std::uint64_t>(dataSet->CreateGroup("", 16)));
    group->SetChannelCount(1);
    const auto buffer = group->GetOrCreateChannelBuffer(0, 2, 2);
    group->SetName("G");
    group->SetName("G");
    buffer->SetLineRaw(1, std::vector{1, 2});
    group->DeleteChannelBuffer(0);
    EXPECT_EQ(log, "[set][group Group0][group Group0][name G][G/G line 1][group G]");
    EXPECT_TRUE(dataSet->IsModified());
    dataSet->SetModified(false);
    log.clear();
    EXPECT_TRUE(dataSet->DeleteGroup(CDataSet::invalidGroupId));
    EXPECT_FALSE(dataSet->DeleteGroup(5));
    EXPECT_EQ(log, "");
    EXPECT_FALSE(dataSet->IsModified());
    EXPECT_TRUE(dataSet->DeleteGroup(0));
    EXPECT_EQ(log, "[set]");
    EXPECT_TRUE(dataSet->IsModified());
}

TEST_F(DataSetTest, GroupsAndChannelsOutliveTheirOwners)
{
    dataSet->CreateGroup("G", 16);
    auto group = dataSet->GetGroup(0);
    const auto buffer = group->GetOrCreateChannelBuffer(5, 1, 1);
    EXPECT_EQ(group->GetChannelCount(), 6U);
    dataSet.reset();
    log.clear();
    group->SetName("N");
    buffer->SetPixelRaw(0, 0, 1);
    group.reset();
    buffer->SetPixelRaw(0, 0, 2);
    EXPECT_EQ(log, "");
    EXPECT_EQ(buffer->GetGroupName(), "N");
}

TEST_F(DataSetTest, ProcessorsAreConnectedToTheChannelsThatWereLoaded)
{
    veltaris::velstdlib::util::CVELConfig document;
    document.GetContent().Parse(
        "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=2\nGr0-Ch1=A\n[ProcessorSet]\nProcessorCount=1\n"
        "Processor0=P\n[P]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=0\n"
        "[ProcessorSet-Slope:0]\nInputCount=1\nInput0Group=0\nInput0Channel=1\n"
        "OutputCount=1\nOutput0Group=9\nOutput0Channel=0\n[SetView]\nViewCount=2\n",
        false);
    CDataSetToVELConfig(*dataSet).LoadHeader(document, "DataSet", false);
    const CProcessorBase& slope = *dataSet->GetProcessorSet().GetProcessors().at(0);
    EXPECT_EQ(slope.GetInputs().GetBuffer(0), dataSet->GetGroup(0)->GetChannelBuffer(1));
    EXPECT_EQ(slope.GetOutputs().GetBuffer(0), nullptr);
    EXPECT_EQ(dataSet->GetViewSet().GetViews().size(), 2U);
}

} // namespace
