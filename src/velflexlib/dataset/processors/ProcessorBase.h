// The base of all processors, which derive channels from measured ones. This is what a file says of them: opening it
// never runs one. What they compute is in src/processing/.
#pragma once

#include "velflexlib/dataset/processors/ChannelLinks.h"
#include "velflexlib/fx/FxProperty.h"
#include "velstdlib/util/header/VELConfig.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

// A parameter that a kind of processors has, and what it is where a file does not say it.
struct CParameterKind
{
    std::string_view key;
    double value = 0;
    std::string_view unit;
};

// What all processors of one class have in common. Texts and table live as long as the program.
struct CProcessorKind
{
    std::string_view typeName; // in section names
    std::string_view guid;     // in braces, in upper case
    std::string_view defaultDisplayName;
    std::span<const CParameterKind> parameters;
};

// A processor is identified by its kind and its instance number, which together name the section that holds its
// parameters: its display name, whether it is enabled, its input and output channels, and what only its kind has.
//
// Invariants: kind and number never change; there is one parameter for each of the kind. Not thread-safe: belongs to
// the processor set of a data set.
class CProcessorBase
{
public:
    CProcessorBase(const CProcessorBase&) = delete;
    CProcessorBase& operator=(const CProcessorBase&) = delete;
    virtual ~CProcessorBase() = default;

    const CProcessorKind& GetKind() const { return m_kind; }
    std::uint64_t GetInstanceNo() const { return m_instanceNo; }
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
    // By its position in the table of the kind.
    const fx::CFxProperty& GetParameter(std::size_t position) const { return m_parameters.at(position); }
    // The parameter as the file says it, which may have no unit. Nothing if the file does not, or if it is unreadable.
    const std::optional<fx::CFxProperty>& GetWritten(std::size_t position) const { return m_written.at(position); }
    // Keys with texts that make no sense, for which the defaults stand.
    const std::vector<std::pair<std::string, std::string>>& GetUnreadable() const { return m_unreadable; }
    const CChannelLinks& GetInputs() const { return m_inputs; }
    const CChannelLinks& GetOutputs() const { return m_outputs; }

protected:
    // `kind` must live as long as the program.
    CProcessorBase(const CProcessorKind& kind, std::uint64_t instanceNo);

private:
    // Of the parameters that only this kind has.
    void LoadOwnParameters(const velstdlib::util::CVELKeyToValueList& keys);
    void LoadEnabled(const velstdlib::util::CVELKeyToValueList& keys);
    void NoteUnreadable(std::string_view key, const std::string& text);
    void SaveOwnParameters(velstdlib::util::CVELKeyToValueList& keys) const;

    const CProcessorKind& m_kind;
    std::uint64_t m_instanceNo;
    std::string m_displayName;
    bool m_enabled = true;
    std::vector<fx::CFxProperty> m_parameters; // in the order of the kind
    std::vector<std::optional<fx::CFxProperty>> m_written;
    std::vector<std::pair<std::string, std::string>> m_unreadable;
    CChannelLinks m_inputs;
    CChannelLinks m_outputs;
};

} // namespace veltaris::velflexlib::dataset
