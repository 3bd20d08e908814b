#include "velflexlib/dataset/serialisers/InfoFlatSection.h"

#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/string/FoldedText.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr std::string_view headerBegin = "-- ";
constexpr std::string_view headerEnd = " --";

// Names that older programs gave to items.
const boost::unordered_flat_map<std::string_view, std::string_view>& LegacyNames()
{
    static const boost::unordered_flat_map<std::string_view, std::string_view> names{
        {"offsetx", "X-Pos"},        {"offsety", "Y-Pos"},
        {"offsetz", "Z-Plane"},      {"slopex", "X-Slope"},
        {"slopey", "Y-Slope"},       {"scansize", "Image size"},
        {"scantime", "Time/Line"},   {"XOffset", "X-Pos"},
        {"YOffset", "Y-Pos"},        {"ZOffset", "Z-Plane"},
        {"XSlope", "X-Slope"},       {"YSlope", "Y-Slope"},
        {"ScanRange", "Image size"}, {"Tip Potential", "Tip voltage"},
        {"Z-Pos", "Z-Plane"}};
    return names;
}

std::string_view CurrentName(std::string_view name)
{
    const auto found = LegacyNames().find(name);
    return found == LegacyNames().end() ? name : found->second;
}

bool IsHeaderLine(std::string_view key)
{
    return key.starts_with(headerBegin);
}

std::string HeaderKey(std::string_view groupName)
{
    return std::string(headerBegin).append(groupName).append(headerEnd);
}

constexpr bool ContinuesCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// Both ends are cut off, whatever characters they are; a key too short for that names no group.
std::string_view GroupNameOfHeader(std::string_view key)
{
    key.remove_prefix(headerBegin.size());
    for (std::size_t i = 0; i < headerEnd.size() && !key.empty(); ++i) {
        while (key.size() > 1 && ContinuesCharacter(key.back()))
            key.remove_suffix(1);
        key.remove_suffix(1);
    }
    return key;
}

// An item with which, in a list without header lines, a group begins.
struct FirstItem
{
    std::string_view name;
    bool isPrefix;
    int fileVersion; // 0: any
    std::string_view group;
};

constexpr std::array<FirstItem, 6> firstItems{{{"Image size", false, 0, "Scan"},
                                               {"Mod", false, 0, "Spec"},
                                               {"PointsAbort", false, 1, "Spec"},
                                               {"Measurement aborted", false, 2, "Spec"},
                                               {"GapVoltage", true, 1, "Approach"},
                                               {"Tip voltage", false, 2, "Approach"}}};
constexpr std::string_view groupOfOtherItems = "Tool";

std::string_view GroupBegunBy(std::string_view key, int fileVersion)
{
    const auto begins = [&](const FirstItem& item) {
        const bool applies = item.fileVersion == 0 || item.fileVersion == fileVersion;
        return applies && (item.isPrefix ? key.starts_with(item.name) : key == item.name);
    };
    const auto* const found = std::ranges::find_if(firstItems, begins);
    return found == firstItems.end() ? std::string_view() : found->group;
}

// Adds groups and items in the order of the list. There is one list, so no group that was there before is continued.
class CFlatInfoReader
{
public:
    CFlatInfoReader(CInfoSet& infoSet, int fileVersion) : m_infoSet(infoSet), m_fileVersion(fileVersion) {}

    void Read(std::string_view listedKey, std::string_view value)
    {
        const std::string_view key = CurrentName(listedKey);
        if (!m_hasHeaders)
            m_hasHeaders = IsHeaderLine(key);
        if (!*m_hasHeaders)
            Classify(key);
        if (IsHeaderLine(key))
            m_current = AddGroup(GroupNameOfHeader(key));
        else
            Current().AddSubItem(std::make_unique<CInfoSetItem>(std::string(key), std::string(value)));
    }

private:
    void Classify(std::string_view key)
    {
        if (const auto group = GroupBegunBy(key, m_fileVersion); !group.empty())
            m_current = FindOrAddGroup(group);
    }

    CInfoSetItem& Current()
    {
        if (!m_current)
            m_current = FindOrAddGroup(groupOfOtherItems);
        return *m_current;
    }

    CInfoSetItem* FindOrAddGroup(std::string_view name)
    {
        const auto found = m_sortedInto.find(name);
        return found == m_sortedInto.end() ? AddGroup(name) : found->second;
    }

    CInfoSetItem* AddGroup(std::string_view name)
    {
        auto group = std::make_unique<CInfoSetItem>(std::string(name));
        group->SetStoredFlat(true);
        CInfoSetItem* const added = group.get();
        m_infoSet.AddGroup(std::move(group));
        RememberFirst(*added);
        return added;
    }

    // The first group of each of the few names that items are sorted into.
    void RememberFirst(CInfoSetItem& group)
    {
        const auto isName = [&](const FirstItem& item) { return item.group == group.GetName(); };
        if (group.GetName() == groupOfOtherItems || std::ranges::any_of(firstItems, isName))
            m_sortedInto.try_emplace(group.GetName(), &group);
    }

    CInfoSet& m_infoSet;
    int m_fileVersion;
    std::optional<bool> m_hasHeaders; // unknown before the first line
    CInfoSetItem* m_current = nullptr;
    std::map<std::string, CInfoSetItem*, std::less<>> m_sortedInto;
};

// Whether the name of a group or an item keeps its meaning as a key. Other changes to it are the same in any form.
bool CanStandInKey(const std::string& name)
{
    return name.find('=') == std::string::npos;
}

bool ReadsAsItem(const CInfoSetItem& item, const CInfoLine& line)
{
    return !item.IsGroup() && !item.GetName().empty() && CanStandInKey(item.GetName()) && !IsHeaderLine(line.key) &&
           CurrentName(line.key) == line.key;
}

// Lines with different keys, whatever the case of their letters.
class CLineList
{
public:
    bool Add(CInfoLine line)
    {
        if (!line.value.empty() && !m_keys.insert(velstdlib::string::FoldedCopy(line.key)).second)
            return false;
        m_lines.push_back(std::move(line));
        return true;
    }

    std::vector<CInfoLine> TakeLines() { return std::move(m_lines); }

private:
    std::vector<CInfoLine> m_lines;
    std::unordered_set<std::string> m_keys;
};

bool AddGroupLines(CLineList& lines, const CInfoSetItem& group)
{
    const std::string& name = group.GetName();
    if (!CanStandInKey(name) || !lines.Add(WrittenLine(HeaderKey(name), group.GetValue())))
        return false;
    return std::ranges::all_of(group.GetSubItems(), [&](const auto& item) {
        CInfoLine line = WrittenLine(item->GetName(), item->GetValue());
        return ReadsAsItem(*item, line) && lines.Add(std::move(line));
    });
}

} // namespace

void LoadFlatInfo(CInfoSet& infoSet, const CVELKeyToValueList& keys, int fileVersion, const std::atomic<bool>& abort)
{
    CFlatInfoReader reader(infoSet, fileVersion);
    keys.ForEach([&](std::string_view key, std::string_view value) {
        if (!abort)
            reader.Read(key, value);
    });
}

std::optional<std::vector<CInfoLine>> FlatInfoLines(const CInfoGroups& groups)
{
    CLineList lines;
    const auto add = [&](const CInfoSetItem* group) { return AddGroupLines(lines, *group); };
    return std::ranges::all_of(groups, add) ? std::optional(lines.TakeLines()) : std::nullopt;
}

} // namespace veltaris::velflexlib::dataset
