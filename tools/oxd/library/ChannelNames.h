// The names by which groups and channels of a file are found.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

// Of an open data set, or of a header.
class ChannelNames
{
public:
    virtual ~ChannelNames() = default;

    virtual std::vector<std::uint64_t> GroupIds() const = 0; // in the order of the file
    virtual std::string GroupName(std::uint64_t group) const = 0;
    virtual std::uint64_t SlotCount(std::uint64_t group) const = 0;
    virtual std::optional<std::string> ChannelName(std::uint64_t group, std::uint64_t slot) const = 0; // if not empty
};

} // namespace oxd
