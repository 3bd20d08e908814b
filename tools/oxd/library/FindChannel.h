// Finds the channel that a command line names.
#pragma once

#include "oxd/library/Channel.h"

#include <string>

namespace oxd {

// A name may stand for several groups or channels of a file. The first of them is meant then.
struct ChannelSelection
{
    std::string file;
    std::string group;   // its name
    std::string channel; // its index if there is nothing but digits, else the name of its signal axis
};

// `dataSet` is the one read from the selection's file. Throws a Failure if it has no such channel; an empty slot is
// none. The channel refers to `dataSet` and must not outlive it.
Channel FindChannel(const DataSet& dataSet, const ChannelSelection& wanted);

} // namespace oxd
