// The base of all processors, which derive channels from measured ones. The library only keeps what a file says of
// them: it never runs them.
#pragma once

#include "velflexlib/dataset/processors/ChannelLinks.h"
#include "velstdlib/util/header/VELConfig.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// What all processors of one class have in common. The texts live as long as the program.
struct CProcessorKind
{
    std::string_view typeName; // in section names
    std::string_view guid;     // in braces, in upper case
    std::string_view defaultDisplayName;
};

// A processor is identified by its kind and its instance number, which together name the section that holds its
// parameters: its display name, whether it is enabled, its input and output channels, and what only its kind has.
//
// Invariant: kind and number never change. Not thread-safe: belongs to the processor set of a data set.
class CProcessorBase
{
public:
    CProcessorBase(const CProcessorBase&) = delete;
    CProcessorBase& operator=(const CProcessorBase&) = delete;
    virtual ~CProcessorBase() = default;

    std::string GetSectionName() const;

    // Reads all parameters from the processor's section, and changes nothing if the document has no such section.
    // Throws CVELFileBadContentException for too many inputs or outputs.
    void LoadParameters(velstdlib::util::CVELConfig& document);
    // Writes the parameters that only this kind has to the processor's section, which is created if need be.
    void SaveParameters(velstdlib::util::CVELConfig& document) const;

    // Connects inputs and outputs with the channels at their addresses.
    void Connect(const ChannelLookup& lookup);

    const std::string& GetDisplayName() const { return m_displayName; }
    bool IsEnabled() const { return m_enabled; }
    const CChannelLinks& GetInputs() const { return m_inputs; }
    const CChannelLinks& GetOutputs() const { return m_outputs; }

protected:
    // `kind` must live as long as the program.
    CProcessorBase(const CProcessorKind& kind, std::uint64_t instanceNo);

    // Hooks for the parameters that only one kind has. The active section of the document is the processor's.
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
