#include "oxd/compare/StoredBits.h"

#include "oxd/inspection/InspectFile.h"

namespace oxd {

StoredBits ReadStoredBits(const std::string& file)
{
    StoredBits bits;
    const inspect::Inspection inspection = InspectFile(file);
    for (const auto& channel : inspection.channels) {
        bits[{channel.group, channel.slot}] = channel.bits;
    }
    return bits;
}

} // namespace oxd
