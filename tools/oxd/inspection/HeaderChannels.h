// The names of the groups and channels of a header, for commands that look for a channel before they read samples.
#pragma once

#include "oxd/inspection/UntilNul.h"
#include "oxd/library/ChannelNames.h"
#include "velflexlib/dataset/DataSet.h"

namespace oxd {

// The data set must outlive this.
class HeaderChannels : public ChannelNames
{
public:
    using DataSet = veltaris::velflexlib::dataset::CDataSet;

    explicit HeaderChannels(const DataSet& dataSet) : m_dataSet(&dataSet) {}

    std::vector<std::uint64_t> GroupIds() const override
    {
        const std::vector<int> ids = m_dataSet->GetAllGroupIds();
        return {ids.begin(), ids.end()};
    }
    std::string GroupName(std::uint64_t group) const override
    {
        return UntilNul(m_dataSet->GetGroup(group)->GetName());
    }
    std::uint64_t SlotCount(std::uint64_t group) const override
    {
        return m_dataSet->GetGroup(group)->GetChannelCount();
    }
    std::optional<std::string> ChannelName(std::uint64_t group, std::uint64_t slot) const override
    {
        const auto channel = m_dataSet->GetGroup(group)->GetChannelBuffer(slot);
        return channel ? std::optional(UntilNul(channel->GetAxisName(veltaris::velflexlib::dataset::signalAxis)))
                       : std::nullopt;
    }

private:
    const DataSet* m_dataSet;
};

} // namespace oxd
