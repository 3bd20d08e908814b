// One of the files that are compared.
#pragma once

#include "oxd/compare/OtherContent.h"
#include "oxd/library/Channel.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
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

    // The bits in which the file stores each sample of a channel, of which the interface of the library shows nothing.
    std::int64_t Bits(const Group& group, std::uint64_t slot) const;

    const OtherContent& Other() const { return m_other; }
    const KeyValues& OtherKeys(const Group& group, std::uint64_t slot) const
    {
        return m_other.OfChannel(group.id, slot);
    }

private:
    explicit FileContent(const inspect::Inspection& inspection);

    DataSet m_dataSet;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::int64_t> m_bits; // by the positions of group and slot
    OtherContent m_other;
    std::vector<Group> m_groups;
};

} // namespace oxd
