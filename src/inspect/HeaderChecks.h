// What the text of a header alone tells, whether it opens or not.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

namespace veltaris::inspect {

// Encoding, lines that are ignored, and what is given twice.
void CheckLines(const CHeaderLines& lines, CFindingList& findings);

// Values that are not taken as they stand, keys beyond their counts, and counts beyond their lists.
void CheckKeys(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Links without sections, and sections that nothing links, each by name.
void CheckLinks(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Whether a section has what only those of channels have, in its name or its keys.
bool LooksLikeChannel(const CHeaderLines& lines, std::uint32_t section);

} // namespace veltaris::inspect
