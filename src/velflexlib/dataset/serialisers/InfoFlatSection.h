// The section that holds information as a flat list: a header line for each group, then its items. Its format, the
// rules for older lists and the names that older programs gave to items are known here and nowhere else. The functions
// keep no state; the information set that they read into is not guarded by a lock.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoLine.h"
#include "velstdlib/util/header/VELKeyToValue.h"

#include <atomic>
#include <optional>
#include <vector>

namespace veltaris::velflexlib::dataset {

using CInfoGroups = std::vector<const CInfoSetItem*>;

// Appends the groups and items of the list to the information set, as far as it gets before `abort` is set. A list
// without header lines is sorted into groups by rules that depend on the version of the file.
void LoadFlatInfo(CInfoSet& infoSet, const velstdlib::util::CVELKeyToValueList& keys, int fileVersion,
                  const std::atomic<bool>& abort);

// The lines of the list, or nothing when reading them would not give back these groups, items and values.
std::optional<std::vector<CInfoLine>> FlatInfoLines(const CInfoGroups& groups);

} // namespace veltaris::velflexlib::dataset
