#include "inspect/OpeningFailure.h"

#include "velflexlib/dataset/processors/Processors.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/VELException.h"

#include <boost/exception/get_error_info.hpp>

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <system_error>

namespace veltaris::inspect {

namespace dataset = velflexlib::dataset;
namespace util = velstdlib::util;

namespace {

constexpr const char* refusal = "the file does not open";

// The codes that a view may have, from 0.
struct CodeKey
{
    std::string_view key;
    int highest;
};
constexpr std::array<CodeKey, 4> codeKeys{{{"ViewTyp", 6}, {"LineOp", 5}, {"ViewMode", 1}, {"GraphMode", 2}}};

// "operator,name,value", of which the operator must begin with a number if the others are there.
bool IsUnreadableParameter(std::string_view text)
try {
    const auto first = text.find(',');
    const auto second = first == std::string_view::npos ? first : text.find(',', first + 1);
    if (second != std::string_view::npos)
        velstdlib::string::ParseLeadingInt(text.substr(0, first));
    return false;
} catch (const std::logic_error&) {
    return true;
}

const HeaderLine* FindUnreadableView(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section)
{
    for (const auto& [key, highest] : codeKeys) {
        const int code = lines.IntOf(section, key, 0);
        if (code < 0 || code > highest)
            return lines.FindKey(section, key);
    }
    const HeaderLine* const range = lines.FindKey(section, "ZRange");
    if (range && lines.Value(*range).find(',') == std::string_view::npos)
        return range;
    for (const std::uint32_t position : lines.LinesOf(section)) {
        const HeaderLine& line = lines.Lines()[position];
        const auto key = FindKeySpec(SectionUse::View, uses.Version(), lines.Key(line));
        const bool counts = !line.isReplaced && key && key->spec->pattern == "Par#" && uses.IsBelowCount(line, *key);
        if (counts && IsUnreadableParameter(lines.Value(line)))
            return &line;
    }
    return nullptr;
}

bool IsKnownProcessor(std::string_view guid)
{
    const std::array known{dataset::CProcessorSlope::kind.guid, dataset::CProcessorMaxAdhesion::kind.guid,
                           dataset::CProcessorIndentation::kind.guid};
    return std::ranges::find(known, guid) != known.end();
}

// The line that makes a view or a processor unreadable, or null.
const HeaderLine* FindUnreadableEntry(const CHeaderLines& lines, const CSectionUses& uses)
{
    for (const SectionLink& link : uses.Entries()) {
        if (link.section == noSection)
            continue;
        const bool isProcessor = uses.Has(link.line->section, SectionUse::ProcessorList);
        const HeaderLine* const guid = lines.FindKey(link.section, "GUID");
        if (isProcessor && guid && !IsKnownProcessor(lines.Value(*guid)))
            return guid;
        const HeaderLine* const view = isProcessor ? nullptr : FindUnreadableView(lines, uses, link.section);
        if (view)
            return view;
    }
    return nullptr;
}

// The first section that has this version and must not.
std::uint32_t FindVersion(const CHeaderLines& lines, const CSectionUses& uses, int version)
{
    const auto has = [&](std::uint32_t section, SectionUse use) {
        return uses.Has(section, use) && lines.IntOf(section, "Version", 1) == version;
    };
    const bool isDataSets = version != dataset::framesVersion && version != dataset::groupsVersion;
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if ((isDataSets && has(section, SectionUse::DataSet)) || (version > 3 && has(section, SectionUse::Channel)))
            return section;
    }
    const std::uint32_t views = lines.FindSection(viewListName);
    return views != noSection && has(views, SectionUse::ViewList) ? views : noSection;
}

std::uint32_t AddVersion(const util::CVELFileVersionException& e, const CHeaderLines& lines, const CSectionUses& uses,
                         CFindingList& findings)
{
    const auto* const version = boost::get_error_info<util::errinfo_fileversion>(e);
    const std::uint32_t section = FindVersion(lines, uses, version ? *version : 0);
    findings.AddKey(RuleId::UnknownVersion, section, "Version",
                    {refusal, "The section " + Quoted(lines.SectionName(section)) + " has version " +
                                  std::to_string(version ? *version : 0) + ", which the library does not know."});
    return section;
}

void AddDataSetMissing(const CHeaderLines& lines, CFindingList& findings)
{
    const bool hasSections = lines.SectionCount() > 0;
    findings.AddSection(RuleId::DataSetMissing, hasSections ? 0 : noSection,
                        {refusal, hasSections ? "The header has no section \"DataSet\"; its first one is " +
                                                    Quoted(lines.SectionName(0)) + "."
                                              : "The header has no sections, so this is not an .oxd file."});
}

// Of a number that the library refuses as content.
std::string Judged(const CHeaderLines& lines, std::uint32_t section, std::string_view key)
{
    const std::string_view value = lines.ValueOf(section, key);
    if (value.empty())
        return " is missing, and no file is without it.";
    return " is " + Quoted(value) +
           (lines.IntOf(section, key, 0) > 0 ? ", which is more than the rest of the file can back up."
                                             : ", which no file can have.");
}

std::uint32_t AddBadContent(const util::CVELFileBadContentException& e, const CHeaderLines& lines,
                            CFindingList& findings)
{
    const auto* const section = boost::get_error_info<util::errinfo_section>(e);
    const auto* const key = boost::get_error_info<util::errinfo_key>(e);
    const std::uint32_t found = section ? lines.FindSection(*section) : noSection;
    const std::string where = Quoted(key ? *key : "") + " in section " + Quoted(section ? *section : "");
    findings.AddKey(RuleId::BadContent, found, key ? *key : "",
                    {refusal, where + Judged(lines, found, key ? *key : "")});
    return found;
}

void AddUnreadableView(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    if (const HeaderLine* const line = FindUnreadableEntry(lines, uses))
        findings.AddLine(RuleId::UnreadableView, *line,
                         {refusal, Quoted(lines.Key(*line)) + " in section " +
                                       Quoted(lines.SectionName(line->section)) + " is " + Quoted(lines.Value(*line)) +
                                       ", which is nothing that a view or processor may have."});
    else
        findings.AddKey(RuleId::UnreadableView, noSection, {}, {refusal, "A view or a processor cannot be read."});
}

} // namespace

