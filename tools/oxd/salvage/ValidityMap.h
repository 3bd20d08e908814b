// The map of what became of the lines of each channel, in several forms.
#pragma once

#include "oxd/files/OutputFile.h"
#include "salvage/Salvage.h"

#include <string>
#include <vector>

namespace oxd {

namespace salvage = veltaris::salvage;

// A document that fits docs/schema/salvage.schema.json.
std::string ToJson(const salvage::Salvaged& salvaged, const std::string& file, const std::string& output);

// A strip for each channel in their order, line 0 at the bottom: white where lines are saved, black where none are,
// grey where only some of them are or lines have no samples.
void WritePicture(const salvage::Salvaged& salvaged, OutputFile& output);

// A sentence for each channel, and before them what was done with the header.
std::vector<std::string> ToSentences(const salvage::Salvaged& salvaged);

} // namespace oxd
