#include "oxd/inspection/CheckInput.h"

#include "oxd/inspection/FindingText.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"

namespace oxd {

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

inspect::Inspection InspectAloud(const std::string& file)
{
    inspect::Inspection inspection = InspectFile(file);
    const std::string subject = file + ": ";
    for (const std::string& message : ErrorMessages(inspection)) {
        Complain(subject + message);
    }
    return inspection;
}

inspect::Inspection RequireCertain(const std::string& file, bool trust)
{
    inspect::Inspection inspection = InspectAloud(file);
    const std::size_t count = Doubted(inspection).size();
    if (count > 0 && inspection.Opens() && !trust) {
        const std::string channels = count == 1 ? "1 channel" : std::to_string(count) + " channels";
        throw Failure(ExitCode::Damaged, file,
                      "the samples of " + channels + " may not be their own; --trust takes them all the same");
    }
    return inspection;
}

} // namespace oxd