void AddUnreadableText(const std::exception_ptr& failure, const CHeaderLines& lines, CFindingList& findings)
try {
    std::rethrow_exception(failure);
} catch (const std::system_error&) {
    throw;
} catch (const util::CVELFileBadContentException&) {
    findings.AddPlace(RuleId::HeaderTooLong, 0, {}, {refusal, "The header is longer than any that the library reads."});
} catch (const std::runtime_error&) {
    if (lines.GetEncoding() == CHeaderLines::Encoding::Wide)
        return findings.AddPlace(RuleId::WideEncoding, 0, {},
                                 {refusal, "The file begins with the byte-order mark of UTF-16 or UTF-32."});
    const std::uint32_t section = lines.FindSection({});
    findings.AddSection(RuleId::SectionWithoutName, section, {refusal, "A section has no name."});
}

std::uint32_t AddUnreadableSection(const std::exception_ptr& failure, const CHeaderLines& lines,
                                   const CSectionUses& uses, CFindingList& findings)
try {
    std::rethrow_exception(failure);
} catch (const util::CVELFileVersionException& e) {
    return AddVersion(e, lines, uses, findings);
} catch (const util::CVELFileBadContentException& e) {
    if (uses.DataSetSection() != noSection)
        return AddBadContent(e, lines, findings);
    AddDataSetMissing(lines, findings);
    return noSection;
} catch (const std::logic_error&) {
    AddUnreadableView(lines, uses, findings);
    return noSection;
}

} // namespace veltaris::inspect
