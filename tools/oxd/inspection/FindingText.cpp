#include "oxd/inspection/FindingText.h"

#include <algorithm>

namespace oxd {

namespace {

std::string Message(const inspect::Finding& finding)
{
    const std::string place = finding.line > 0     ? "line " + std::to_string(finding.line) + ": "
                              : finding.offset > 0 ? "byte " + std::to_string(finding.offset) + ": "
                                                   : std::string();
    return place + Verdict(finding);
}

} // namespace

std::string Verdict(const inspect::Finding& finding)
{
    return std::string(NameOf(finding.rule->severity)) + ": " + finding.sentence + " [" +
           std::string(finding.rule->id) + "]";
}

std::optional<std::string> RefusalMessage(const inspect::Inspection& inspection)
{
    if (inspection.headerBytes == 0) {
        return "not an .oxd file, it has no header";
    }
    const auto found = std::find_if(inspection.findings.begin(), inspection.findings.end(),
                                    [](const inspect::Finding& finding) { return finding.rule->stopsOpening; });
    return found == inspection.findings.end() ? std::nullopt : std::optional(Message(*found));
}

std::vector<std::string> LesserMessages(const inspect::Inspection& inspection)
{
    std::vector<std::string> messages;
    for (const inspect::Finding& finding : inspection.findings) {
        if (finding.rule->severity != inspect::Severity::Error) {
            messages.push_back(Message(finding));
        }
    }
    return messages;
}

std::vector<std::string> ErrorMessages(const inspect::Inspection& inspection)
{
    constexpr std::size_t most = 10;
    std::vector<std::string> messages;
    std::size_t count = 0;
    for (const inspect::Finding& finding : inspection.findings) {
        const bool isOther = !finding.rule->stopsOpening && inspection.headerBytes > 0;
        const bool counts = finding.rule->severity == inspect::Severity::Error && isOther;
        if (counts && count++ < most) {
            messages.push_back(Message(finding));
        }
    }
    if (count > most) {
        messages.push_back(std::to_string(count - most) + " more errors, which oxd validate lists");
    }
    return messages;
}

} // namespace oxd
