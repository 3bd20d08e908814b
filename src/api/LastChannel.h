// The channel of a file that was looked up last, kept because programs read a channel line by line and sample by
// sample: looking it up again takes longer than reading a sample.
#pragma once

#include "velflexlib/dataset/DataSet.h"

#include <cstdint>

// One channel of the data set with the arguments that led to it. It is forgotten whenever groups or slots of the data
// set change, which may end the channel or move it to another place. Must not outlive the data set, nor be asked after
// it. Not thread-safe: used, like its file, by one thread at a time.
class CLastChannel
{
public:
    using CDataBuffer = veltaris::velflexlib::dataset::CDataBuffer;

    explicit CLastChannel(veltaris::velflexlib::dataset::CDataSet& dataSet);
    CLastChannel(const CLastChannel&) = delete;
    CLastChannel& operator=(const CLastChannel&) = delete;
    ~CLastChannel() = default;

    // The channel that these arguments lead to, or null when others were remembered last.
    CDataBuffer* Find(std::uint64_t group, std::uint64_t channel) const
    {
        return group == m_group && channel == m_channel ? m_buffer : nullptr;
    }
    void Remember(std::uint64_t group, std::uint64_t channel, CDataBuffer& buffer)
    {
        m_group = group;
        m_channel = channel;
        m_buffer = &buffer;
    }

private:
    std::uint64_t m_group = 0;
    std::uint64_t m_channel = 0;
    CDataBuffer* m_buffer = nullptr;
};
