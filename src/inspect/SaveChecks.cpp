#include "inspect/ContentChecks.h"

#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velflexlib/dataset/serialisers/InfoSetToVELConfig.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/VELConfig.h"

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

namespace veltaris::inspect {

namespace dataset = velflexlib::dataset;
using dataset::CInfoSet;
using dataset::CInfoSetItem;

namespace {

using Items = std::vector<const CInfoSetItem*>;

// Groups come before items, and flat groups before trees, as they are read.
Items InReadingOrder(const std::vector<std::unique_ptr<CInfoSetItem>>& items, bool (*isFirst)(const CInfoSetItem&))
{
    Items ordered;
    for (const auto& item : items)
        ordered.push_back(item.get());
    std::stable_partition(ordered.begin(), ordered.end(), [&](const CInfoSetItem* item) { return isFirst(*item); });
    return ordered;
}

bool IsFlat(const CInfoSetItem& group)
{
    return group.IsStoredFlat();
}

bool IsGroup(const CInfoSetItem& item)
{
    return item.IsGroup();
}

// A name or a number behind it that tells it from another.
bool IsNumbered(const std::string& saved, const std::string& name)
{
    return saved.size() > name.size() + 1 && saved.starts_with(name) && saved[name.size()] == '_';
}

// Walks two trees side by side, without recursion, since trees may be deep.
class CInfoComparison
{
public:
    CInfoComparison(const CHeaderLines& lines, CFindingList& findings) : m_lines(lines), m_findings(findings) {}

    void Compare(const CInfoSet& before, const CInfoSet& after, std::uint32_t dataSet)
    {
        Match(InReadingOrder(before.GetGroups(), IsFlat), InReadingOrder(after.GetGroups(), IsFlat), dataSet,
              std::string(m_lines.SectionName(dataSet)));
        while (!m_waiting.empty()) {
            const Pair next = std::move(m_waiting.back());
            m_waiting.pop_back();
            const std::uint32_t section = next.isFlat ? next.section : m_lines.FindSection(next.path);
            Match(InReadingOrder(next.before->GetSubItems(), IsGroup),
                  InReadingOrder(next.after->GetSubItems(), IsGroup), section, next.path);
        }
    }

    std::uint32_t flatSection = noSection;

private:
    struct Pair
    {
        const CInfoSetItem* before;
        const CInfoSetItem* after;
        std::uint32_t section;
        std::string path;
        bool isFlat;
    };

    void Match(const Items& before, const Items& after, std::uint32_t section, const std::string& path)
    {
        for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
            CompareTexts(*before[i], *after[i], section);
            if (before[i]->IsGroup() && after[i]->IsGroup())
                m_waiting.push_back({before[i], after[i], before[i]->IsStoredFlat() ? flatSection : noSection,
                                     path + "\\" + before[i]->GetName(), before[i]->IsStoredFlat()});
        }
    }

    void CompareTexts(const CInfoSetItem& before, const CInfoSetItem& after, std::uint32_t section)
    {
        const std::string& name = before.GetName();
        if (after.GetName() != name)
            m_findings.AddKey(IsNumbered(after.GetName(), name) ? RuleId::NameCollides : RuleId::TextChanged, section,
                              name, {after.GetName(), Quoted(name) + " is saved as " + Quoted(after.GetName()) + "."});
        if (after.GetValue() != before.GetValue())
            m_findings.AddKey(
                RuleId::TextChanged, section, name,
                {after.GetValue(), "The value of " + Quoted(name) + " is saved as " + Quoted(after.GetValue()) + "."});
    }

    const CHeaderLines& m_lines;
    CFindingList& m_findings;
    std::vector<Pair> m_waiting;
};

std::uint32_t FlatSection(const CHeaderLines& lines, const CSectionUses& uses)
{
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (uses.Has(section, SectionUse::FlatInfo))
            return section;
    }
    return noSection;
}

void SaveAndReadBack(const dataset::CDataSet& dataSet, CInfoSet& readBack)
{
    const std::atomic<bool> abort = false;
    velstdlib::util::CVELOXDConfig document;
    // Saving does not change an information set, although it is not declared so.
    auto& infoSet = const_cast<CInfoSet&>(dataSet.GetInfoSet()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    dataset::CInfoSetToVELConfig(infoSet, document, std::string(dataSetName)).Save();
    dataset::CInfoSetToVELConfig reader(readBack, document, std::string(dataSetName));
    reader.LoadFlat(dataset::groupsVersion, abort);
    reader.LoadTree(abort);
}

bool HasUnwritable(std::string_view text)
{
    return text.find_first_of(std::string_view("\r\0", 2)) != std::string_view::npos;
}

} // namespace

void CheckVersion(const CSectionUses& uses, CFindingList& findings)
{
    if (uses.Version() == dataset::framesVersion && uses.DataSetSection() != noSection)
        findings.AddKey(RuleId::VersionRaised, uses.DataSetSection(), "Version",
                        {"2", "The data set has version 1, and is saved as version 2."});
}

void CheckTexts(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    for (const HeaderLine& line : lines.Lines()) {
        const bool isRead = line.section != noSection && line.kind == HeaderLine::Kind::Key && !line.isReplaced;
        const bool isWritten =
            isRead && (uses.Has(line.section, SectionUse::DataSet) || uses.Has(line.section, SectionUse::Channel));
        if (isWritten && HasUnwritable(lines.Value(line)))
            findings.AddLine(RuleId::TextChanged, line,
                             {"blanks", Quoted(lines.Key(line)) + " has characters that become blanks in a save."});
    }
}

void CheckInformation(const dataset::CDataSet& dataSet, const CHeaderLines& lines, const CSectionUses& uses,
                      CFindingList& findings)
try {
    if (dataSet.GetInfoSet().GetGroups().empty())
        return;
    CInfoSet readBack;
    SaveAndReadBack(dataSet, readBack);
    const auto& before = dataSet.GetInfoSet().GetGroups();
    const auto& after = readBack.GetGroups();
    const std::uint32_t flat = FlatSection(lines, uses);
    const auto isStoredFlat = [](const auto& group) { return group->IsStoredFlat(); };
    if (std::ranges::any_of(before, isStoredFlat) && std::ranges::none_of(after, isStoredFlat))
        findings.AddSection(RuleId::ListBecomesTrees, flat,
                            {"trees", "The flat list of information is saved as trees, since it could not hold all "
                                      "names and values as they are."});
    CInfoComparison comparison(lines, findings);
    comparison.flatSection = flat;
    comparison.Compare(dataSet.GetInfoSet(), readBack, uses.DataSetSection());
} catch (const velstdlib::util::CVELFileException&) {
    findings.AddSection(RuleId::TextChanged, uses.DataSetSection(),
                        {"nothing", "The information takes more text than a file may have, and cannot be saved."});
}

} // namespace veltaris::inspect
