#include "velflexlib/dataset/InfoFlatSection.h"

#include "velflexlib/dataset/InfoLine.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr std::string_view headerBegin = "-- ";
constexpr std::string_view headerEnd = " --";

// Names that older programs gave to items.
const std::map<std::string_view, std::string_view>& LegacyNames()
{
    static const std::map<std::string_view, std::string_view> names{
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

// Both ends are cut off, whatever they are; a key too short for that names no group.
std::string_view GroupNameOfHeader(std::string_view key)
{
    const std::size_t ends = headerBegin.size() + headerEnd.size();
    return key.size() < ends ? std::string_view() : key.substr(headerBegin.size(), key.size() - ends);
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

// Adds groups and items in the order of the list.
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

    // Only groups of this list: trees may have some of the same names.
    CInfoSetItem* FindOrAddGroup(std::string_view name)
    {
        for (const auto& group : m_infoSet.GetGroups()) {
            if (group->IsStoredFlat() && group->GetName() == name)
                return group.get();
        }
        return AddGroup(name);
    }

    CInfoSetItem* AddGroup(std::string_view name)
    {
        auto group = std::make_unique<CInfoSetItem>(std::string(name));
        group->SetStoredFlat(true);
        CInfoSetItem* const added = group.get();
        m_infoSet.AddGroup(std::move(group));
        return added;
    }

    CInfoSet& m_infoSet;
    int m_fileVersion;
    std::optional<bool> m_hasHeaders; // unknown before the first line
    CInfoSetItem* m_current = nullptr;
};

bool FitsAsItem(const CInfoSetItem& item)
{
    const std::string& name = item.GetName();
    return !item.IsGroup() && !name.empty() && name.find('=') == std::string::npos && !IsHeaderLine(name) &&
           CurrentName(name) == name;
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

bool FitsFlatInfo(const CInfoGroups& groups)
{
    std::set<std::string> keys;
    const auto isNew = [&](const CInfoLine& line) {
        return keys.insert(velstdlib::string::FoldedCopy(line.key)).second;
    };
    for (const CInfoSetItem* group : groups) {
        if (group->GetName().find('=') != std::string::npos || !isNew({HeaderKey(group->GetName()), {}}))
            return false;
        for (const auto& item : group->GetSubItems()) {
            if (!FitsAsItem(*item) || !isNew(WrittenLine(item->GetName(), item->GetValue())))
                return false;
        }
    }
    return true;
}

void SaveFlatInfo(const CInfoGroups& groups, CVELKeyToValueList& keys)
{
    for (const CInfoSetItem* group : groups) {
        const CInfoLine header = WrittenLine(HeaderKey(group->GetName()), group->GetValue());
        keys.SetValue(header.key, header.value);
        for (const auto& item : group->GetSubItems()) {
            const CInfoLine line = WrittenLine(item->GetName(), item->GetValue());
            keys.SetValue(line.key, line.value);
        }
    }
}

} // namespace veltaris::velflexlib::dataset
