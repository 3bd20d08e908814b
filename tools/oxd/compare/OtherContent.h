// What a file holds beside channels and information: a save drops it or writes it anew, and the interface of the
// library shows nothing of it.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace oxd {

// Values by their keys.
using KeyValues = std::map<std::string, std::string>;

class OtherContent
{
public:
    // Reads the header once more, of a file that opens. Throws a Failure if it cannot be read.
    explicit OtherContent(const inspect::Inspection& inspection);

    // By name: the sections that a save drops, with all of their keys, and the section of the data set, if it has keys
    // that a save drops.
    const std::map<std::string, KeyValues>& Sections() const { return m_sections; }

    // Of a channel, by the positions of group and slot: its frame, its current line, how its samples are said to be
    // stored, and keys that a save drops. A value that a missing key stands for is left out.
    const KeyValues& OfChannel(std::uint64_t group, std::uint64_t slot) const;

    // Behind the samples of all channels.
    std::uint64_t BytesLeftOver() const { return m_bytesLeftOver; }

private:
    std::map<std::string, KeyValues> m_sections;
    std::map<std::uint32_t, KeyValues> m_keys; // of the sections of channels, some of which may share one
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::uint32_t> m_channels; // their sections
    std::uint64_t m_bytesLeftOver;
};

} // namespace oxd
