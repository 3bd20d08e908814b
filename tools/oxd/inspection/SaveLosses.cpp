#include "oxd/inspection/SaveLosses.h"

#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"

#include <algorithm>
#include <array>

namespace oxd {

namespace {

using inspect::RuleId;
using Findings = std::vector<const inspect::Finding*>;

// What the findings of a rule come to: "a save " and `does`, how many, and what is counted. Without that, once is all
// there is to say.
struct LossKind
{
    RuleId rule;
    std::string_view does;
    std::string_view one = {};
    std::string_view many = {};
};

constexpr std::array lossKinds{
    LossKind{RuleId::ViewsDropped, "drops", "section of views", "sections of views"},
    LossKind{RuleId::ProcessorsDropped, "drops", "section of processors", "sections of processors"},
    LossKind{RuleId::SectionDropped, "drops", "unknown section", "unknown sections"},
    LossKind{RuleId::KeyDropped, "drops", "unknown key", "unknown keys"},
    LossKind{RuleId::InfoNotLinked, "drops", "section of information that nothing links",
             "sections of information that nothing links"},
    LossKind{RuleId::ChannelNotListed, "drops", "section of a channel that nothing names",
             "sections of channels that nothing names"},
    LossKind{RuleId::KeyBeyondCount, "drops or renames", "key beyond its count", "keys beyond their counts"},
    LossKind{RuleId::LineOutsideSection, "drops", "line outside any section", "lines outside any section"},
    LossKind{RuleId::NeitherSectionNorKey, "drops", "line that says nothing", "lines that say nothing"},
    LossKind{RuleId::LastLineDropped, "drops the last line of the header, which has no line end"},
    LossKind{RuleId::KeyRepeated, "drops the earlier value of", "key given twice", "keys given twice"},
    LossKind{RuleId::BytesLeftOver, "drops the bytes behind the samples"},
    LossKind{RuleId::BytesLeftOverUnexplained, "drops the bytes behind the samples"},
    LossKind{RuleId::NameCollides, "changes", "name that is the same as another", "names that are the same as others"},
    LossKind{RuleId::TextChanged, "changes", "text that a header cannot hold", "texts that a header cannot hold"},
    LossKind{RuleId::NumberRounded, "rounds", "number", "numbers"},
    LossKind{RuleId::BitsWidened, "writes 16 bits instead of 8 for", "channel", "channels"},
    LossKind{RuleId::VersionRaised, "makes version 2 of version 1"},
    LossKind{RuleId::ListBecomesTrees, "makes trees of the flat list of information"},
};

// The key, or the line that has none, or the section. Empty for the finding that says how many more there are.
std::string NameIn(const inspect::Finding& finding)
{
    const bool isOfSection = finding.rule->number == RuleId::BitsWidened; // whose key is always the same
    return isOfSection             ? finding.section
           : !finding.key.empty()  ? finding.key
           : finding.found.empty() ? finding.section
                                   : finding.found;
}

// The first different ones, in quotes.
std::string Names(const Findings& findings)
{
    constexpr std::size_t most = 3;
    std::vector<std::string> names;
    for (const inspect::Finding* const finding : findings) {
        const std::string name = NameIn(*finding);
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
        if (names.size() > most) {
            break;
        }
    }
    std::string text;
    for (std::size_t i = 0; i < std::min(most, names.size()); ++i) {
        text.append(i == 0 ? ": \"" : ", \"").append(names[i]).append("\"");
    }
    return names.size() > most ? text + " and others" : text;
}

// An inspection lists so many findings of one rule that counting stops there.
std::string Count(const Findings& findings)
{
    constexpr std::size_t listed = 1000;
    return findings.size() > listed ? "more than " + std::to_string(listed) : std::to_string(findings.size());
}

std::string Sentence(const LossKind& kind, const Findings& findings)
{
    std::string text = std::string("a save ").append(kind.does);
    if (!kind.one.empty()) {
        text.append(" ").append(Count(findings)).append(" ");
        text.append(findings.size() == 1 ? kind.one : kind.many).append(Names(findings));
    }
    return text.append(" [").append(findings.front()->rule->id).append("]");
}

} // namespace

SaveLosses FindSaveLosses(const inspect::Inspection& inspection, const CarriedSections& carried)
{
    SaveLosses losses;
    for (const LossKind& kind : lossKinds) {
        Findings found;
        for (const inspect::Finding& finding : inspection.findings) {
            if (finding.rule->number == kind.rule && !carried.HasLine(finding.line)) {
                found.push_back(&finding);
            }
        }
        if (!found.empty()) {
            losses.sentences.push_back(Sentence(kind, found));
            losses.isHarmless &= found.front()->rule->severity == inspect::Severity::Note;
        }
    }
    return losses;
}

void AnnounceSave(const inspect::Inspection& inspection, const CarriedSections& carried, bool strict)
{
    const SaveLosses losses = FindSaveLosses(inspection, carried);
    const std::string subject = inspection.file + ": ";
    for (const std::string& sentence : losses.sentences) {
        Complain(subject + sentence);
    }
    if (strict && !losses.isHarmless) {
        throw Failure(ExitCode::Damaged, inspection.file, "not saved, since --strict allows no such loss");
    }
}

} // namespace oxd
