// The sections that hold trees: one for each group, named by the path to it, with numbered links to the groups below it
// and a line for each of its items.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoFlatSection.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <string>

namespace veltaris::velflexlib::dataset {

// Top-level groups are linked from `section`. Throws CVELFileBadContentException for counts above the limit.
void LoadInfoTrees(CInfoSet& infoSet, velstdlib::util::CVELConfig& document, const std::string& section,
                   const std::atomic<bool>& abort);

// What would share a key or a section with something before it gets "_2", "_3" and so on behind its name.
// Throws CVELFileSaveException when there is more text than a header may have.
void SaveInfoTrees(const CInfoGroups& groups, velstdlib::util::CVELConfig& document, const std::string& section);

} // namespace veltaris::velflexlib::dataset
