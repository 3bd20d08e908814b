// One of the files that are compared.
#pragma once

#include "oxd/compare/StoredBits.h"
#include "oxd/library/Channel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

struct Group
{
    std::uint64_t id; // also its position, since the file was only opened and not changed
    std::string name;
    std::uint64_t logicalId;
    std::uint64_t slots;
};

// Channels and nodes refer to it and must not outlive it.
class FileContent
{
public:
    // Throws a Failure if the file cannot be opened or is damaged.
    explicit FileContent(const std::string& file);

    const DataSet& GetDataSet() const { return m_dataSet; }
    std::uint64_t Version() const;
    const std::vector<Group>& Groups() const { return m_groups; }
    std::vector<std::string> GroupNames() const;

    // Nothing if the group has no such slot or the slot is empty.
    std::optional<Channel> FindChannel(const Group& group, std::uint64_t slot) const;

    // The bits in which the file stores each sample of a channel.
    std::int64_t Bits(const Group& group, std::uint64_t slot) const;

private:
    DataSet m_dataSet;
    StoredBits m_bits;
    std::vector<Group> m_groups;
};

} // namespace oxd
