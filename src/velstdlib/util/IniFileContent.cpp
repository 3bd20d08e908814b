#include "velstdlib/util/IniFileContent.h"

#include "velstdlib/string/FoldedText.h"

#include <boost/throw_exception.hpp>

#include <stdexcept>

namespace veltaris::velstdlib::util {

bool CIniFileContent::SelectSection(std::string_view name)
{
    const auto position = m_index.Find(name);
    m_activeSectionName = position ? std::string(name) : std::string();
    m_pActiveSection = position ? &m_sections[*position]->keys : nullptr;
    return position.has_value();
}

void CIniFileContent::SelectCreateSection(std::string_view name)
{
    if (name.empty())
        BOOST_THROW_EXCEPTION(std::runtime_error("Empty section name not allowed"));
    if (!m_index.Find(name)) {
        AppendSection(name);
    }
    SelectSection(name);
}

void CIniFileContent::AppendSection(std::string_view name)
{
    m_sections.push_back(std::make_unique<Section>(name));
    try {
        m_index.Insert(m_sections.size() - 1);
    } catch (...) {
        m_sections.pop_back();
        throw;
    }
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
    m_index.Clear();
    m_sections.clear();
}

void CIniFileContent::Parse(std::string_view text, const std::atomic<bool>& abort)
{
    Clear();
    for (auto end = text.find('\n'); end != std::string_view::npos && !abort; end = text.find('\n')) {
        ParseLine(string::WithoutTrailingSpace(text.substr(0, end)));
        text.remove_prefix(end + 1);
    }
}

void CIniFileContent::ParseLine(std::string_view line)
{
    if (line.starts_with('[') && line.ends_with(']')) {
        SelectCreateSection(line.substr(1, line.size() - 2));
        return;
    }
    const auto equals = line.find('=');
    if (m_pActiveSection && equals != std::string_view::npos && equals > 0)
        m_pActiveSection->SetValue(line.substr(0, equals), line.substr(equals + 1));
}

std::string CIniFileContent::Render() const
{
    std::string text;
    for (const auto& section : m_sections) {
        text.append("[").append(section->name).append("]\r\n");
        section->keys.ForEach([&](std::string_view key, std::string_view value) {
            text.append(key).append("=").append(value).append("\r\n");
        });
    }
    return text;
}

} // namespace veltaris::velstdlib::util
