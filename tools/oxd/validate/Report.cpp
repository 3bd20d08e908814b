#include "oxd/validate/Report.h"

#include "oxd/inspection/FindingText.h"
#include "oxd/system/Text.h"

#include <algorithm>

namespace oxd {

namespace {

std::string Line(const std::string& file, const inspect::Finding& finding)
{
    const std::string place = finding.line > 0     ? ":" + std::to_string(finding.line)
                              : finding.offset > 0 ? ": byte " + std::to_string(finding.offset)
                                                   : std::string();
    return Printable(file + place + ": " + Verdict(finding)) + "\n";
}

std::string Counted(std::size_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

SeverityCounts CountFindings(const inspect::Inspection& inspection)
{
    const auto count = [&](inspect::Severity severity) {
        return static_cast<std::size_t>(
            std::count_if(inspection.findings.begin(), inspection.findings.end(),
                          [=](const inspect::Finding& finding) { return finding.rule->severity == severity; }));
    };
    return {count(inspect::Severity::Error), count(inspect::Severity::Warning), count(inspect::Severity::Note)};
}

std::string ToText(const inspect::Inspection& inspection)
{
    std::string text;
    for (const inspect::Finding& finding : inspection.findings) {
        text += Line(inspection.file, finding);
    }
    const SeverityCounts counts = CountFindings(inspection);
    return text + Printable(inspection.file) + ": " + Counted(counts.errors, "error") + ", " +
           Counted(counts.warnings, "warning") + ", " + Counted(counts.notes, "note") +
           (inspection.Opens() ? "" : "; the file does not open") + "\n";
}

} // namespace oxd
