#include "velflexlib/dataset/serialisers/InfoTreeSections.h"

#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/Log.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/IndexedKey.h"
#include "velstdlib/util/header/ListCount.h"

#include <boost/current_function.hpp>

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::string::FoldedCopy;
using velstdlib::util::CHeaderSection;
using velstdlib::util::CIniFileContent;
using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;
using velstdlib::util::ReadListCount;

namespace {

constexpr std::string_view topLevelLinks = "InfoSet";
constexpr std::string_view subGroupLinks = "SubSection";
constexpr std::string_view countSuffix = "Count";

std::string PathBelow(const std::string& section, std::string_view name)
{
    return (section + "\\").append(name);
}

std::string CountKey(std::string_view prefix)
{
    return std::string(prefix).append(countSuffix);
}

std::string LinkKey(std::string_view prefix, std::uint64_t link)
{
    return std::string(prefix).append(std::to_string(link));
}

// Names that the numbered links of a section give, in order. However many links are missing, they all name the same
// group, the one without a name: it stands where the first of them is missing.
class CLinks
{
public:
    CLinks(const CHeaderSection& section, std::string_view prefix)
        : m_prefix(prefix),
          m_count(ReadListCount<int>(section, CountKey(prefix), velstdlib::util::LimitByKeys(section.keys))),
          m_names(velstdlib::util::ReadNumberedValues(section.keys, prefix, m_count))
    {
        if (m_names.size() < m_count)
            m_names.emplace(FirstMissing(), std::string_view());
    }

    const std::map<std::uint64_t, std::string_view>& GetNames() const { return m_names; }
    std::string KeyOf(std::uint64_t link) const { return LinkKey(m_prefix, link); }

    // Whether a key of the section belongs to the links.
    bool Owns(std::string_view key) const
    {
        const auto link = velstdlib::util::SplitIndexedKey(key, m_prefix);
        const bool isLink = link && link->rest.empty() && link->index < m_count;
        return isLink || velstdlib::string::EqualFolded(key, CountKey(m_prefix));
    }

private:
    std::uint64_t FirstMissing() const
    {
        std::uint64_t expected = 0;
        for (const auto& [index, name] : m_names) {
            if (index != expected)
                break;
            ++expected;
        }
        return expected;
    }

    std::string_view m_prefix;
    std::uint64_t m_count;
    std::map<std::uint64_t, std::string_view> m_names;
};

// Loads each section once, however often it is linked, so that links can neither loop nor double anything.
class CTreeLoader
{
public:
    CTreeLoader(CInfoSet& infoSet, CVELConfig& document, const std::atomic<bool>& abort)
        : m_infoSet(infoSet), m_document(document), m_abort(abort),
          m_missingBytes(document.GetHeaderBytes() + velstdlib::util::limits::sharedSectionBytes)
    {
    }

    void Load(const std::string& section)
    {
        const CLinks links(m_document.SelectCreateSection(section), topLevelLinks);
        LoadGroups(links, section, [&](auto group) { m_infoSet.AddGroup(std::move(group)); });
        while (!m_waiting.empty() && !m_abort) {
            const Waiting next = std::move(m_waiting.back());
            m_waiting.pop_back();
            if (m_loaded.insert(next.keys).second)
                LoadGroup(next);
        }
    }

private:
    struct Waiting
    {
        CInfoSetItem* group;
        const CVELKeyToValueList* keys;
        std::string section;
    };

    template <class Add>
    void LoadGroups(const CLinks& links, const std::string& section, Add add)
    {
        const auto alreadyWaiting = static_cast<std::ptrdiff_t>(m_waiting.size());
        std::unordered_set<std::string_view> added;
        for (const auto& [index, name] : links.GetNames()) {
            if (m_abort || !added.insert(name).second)
                continue;
            auto group = std::make_unique<CInfoSetItem>(std::string(name));
            if (!LoadLater(*group, PathBelow(section, name)))
                velstdlib::util::ThrowBadContent(m_document.GetFileName(), {section, links.KeyOf(index)});
            add(std::move(group));
        }
        std::reverse(m_waiting.begin() + alreadyWaiting, m_waiting.end());
    }

    // A group whose section is missing has nothing in it. No written file has such links: they may not cost more than
    // the header does, however long the paths are that they make. False when they do.
    bool LoadLater(CInfoSetItem& group, std::string section)
    {
        if (const auto found = m_document.SelectSection(section)) {
            m_waiting.push_back({&group, &found->keys, std::move(section)});
            return true;
        }
        if (section.size() > m_missingBytes)
            return false;
        m_missingBytes -= section.size();
        return true;
    }

    void LoadGroup(const Waiting& next)
    {
        const CLinks links({*next.keys, next.section, m_document.GetFileName()}, subGroupLinks);
        const auto add = [&](std::unique_ptr<CInfoSetItem> item) {
            item->SetOwner(&m_infoSet);
            next.group->AddSubItem(std::move(item));
        };
        LoadGroups(links, next.section, add);
        next.keys->ForEach([&](std::string_view key, std::string_view value) {
            if (!m_abort && !links.Owns(key))
                add(std::make_unique<CInfoSetItem>(std::string(key), std::string(value)));
        });
    }

