// Signs of damage in a header that touch upon where samples stand.
#pragma once

#include "inspect/Inspection.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <cstdint>

namespace veltaris::salvage {

// Whether the section looks like a channel's although nothing names it: its link is damaged. Whether any does.
bool IsUnlisted(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses, std::uint32_t section);
bool HasUnlisted(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses);

// Whether nothing in the header looks damaged, so that a single damaged byte, if there is any, has turned one number
// into another. The sizes that it claims must be those of the file.
bool HasNoTraces(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses,
                 const inspect::Inspection& inspection);

// Whether the order of the channels is as it was written, and none has the section of another. Bytes that fit say
// nothing of that.
bool IsOrderCertain(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses);

// What is wrong with the lines of a channel, also where, as `fits` says, the header accounts for all bytes of the file.
enum class LineDoubt
{
    None,
    OwnLines, // which of its lines have no samples is not certain; the channels behind it stay where they are
    OwnSize   // neither are points and lines
};
LineDoubt FindLineDoubt(const inspect::CHeaderLines& lines, const inspect::CSectionUses& uses, std::uint32_t section,
                        bool fits);

} // namespace veltaris::salvage
