// An INI-like text: named sections of keys and values. Every reader and writer of headers works on the active section.
#pragma once

#include "velstdlib/util/header/FoldedIndex.h"
#include "velstdlib/util/header/TextStore.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <boost/assert/source_location.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Section names are found without regard to ASCII case, and written in the spelling and the order in which they were
// created. Sections are never removed one by one, and references to one are valid until Clear or Parse is called. All
// names and texts are views into one store, which goes with the document. Not thread-safe.
class CIniFileContent
{
public:
    CIniFileContent() : m_index(*this) {}
    CIniFileContent(const CIniFileContent&) = delete;
    CIniFileContent& operator=(const CIniFileContent&) = delete;
    ~CIniFileContent() = default;

    // Makes the section of this name active; without one, none is active and the result is false.
    bool SelectSection(std::string_view name);

    // The same, but creates the section at the end when there is none. Throws std::runtime_error
    // "Empty section name not allowed".
    void SelectCreateSection(std::string_view name);

    // Throw std::runtime_error "m_pActiveSection == nullptr" when no section is active.
    CVELKeyToValueList& GetActiveSection();
    const CVELKeyToValueList& GetActiveSection() const;

    // The name by which the section was selected; empty when none is active.
    const std::string& GetActiveSectionName() const { return m_activeSectionName; }

    void Clear();

    // Replaces the content by that of `text`, whose lines end with line feeds: what follows the last one is ignored,
    // as are blanks at the end of a line, lines that are neither section nor key, and keys before the first section.
    // Stops before the next line when `abort` turns true. When it throws, the sections read so far remain.
    void Parse(std::string text, const std::atomic<bool>& abort);

    // The document as a text, with CR LF at the end of each line.
    std::string Render() const;

private:
    friend class CFoldedIndex<CIniFileContent>;

    struct Section
    {
        Section(const CFoldedName& sectionName, CTextStore& texts)
            : name(texts.Keep(sectionName.text)), hash(sectionName.hash), keys(texts)
        {
        }

        std::string_view name;
        std::uint32_t hash;
        CVELKeyToValueList keys;

        std::string_view Name() const { return name; }
        std::uint32_t NameHash() const { return hash; }
        static constexpr bool IsTombstone() { return false; } // no section is ever removed
    };

    std::size_t Size() const { return m_sections.size(); }
    const Section& At(std::size_t position) const { return m_sections[position]; }
    CVELKeyToValueList& CheckedSection(const boost::source_location& where) const;
    std::size_t AppendSection(const CFoldedName& name);
    void Activate(std::string_view name, std::optional<std::size_t> position);
    void ParseLine(std::string_view line);

    CTextStore m_texts;
    std::string m_activeSectionName;
    CVELKeyToValueList* m_pActiveSection = nullptr;
    std::deque<Section> m_sections; // which does not move its elements
    CFoldedIndex<CIniFileContent> m_index;
};

} // namespace veltaris::velstdlib::util