    CInfoSet& m_infoSet;
    CVELConfig& m_document;
    const std::atomic<bool>& m_abort;
    std::uint64_t m_missingBytes; // that paths to missing sections may still have
    std::unordered_set<const CVELKeyToValueList*> m_loaded;
    std::vector<Waiting> m_waiting; // the next one last
};

// Gives each name, or the first of its numbered forms that is not taken yet.
class CUniqueNames
{
public:
    // `full` makes the text that must be unique of a form of the name.
    template <class Full>
    std::string Take(const std::string& name, Full full)
    {
        if (m_taken.insert(FoldedCopy(full(name))).second)
            return name;
        std::uint64_t& suffix = m_suffixes.try_emplace(FoldedCopy(full(name)), 2).first->second;
        std::string form;
        do
            form = name + "_" + std::to_string(suffix++);
        while (!m_taken.insert(FoldedCopy(full(form))).second);
        velstdlib::util::LogWarning(BOOST_CURRENT_FUNCTION, "A name was changed to tell it from another: " + form);
        return form;
    }

private:
    std::unordered_set<std::string> m_taken;
    std::unordered_map<std::string, std::uint64_t> m_suffixes; // the next one, so that many equal names stay linear
};

class CTreeSaver
{
public:
    explicit CTreeSaver(CVELConfig& document) : m_document(document), m_content(document.GetContent()) {}

    void Save(const CInfoGroups& groups, const std::string& section)
    {
        SaveLinks(groups, section, topLevelLinks);
        while (!m_waiting.empty()) {
            const auto [group, groupSection] = std::move(m_waiting.back());
            m_waiting.pop_back();
            SaveGroup(*group, groupSection);
        }
    }

private:
    void SaveLinks(const CInfoGroups& groups, const std::string& section, std::string_view prefix)
    {
        m_content.SelectCreateSection(section);
        CVELKeyToValueList& keys = m_content.GetActiveSection();
        keys.SetValue(CountKey(prefix), groups.size());
        std::vector<std::pair<const CInfoSetItem*, std::string>> linked;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            const std::string name = SectionName(*groups[i], section);
            keys.SetValue(LinkKey(prefix, i), name);
            linked.emplace_back(groups[i], PathBelow(section, name));
            CountText(linked.back().second.size());
        }
        m_waiting.insert(m_waiting.end(), std::make_move_iterator(linked.rbegin()),
                         std::make_move_iterator(linked.rend()));
    }

    // Paths of deep trees add up long before a header is made of them.
    void CountText(std::uint64_t bytes)
    {
        m_textBytes += bytes;
        if (m_textBytes > velstdlib::util::limits::headerBytes)
            velstdlib::util::ThrowFileSave(m_document.GetFileName(), velstdlib::string::TextId::TooMuchTextForFile);
    }

    std::string SectionName(const CInfoSetItem& group, const std::string& section)
    {
        const std::string clean = velstdlib::util::CleanHeaderText(group.GetName());
        const std::string name(velstdlib::string::WithoutTrailingSpace(clean));
        if (name.size() < clean.size())
            velstdlib::util::LogChangedText(BOOST_CURRENT_FUNCTION, name);
        return m_sections.Take(name, [&](const std::string& form) { return PathBelow(section, form); });
    }

    void SaveGroup(const CInfoSetItem& group, const std::string& section)
    {
        CInfoGroups subGroups;
        for (const auto& item : group.GetSubItems()) {
            if (item->IsGroup())
                subGroups.push_back(item.get());
        }
        SaveLinks(subGroups, section, subGroupLinks);
        SaveItems(group, subGroups.size());
    }

    // The group's section is the active one, and holds its links only. The keys of links are theirs also where a group
    // without a name has none.
    void SaveItems(const CInfoSetItem& group, std::size_t linkCount)
    {
        CVELKeyToValueList& keys = m_content.GetActiveSection();
        const auto asItIs = [](const std::string& form) { return form; };
        CUniqueNames names;
        names.Take(CountKey(subGroupLinks), asItIs);
        for (std::size_t link = 0; link < linkCount; ++link)
            names.Take(LinkKey(subGroupLinks, link), asItIs);
        for (const auto& item : group.GetSubItems()) {
            const CInfoLine line = item->IsGroup() ? CInfoLine() : WrittenLine(item->GetName(), item->GetValue());
            if (!line.value.empty())
                keys.SetValue(names.Take(line.key, asItIs), line.value);
        }
    }

    const CVELConfig& m_document;
    CIniFileContent& m_content;
    std::uint64_t m_textBytes = 0;
    CUniqueNames m_sections;
    std::vector<std::pair<const CInfoSetItem*, std::string>> m_waiting; // the next one last
};

} // namespace

void LoadInfoTrees(CInfoSet& infoSet, CVELConfig& document, const std::string& section, const std::atomic<bool>& abort)
{
    CTreeLoader(infoSet, document, abort).Load(section);
}

void SaveInfoTrees(const CInfoGroups& groups, CVELConfig& document, const std::string& section)
{
    CTreeSaver(document).Save(groups, section);
}

} // namespace veltaris::velflexlib::dataset
