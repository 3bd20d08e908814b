// Finds the channel that a command line names.
#pragma once

#include "oxd/library/Channel.h"

#include <string>

namespace oxd {

struct ChannelSelection
{
    std::string file;
    std::string group;   // a name
    std::string channel; // a slot's index, or the name of a signal axis
};

// `dataSet` is that of the selection's file. Throws a Failure if it has no such channel.
Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted);

} // namespace oxd
