// Decides which samples of a file are certain to be those of their channel, although the file is damaged.
//
// The file is taken to have either been cut off, or to have been damaged in its header in a single byte: changed, lost
// or put in. What is certain is certain under this condition only, which nothing in a file can prove. So is every
// header that may have been: samples are certain where all of them agree.
#pragma once

#include "salvage/FileImage.h"
#include "salvage/Repairs.h"

#include "inspect/Inspection.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::salvage {

// How a header is taken.
enum class HeaderState
{
    AsItStands,
    Repaired,  // a byte of it was another
    Ambiguous, // a byte of it was another, and nobody knows which
    Cut        // its end is lost, and with it where the samples begin
};

// A plain value.
struct Judgement
{
    FileImage image;                // the header that is taken, and where the samples are
    inspect::Inspection inspection; // of the image
    HeaderState state = HeaderState::AsItStands;
    std::optional<Repair> repair; // of a repaired header; none where only its mark was damaged
    std::vector<bool> isCertain;  // of each of the channels of the inspection
    std::string doubt;            // a sentence on those that are not
};

// Reads the header. With `trust` it is taken at its word where nothing but a number that would fit better speaks
// against it. Throws std::system_error when the file cannot be read.
Judgement Judge(std::istream& file, const std::string& fileName, bool trust);

} // namespace veltaris::salvage
