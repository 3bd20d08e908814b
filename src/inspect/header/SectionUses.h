// Which sections of a header are read, and as what.
#pragma once

#include "inspect/header/HeaderLines.h"
#include "inspect/header/KeyTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::inspect {

inline constexpr std::string_view dataSetName = "DataSet";
inline constexpr std::string_view viewListName = "SetView";
inline constexpr std::string_view processorListName = "ProcessorSet";

// A key that names a section.
struct SectionLink
{
    const HeaderLine* line = nullptr;  // of the key
    std::uint32_t section = noSection; // which stays when there is none of the name
    std::uint64_t group = 0, slot = 0; // of a channel
    bool isRepeated = false;           // the section was linked before
};

// Follows the links of a header, as far as the library does. The lines must outlive this. Does not change once it is
// made.
class CSectionUses
{
public:
    explicit CSectionUses(const CHeaderLines& lines);

    int Version() const { return m_version; } // of the data set
    std::uint32_t DataSetSection() const { return m_dataSet; }
    bool Has(std::uint32_t section, SectionUse use) const
    {
        return (m_uses[section] & static_cast<std::uint16_t>(use)) != 0;
    }
    bool IsUsed(std::uint32_t section) const { return m_uses[section] != 0; }

    const std::vector<SectionLink>& Channels() const { return m_channels; } // in the order of lines
    const std::vector<SectionLink>& Infos() const { return m_infos; }
    const std::vector<SectionLink>& Entries() const { return m_entries; } // of views and processors

    // Whether there is an entry with these indices, by the counts in the section of the key.
    bool IsBelowCount(const HeaderLine& line, const KnownKey& key) const;

private:
    // Marks the section and returns whether it was not marked so before.
    bool Mark(std::uint32_t section, SectionUse use);
    template <class Use>
    void ForEachLink(std::uint32_t section, SectionUse use, std::string_view pattern, Use follow) const;
    void FollowChannels();
    void FollowFlatInfo();
    void FollowInfoTree();
    void FollowViews();
    void FollowProcessors();

    const CHeaderLines& m_lines;
    std::vector<std::uint16_t> m_uses;
    std::uint32_t m_dataSet;
    int m_version;
    std::vector<SectionLink> m_channels, m_infos, m_entries;
};

} // namespace veltaris::inspect
