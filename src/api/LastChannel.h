// The channel that was asked for last.
#pragma once

#include "velflexlib/dataset/DataSet.h"

#include <cstdint>

// Programs read a channel line by line and sample by sample: finding it again would take longer than reading a sample.
// One for the process, as the interface is for one thread at a time. It must not outlive the channel or its place: see
// CLastChannelGuard.
class CLastChannel
{
public:
    using CDataBuffer = veltaris::velflexlib::dataset::CDataBuffer;

    // Null when another one was asked for last.
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

// Forgets the last channel whenever groups or slots of a data set change, and with the end of the data set.
class CLastChannelGuard
{
public:
    explicit CLastChannelGuard(veltaris::velflexlib::dataset::CDataSet& dataSet);
    CLastChannelGuard(const CLastChannelGuard&) = delete;
    CLastChannelGuard& operator=(const CLastChannelGuard&) = delete;
    ~CLastChannelGuard() { lastChannel.Forget(); }
};
