// The processors that derive a data set's channels.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"
#include "velstdlib/util/header/VELConfig.h"

#include <memory>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Processors are read from files, never written: a saved file has none. Not thread-safe.
class CProcessorSet
{
public:
    CProcessorSet() = default;
    CProcessorSet(const CProcessorSet&) = delete;
    CProcessorSet& operator=(const CProcessorSet&) = delete;
    ~CProcessorSet() = default;

    // Replaces the processors by those that the document lists, and loads their parameters. Entries without section,
    // identifier or instance number are skipped. Throws CVELFileBadContentException for too many of anything, and
    // std::out_of_range for an identifier that is no processor's.
    void ReadFromFile(velstdlib::util::CVELConfig& document);

    // Connects the processors to the channels that they read and write, without keeping these alive.
    void Connect(const ChannelLookup& lookup);

    void Clear();

    // One for each entry of the list that names a processor, in this order; never null. Entries of one kind and number
    // have the same parameters, but are objects of their own.
    const std::vector<std::unique_ptr<CProcessorBase>>& GetProcessors() const { return m_processors; }

private:
    std::vector<std::unique_ptr<CProcessorBase>> m_processors;
};

} // namespace veltaris::velflexlib::dataset
