// The channel that an export looked up last, kept because programs read a channel line by line and sample by sample:
// looking it up again takes longer than reading a sample.
#pragma once

#include "velflexlib/dataset/DataSet.h"

#include <cstdint>

// One channel with the arguments that led to it. What it remembers must be forgotten before the channel ends or moves
// to another place; a CLastChannelGuard in every open file sees to that. Not thread-safe: there is one for the process,
// as the interface is called from one thread at a time.
class CLastChannel
{
public:
    using CDataBuffer = veltaris::velflexlib::dataset::CDataBuffer;

    // The channel that these arguments lead to, or null when others were remembered last.
    CDataBuffer* Find(std::uint64_t handle, std::uint64_t group, std::uint64_t channel) const
    {
        return handle == m_handle && group == m_group && channel == m_channel ? m_buffer : nullptr;
    }
    void Remember(std::uint64_t handle, std::uint64_t group, std::uint64_t channel, CDataBuffer& buffer)
    {
        m_handle = handle;
        m_group = group;
        m_channel = channel;
        m_buffer = &buffer;
    }
    void Forget() { m_buffer = nullptr; }

private:
    std::uint64_t m_handle = 0;
    std::uint64_t m_group = 0;
    std::uint64_t m_channel = 0;
    CDataBuffer* m_buffer = nullptr;
};

extern CLastChannel lastChannel;

// Makes the process forget the last channel whenever groups or slots of a data set change, and at the end of the guard,
// which must not outlive the data set. It does not ask whose channel it is: looking one up again costs little.
class CLastChannelGuard
{
public:
    explicit CLastChannelGuard(veltaris::velflexlib::dataset::CDataSet& dataSet);
    CLastChannelGuard(const CLastChannelGuard&) = delete;
    CLastChannelGuard& operator=(const CLastChannelGuard&) = delete;
    ~CLastChannelGuard() { lastChannel.Forget(); }
};
