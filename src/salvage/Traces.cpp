#include "salvage/Traces.h"

#include "inspect/HeaderChecks.h"
#include "inspect/SizeDoubts.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace veltaris::salvage {

using inspect::CHeaderLines;
using inspect::CSectionUses;
using inspect::HeaderLine;
using inspect::SectionLink;

namespace {

// What a sound file may have as well: old encodings, what a save drops or rounds, odd axes, and keys of axes that
// another program left out; where one was damaged, there is a trace of it.
bool IsHarmless(inspect::RuleId rule)
{
    using enum inspect::RuleId;
    constexpr std::array harmless{NotUtf8,         ByteOrderMark,  KeyWithoutValue,    InfoLinkDangling,
                                  EntrySkipped,    InfoNotLinked,  CurrentLineOutside, AxisKeyMissing,
                                  AxisNotFinite,   AxisRangeZero,  SignalRangeZero,    AxisReversed,
                                  ViewsDropped,    SectionDropped, ProcessorsDropped,  NameCollides,
                                  TextChanged,     NumberRounded,  BitsWidened,        VersionRaised,
                                  ListBecomesTrees};
    return std::ranges::find(harmless, rule) != harmless.end();
}

bool IsOfChannel(const CSectionUses& uses, std::uint32_t section)
{
    return uses.Has(section, inspect::SectionUse::Channel);
}

// Written files name the sections of channels by group and slot.
bool IsNamedByPlace(const CHeaderLines& lines, const SectionLink& link)
{
    const auto named = inspect::MatchKey(lines.Value(*link.line), "DataSet-#:#");
    return named && named->first == link.group && named->second == link.slot;
}

// Other sections may lack some, and are sound; but of these nobody can tell which key was lost.
bool HasAllSizes(const CHeaderLines& lines, std::uint32_t section)
{
    return lines.FindKey(section, "Points") && lines.FindKey(section, "Lines") && lines.FindKey(section, "SaveBits");
}

bool IsRepeatedSize(const CHeaderLines& lines, const CSectionUses& uses, const HeaderLine& line)
{
    const auto key = inspect::FindKeySpec(inspect::SectionUse::Channel, uses.Version(), lines.Key(line));
    return line.repeats && key &&
           (key->spec->kind == inspect::ValueKind::Size || key->spec->kind == inspect::ValueKind::Version);
}

} // namespace

bool IsUnlisted(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section)
{
    return !uses.IsUsed(section) && inspect::LooksLikeChannel(lines, section);
}

bool HasUnlisted(const CHeaderLines& lines, const CSectionUses& uses)
{
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (IsUnlisted(lines, uses, section))
            return true;
    }
    return false;
}

bool HasNoTraces(const CHeaderLines& lines, const CSectionUses& uses, const inspect::Inspection& inspection)
{
    const auto isHarmless = [](const inspect::Finding& finding) { return IsHarmless(finding.rule->number); };
    if (!std::ranges::all_of(inspection.findings, isHarmless))
        return false;
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (IsOfChannel(uses, section) &&
            (inspect::FindSizeDoubts(lines, uses, section).doubt != inspect::Doubt::None ||
             FindLineDoubt(lines, uses, section, true) != LineDoubt::None || !HasAllSizes(lines, section)))
            return false;
    }
    return IsOrderCertain(lines, uses);
}

bool IsOrderCertain(const CHeaderLines& lines, const CSectionUses& uses)
{
    if (HasUnlisted(lines, uses) && std::ranges::any_of(uses.Channels(), &SectionLink::isRepeated))
        return false;
    const auto repeats = [&](std::uint32_t position) { return lines.Lines()[position].repeats; };
    if (std::ranges::any_of(lines.LinesOf(uses.DataSetSection()), repeats))
        return false;
    // Frames must have all of their channels, so that none can take the place of another.
    if (uses.Version() == velflexlib::dataset::framesVersion)
        return true;
    const auto isNamedByPlace = [&](const SectionLink& link) { return IsNamedByPlace(lines, link); };
    const auto place = [](const SectionLink& link) { return std::pair(link.group, link.slot); };
    return std::ranges::all_of(uses.Channels(), isNamedByPlace) || std::ranges::is_sorted(uses.Channels(), {}, place);
}

LineDoubt FindLineDoubt(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section, bool fits)
{
    std::set<std::uint64_t> sized; // lines that say how many points they have
    bool hasEmptyLine = false;
    for (const std::uint32_t position : lines.LinesOf(section)) {
        const HeaderLine& line = lines.Lines()[position];
        if (IsRepeatedSize(lines, uses, line))
            return LineDoubt::OwnSize;
        const auto own = inspect::MatchKey(lines.Key(line), "LineDim#Points");
        if (!own || line.kind != HeaderLine::Kind::Key)
            continue;
        sized.insert(own->first);
        hasEmptyLine = hasEmptyLine || lines.IntOf(section, lines.Key(line), 1) == 0;
    }
    if (lines.IntOf(section, "Version", 1) != inspect::lineAxesVersion || (!hasEmptyLine && (fits || !sized.empty())))
        return LineDoubt::None;
    const auto lineCount = static_cast<std::uint64_t>(std::max(lines.IntOf(section, "Lines", 0), 0));
    const bool areAllSized = sized.size() == lineCount && (sized.empty() || *sized.rbegin() < lineCount);
    return areAllSized ? LineDoubt::None : LineDoubt::OwnLines;
}

} // namespace veltaris::salvage
