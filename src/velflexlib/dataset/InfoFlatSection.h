// The section that holds groups and items as a flat list: a header line for each group, then its items.
#pragma once

#include "velflexlib/dataset/InfoSet.h"
#include "velstdlib/util/VELKeyToValue.h"

#include <atomic>
#include <vector>

namespace veltaris::velflexlib::dataset {

using CInfoGroups = std::vector<const CInfoSetItem*>;

void LoadFlatInfo(CInfoSet& infoSet, const velstdlib::util::CVELKeyToValueList& keys, int fileVersion,
                  const std::atomic<bool>& abort);

// Whether a list would give back these groups, items and values when read.
bool FitsFlatInfo(const CInfoGroups& groups);

// They must fit.
void SaveFlatInfo(const CInfoGroups& groups, velstdlib::util::CVELKeyToValueList& keys);

} // namespace veltaris::velflexlib::dataset
