// The section that holds groups and items as a flat list: a header line for each group, then its items.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <atomic>
#include <optional>
#include <vector>

namespace veltaris::velflexlib::dataset {

using CInfoGroups = std::vector<const CInfoSetItem*>;

void LoadFlatInfo(CInfoSet& infoSet, const velstdlib::util::CVELKeyToValueList& keys, int fileVersion,
                  const std::atomic<bool>& abort);

// The lines of the list, or nothing when reading them would not give back these groups, items and values.
std::optional<std::vector<CInfoLine>> FlatInfoLines(const CInfoGroups& groups);

} // namespace veltaris::velflexlib::dataset
