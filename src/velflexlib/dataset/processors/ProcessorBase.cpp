#include "velflexlib/dataset/processors/ProcessorBase.h"

#include "velflexlib/fx/FxPropertyHelpers.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

struct Spelling
{
    std::string_view text;
    bool value;
};

constexpr std::array<Spelling, 6> spellings{
    {{"1", true}, {"0", false}, {"true", true}, {"false", false}, {"yes", true}, {"no", false}}};

} // namespace

CProcessorBase::CProcessorBase(const CProcessorKind& kind, std::uint64_t instanceNo)
    : m_kind(kind), m_instanceNo(instanceNo), m_displayName(kind.defaultDisplayName)
{
    for (const CParameterKind& parameter : kind.parameters)
        m_parameters.push_back({parameter.value, std::string(parameter.unit)});
    m_written.resize(m_parameters.size());
}

std::string CProcessorBase::GetSectionName() const
{
    return std::string("ProcessorSet-").append(m_kind.typeName).append(":").append(std::to_string(m_instanceNo));
}

void CProcessorBase::LoadParameters(CVELConfig& document)
{
    const std::string name = GetSectionName();
    const auto section = document.SelectSection(name);
    if (!section)
        return;
    const CVELKeyToValueList& keys = section->keys;
    m_displayName = keys.GetValue("DisplayName", m_kind.defaultDisplayName);
    m_unreadable.clear();
    LoadEnabled(keys);
    LoadOwnParameters(keys);
    m_inputs.Read(*section, "Input");
    m_outputs.Read(*section, "Output");
}

void CProcessorBase::SaveParameters(CVELConfig& document) const
{
    document.GetContent().SelectCreateSection(GetSectionName());
    SaveOwnParameters(document.GetContent().GetActiveSection());
}

void CProcessorBase::LoadOwnParameters(const CVELKeyToValueList& keys)
{
    for (std::size_t i = 0; i < m_parameters.size(); ++i) {
        const std::string_view key = m_kind.parameters[i].key;
        m_parameters[i] = fx::ReadFxProperty(keys, key, m_parameters[i]);
        const std::string text = keys.GetValue(key);
        m_written[i] = fx::ParseFxProperty(text);
        if (!m_written[i])
            NoteUnreadable(key, text);
    }
}

void CProcessorBase::LoadEnabled(const CVELKeyToValueList& keys)
{
    constexpr std::string_view key = "Enabled";
    const std::string text = keys.GetValue(key);
    const auto* const found =
        std::ranges::find_if(spellings, [&](const auto& s) { return velstdlib::string::EqualFolded(s.text, text); });
    if (found != spellings.end())
        m_enabled = found->value;
    else
        NoteUnreadable(key, text);
}

// A key without a text is as good as missing.
void CProcessorBase::NoteUnreadable(std::string_view key, const std::string& text)
{
    if (!text.empty())
        m_unreadable.emplace_back(key, text);
}

void CProcessorBase::SaveOwnParameters(CVELKeyToValueList& keys) const
{
    for (std::size_t i = 0; i < m_parameters.size(); ++i)
        fx::WriteFxProperty(keys, m_kind.parameters[i].key, m_parameters[i]);
}

void CProcessorBase::Connect(const ChannelLookup& lookup)
{
    m_inputs.Connect(lookup);
    m_outputs.Connect(lookup);
}

} // namespace veltaris::velflexlib::dataset
