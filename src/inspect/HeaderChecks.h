// What the text of a header alone tells, whether it opens or not.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

namespace veltaris::inspect {

// Encoding, lines that are ignored, and what is given twice.
void CheckLines(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Values that are not used as written, keys beyond their counts, and counts beyond their lists.
void CheckKeys(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Keys without which the axes of a channel or of its lines are others: lost, emptied or damaged ones, and those that
// the version of their section hides.
void CheckAxisKeys(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Links without sections, and sections that nothing links, each by name.
void CheckLinks(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Whether a section is named like one of a channel, or has a size together with other keys of channels.
bool LooksLikeChannel(const CHeaderLines& lines, std::uint32_t section);

} // namespace veltaris::inspect
