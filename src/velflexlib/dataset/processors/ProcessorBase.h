// Derives channels from measured ones. Here processors are only kept: files are opened without running them.
#pragma once

#include "velflexlib/dataset/processors/ChannelLinks.h"
#include "velstdlib/util/header/VELConfig.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// What all processors of one class have in common.
struct CProcessorKind
{
    std::string_view typeName; // in section names
    std::string_view guid;     // in braces, in upper case
    std::string_view defaultDisplayName;
};

// Instances of one kind are told apart by their number, and so is the section in which each has its parameters.
class CProcessorBase
{
public:
    CProcessorBase(const CProcessorBase&) = delete;
    CProcessorBase& operator=(const CProcessorBase&) = delete;
    virtual ~CProcessorBase() = default;

    const CProcessorKind& GetKind() const { return m_kind; }
    std::uint64_t GetInstanceNo() const { return m_instanceNo; }
    std::string GetSectionName() const;

    // Everything stays as it is when the document lacks the processor's section. Throws CVELFileBadContentException for
    // too many inputs or outputs.
    void LoadParameters(velstdlib::util::CVELConfig& document);
    // Writes what only this kind of processor has, into the processor's section.
    void SaveParameters(velstdlib::util::CVELConfig& document) const;

    void Connect(const ChannelLookup& lookup);

    const std::string& GetDisplayName() const { return m_displayName; }
    bool IsEnabled() const { return m_enabled; }
    const CChannelLinks& GetInputs() const { return m_inputs; }
    const CChannelLinks& GetOutputs() const { return m_outputs; }

protected:
    // `kind` lives as long as the program.
    CProcessorBase(const CProcessorKind& kind, std::uint64_t instanceNo);

    // The processor's section is the document's active one.
    virtual void LoadOwnParameters(const velstdlib::util::CVELConfig& /*document*/) {}
    virtual void SaveOwnParameters(velstdlib::util::CVELConfig& /*document*/) const {}

private:
    const CProcessorKind& m_kind;
    std::uint64_t m_instanceNo;
    std::string m_displayName;
    bool m_enabled = true;
    CChannelLinks m_inputs;
    CChannelLinks m_outputs;
};

} // namespace veltaris::velflexlib::dataset
