// Saves what is certain in a damaged file as another one, with a map of what became of each line.
#pragma once

#include "oxd/files/OutputFile.h"
#include "salvage/Salvage.h"

#include <optional>
#include <string>
#include <vector>

namespace oxd {

namespace salvage = veltaris::salvage;

struct SalvageRequest
{
    std::string file; // stays as it is
    bool trust = false;
    Destination output;
    std::optional<Destination> map;     // where the map goes as JSON, unless it is among the results
    std::optional<Destination> picture; // where it goes as a picture, if it is wanted as one
};

struct SalvageOutcome
{
    std::string map;                   // JSON; empty if it is in a file
    std::vector<std::string> messages; // a sentence for each channel, and what they have in common
};

// Throws a Failure if the file cannot be read, nothing in it is certain, or a file cannot be written.
SalvageOutcome SalvageFile(const SalvageRequest& request);

} // namespace oxd
