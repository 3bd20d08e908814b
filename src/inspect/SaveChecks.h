// What a save changes of texts and of the measurement information. Unlike other checks these concern what was read, so
// that they are made for a header that was read to its end.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"
#include "velflexlib/dataset/DataSet.h"

namespace veltaris::inspect {

void CheckVersion(const CSectionUses& uses, CFindingList& findings);

// Texts of groups and channels.
void CheckTexts(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings);

// Saves the information to a document in memory, reads it back, and compares.
void CheckInformation(const velflexlib::dataset::CDataSet& dataSet, const CHeaderLines& lines, const CSectionUses& uses,
                      CFindingList& findings);

} // namespace veltaris::inspect
