// How far the size that a channel's section gives can be trusted.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::inspect {

enum class Doubt
{
    None,
    UnlessBytesFit, // dispelled when all channels together claim exactly the bytes that there are
    Certain
};

// Something about a size that is odd, without being damage that can be told for sure.
struct OddSize
{
    std::string key;
    std::string reason; // a sentence
};

struct SizeDoubts
{
    Doubt doubt = Doubt::None;
    std::vector<OddSize> odd;
    bool hasLineSizes = false; // lines that say how many points they have
};

SizeDoubts FindSizeDoubts(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section);

// Whether the text of a number of points or lines differs from another number by one character put in, left out or
// changed: what one damaged byte makes of it. The rest of 1024 may be 024.
bool IsOneCharacterOff(std::string_view text, std::uint64_t other);

} // namespace veltaris::inspect
