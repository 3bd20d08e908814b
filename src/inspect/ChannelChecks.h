// What is odd about channels whose sections were read, their samples aside.
#pragma once

#include "inspect/FindingList.h"
#include "inspect/SampleLayout.h"

#include <vector>

namespace veltaris::inspect {

// Axes, lines that cannot be read, and what a save does to samples and numbers. Sections that several channels name are
// checked once.
void CheckChannels(const std::vector<PlacedChannel>& channels, const CHeaderLines& lines, const CSectionUses& uses,
                   CFindingList& findings);

} // namespace veltaris::inspect
