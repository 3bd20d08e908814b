// Finds the channel that a command line names.
#pragma once

#include "oxd/library/Channel.h"
#include "oxd/library/ChannelNames.h"

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

// Where a channel is in a file: positions, from 0.
struct ChannelPlace
{
    std::uint64_t group;
    std::uint64_t slot;

    bool operator==(const ChannelPlace&) const = default;
};

// A name may stand for several groups or channels of a file. The first of them is meant then. "name:" may stand before
// a name, so that every name can be written.
struct ChannelSelection
{
    std::string file;
    std::string group;   // "id:" and its id, or its name
    std::string channel; // its index if there is nothing but digits, else the name of its signal axis
    std::vector<ChannelPlace> doubted = {}; // channels whose samples may not be their own
    std::vector<ChannelPlace> misread = {}; // channels whose values may be wrong
    bool trust = false;                     // takes both all the same
};

// `names` are those of the selection's file. Throws a Failure, which lists what there is, if it has no such channel, an
// empty slot being none, and one if the channel is doubted or misread and not trusted.
ChannelPlace FindPlace(const ChannelNames& names, const ChannelSelection& wanted);

// The same in an open data set. The channel refers to `dataSet` and must not outlive it.
Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted);

// All channels of the selection's group, or of all groups if it names none. Throws a Failure if there is no such group.
std::vector<ChannelPlace> PlacesOf(const DataSet& dataSet, const ChannelSelection& wanted);

// The ids of all groups, in the order of the file.
std::vector<std::uint64_t> GroupIds(const DataSet& dataSet);

} // namespace oxd
