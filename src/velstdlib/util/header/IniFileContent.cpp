#include "velstdlib/util/header/IniFileContent.h"

#include "velstdlib/string/FoldedText.h"

#include <boost/throw_exception.hpp>

#include <stdexcept>
#include <utility>

namespace veltaris::velstdlib::util {

bool CIniFileContent::SelectSection(std::string_view name)
{
    const auto position = m_index.Find(CFoldedName(name));
    Activate(position ? name : std::string_view(), position);
    return position.has_value();
}

void CIniFileContent::SelectCreateSection(std::string_view name)
{
    if (name.empty())
        BOOST_THROW_EXCEPTION(std::runtime_error("Empty section name not allowed"));
    const CFoldedName folded(name);
    const auto position = m_index.Find(folded);
    Activate(name, position ? *position : AppendSection(folded));
}

void CIniFileContent::Activate(std::string_view name, std::optional<std::size_t> position)
{
    m_activeSectionName = name;
    m_pActiveSection = position ? &m_sections[*position].keys : nullptr;
}

std::size_t CIniFileContent::AppendSection(const CFoldedName& name)
{
    const std::size_t position = m_sections.size();
    m_sections.emplace_back(name, m_texts);
    try {
        m_index.Insert(position);
    } catch (...) {
        m_sections.pop_back();
        throw;
    }
    if (position > 0)
        m_sections.back().keys.ExpectKeysOf(m_sections[position - 1].keys);
    return position;
}

CVELKeyToValueList& CIniFileContent::GetActiveSection()
{
    return CheckedSection(BOOST_CURRENT_LOCATION);
}

const CVELKeyToValueList& CIniFileContent::GetActiveSection() const
{
    return CheckedSection(BOOST_CURRENT_LOCATION);
}

CVELKeyToValueList& CIniFileContent::CheckedSection(const boost::source_location& where) const
{
    if (!m_pActiveSection)
        boost::throw_exception(std::runtime_error("m_pActiveSection == nullptr"), where);
    return *m_pActiveSection;
}

void CIniFileContent::Clear()
{
    m_activeSectionName.clear();
    m_pActiveSection = nullptr;
    m_sections.clear();
    m_index.Rebuild();
    m_texts.Reset({});
}

void CIniFileContent::Parse(std::string text, const std::atomic<bool>& abort)
{
    Clear();
    std::string_view rest = m_texts.Reset(std::move(text));
    for (auto end = rest.find('\n'); end != std::string_view::npos && !abort; end = rest.find('\n')) {
        ParseLine(string::WithoutTrailingSpace(rest.substr(0, end)));
        rest.remove_prefix(end + 1);
    }
}

void CIniFileContent::ParseLine(std::string_view line)
{
    if (line.starts_with('[') && line.ends_with(']')) {
        SelectCreateSection(line.substr(1, line.size() - 2));
    } else if (m_pActiveSection) {
        m_pActiveSection->SetLine(line);
    }
}

std::string CIniFileContent::Render() const
{
    std::string text;
    for (const Section& section : m_sections) {
        text.append("[").append(section.name).append("]\r\n");
        section.keys.ForEachLine([&](std::string_view line) { text.append(line).append("\r\n"); });
    }
    return text;
}

} // namespace veltaris::velstdlib::util
