// The processors that derive a data set's channels.
#pragma once

#include "velflexlib/dataset/processors/ProcessorBase.h"
#include "velstdlib/util/header/VELConfig.h"

#include <memory>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Read only: files are written without processors.
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

    // Leads the processors to the channels that they read and write, without keeping these alive.
    void Connect(const ChannelLookup& lookup);

    void Clear();

    // In the order of the list. A processor that is listed more than once is here as often.
    const std::vector<CProcessorBase*>& GetProcessors() const { return m_entries; }

private:
    std::vector<std::unique_ptr<CProcessorBase>> m_processors; // each kind and instance once
    std::vector<CProcessorBase*> m_entries;
};

} // namespace veltaris::velflexlib::dataset
