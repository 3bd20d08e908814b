#include "oxd/inspection/CheckInput.h"

#include "oxd/inspection/FindingText.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>
#include <set>

namespace oxd {

namespace {

using veltaris::velstdlib::string::EqualFolded;
using veltaris::velstdlib::string::FoldedCopy;

// What makes all values of a channel wrong.
constexpr std::array rulesOfChannels = {inspect::RuleId::OtherStorage, inspect::RuleId::ChannelVersionDoubtful,
                                        inspect::RuleId::AxisKeyDamaged};
// What makes them wrong when it is about their signal axis. A key that left no trace is a mere error: other programs
// may leave keys out.
constexpr std::array rulesOfAxes = {inspect::RuleId::AxisNoNumber, inspect::RuleId::AxisKeyRepeated};

// A finding that stands for those that are not listed names no key.
bool ConcernsValues(const inspect::Finding& finding)
{
    constexpr std::string_view signalAxis = "Dim2";
    const inspect::RuleId rule = finding.rule->number;
    const bool isOfSignal = finding.key.empty() || EqualFolded(finding.key.substr(0, signalAxis.size()), signalAxis);
    return std::ranges::find(rulesOfChannels, rule) != rulesOfChannels.end() ||
           (isOfSignal && std::ranges::find(rulesOfAxes, rule) != rulesOfAxes.end());
}

void RequireNone(const std::string& file, const std::vector<ChannelPlace>& places, const std::string& what,
                 const std::string& fault)
{
    const std::size_t count = places.size();
    if (count > 0) {
        const std::string channels = count == 1 ? "1 channel" : std::to_string(count) + " channels";
        throw Failure(ExitCode::Damaged, file,
                      what + " of " + channels + " " + fault + "; --trust takes them all the same");
    }
}

} // namespace

std::vector<ChannelPlace> Doubted(const inspect::Inspection& inspection)
{
    std::vector<ChannelPlace> places;
    for (const inspect::ChannelSamples& channel : inspection.channels) {
        if (!channel.isCertain) {
            places.push_back({channel.group, channel.slot});
        }
    }
    return places;
}

std::vector<ChannelPlace> Misread(const inspect::Inspection& inspection)
{
    std::set<std::string> sections; // an empty one stands for any
    for (const inspect::Finding& finding : inspection.findings) {
        if (ConcernsValues(finding)) {
            sections.insert(FoldedCopy(finding.section));
        }
    }
    std::vector<ChannelPlace> places;
    for (const inspect::ChannelSamples& channel : inspection.channels) {
        if (sections.contains("") || sections.contains(FoldedCopy(channel.section))) {
            places.push_back({channel.group, channel.slot});
        }
    }
    return places;
}

void ComplainOfErrors(const inspect::Inspection& inspection)
{
    const std::string subject = inspection.file + ": ";
    for (const std::string& message : ErrorMessages(inspection)) {
        Complain(subject + message);
    }
}

inspect::Inspection InspectAloud(const std::string& file)
{
    inspect::Inspection inspection = InspectFile(file);
    ComplainOfErrors(inspection);
    RequireOpens(inspection);
    return inspection;
}

inspect::Inspection RequireCertain(const std::string& file, bool trust)
{
    inspect::Inspection inspection = InspectAloud(file);
    if (!trust) {
        RequireNone(file, Doubted(inspection), "the samples", "may not be their own");
        RequireNone(file, Misread(inspection), "the values", "may be wrong");
    }
    return inspection;
}

} // namespace oxd
