// Why the library does not open a file, as a finding.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <exception>

namespace veltaris::inspect {

// Adds what the library threw while it read the text of the header as lines. `failure` must not be null.
void AddUnreadableText(const std::exception_ptr& failure, const CHeaderLines& lines, CFindingList& findings);

// Adds what it threw while it read the sections. Returns the section that is to blame, or noSection. Both throw
// std::bad_alloc and std::system_error again, because they do not tell anything of the file.
std::uint32_t AddUnreadableSection(const std::exception_ptr& failure, const CHeaderLines& lines,
                                   const CSectionUses& uses, CFindingList& findings);

} // namespace veltaris::inspect
