// Looks a file over before a command reads it, so that no damage goes unsaid and no channel is mistaken for another.
#pragma once

#include "oxd/inspection/InspectFile.h"
#include "oxd/library/FindChannel.h"

#include <string>
#include <vector>

namespace oxd {

// Complains of all errors in the file but of one that keeps it from being opened.
void ComplainOfErrors(const inspect::Inspection& inspection);

// Complains of all errors in the file. Throws a Failure if it cannot be read, or is none that the library opens.
inspect::Inspection InspectAloud(const std::string& file);

// The channels whose samples may not be their own.
std::vector<ChannelPlace> Doubted(const inspect::Inspection& inspection);

// The channels whose values may be wrong, because their signal axes cannot be read or their samples are stored
// otherwise than the library reads them.
std::vector<ChannelPlace> Misread(const inspect::Inspection& inspection);

// The same as InspectAloud, and throws a Failure if there is a channel of either kind in a file that is not trusted: a
// save would make what is wrong look right.
inspect::Inspection RequireCertain(const std::string& file, bool trust);

} // namespace oxd
