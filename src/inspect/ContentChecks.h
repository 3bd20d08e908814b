// What is odd about what was read, and what a save changes of it.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/SampleLayout.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"
#include "velflexlib/dataset/DataSet.h"

#include <vector>

namespace veltaris::inspect {

// Axes, lines that cannot be read, and what a save does to samples and numbers. Sections that several channels name are
// checked once.
void CheckChannels(const std::vector<PlacedChannel>& channels, const CHeaderLines& lines, const CSectionUses& uses,
                   CFindingList& findings);

// The following are for a header that was read to its end.

void CheckVersion(const CSectionUses& uses, CFindingList& findings);

// Texts of groups and channels.
void CheckTexts(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Saves the information to a document in memory, reads it back, and compares.
void CheckInformation(const velflexlib::dataset::CDataSet& dataSet, const CHeaderLines& lines, const CSectionUses& uses,
                      CFindingList& findings);

} // namespace veltaris::inspect
