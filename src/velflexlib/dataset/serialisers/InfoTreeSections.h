// The sections that hold information as trees: one for each group, named by the path to it, with numbered links to the
// groups below it and a line for each of its items. Their keys are known here and nowhere else. The functions keep no
// state and do not recurse: the depth of a tree is limited by memory only.
#pragma once

#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/serialisers/InfoFlatSection.h"
#include "velstdlib/util/header/VELConfig.h"

#include <atomic>
#include <string>

namespace veltaris::velflexlib::dataset {

// Appends the trees that `section` links, as far as it gets before `abort` is set. Throws CVELFileBadContentException
// for counts above the limit, and for links without sections that take more text than the header has.
void LoadInfoTrees(CInfoSet& infoSet, velstdlib::util::CVELConfig& document, const std::string& section,
                   const std::atomic<bool>& abort);

// Writes the groups as trees, linked from `section`. A name that would share a key or a section with one before it gets
// "_2", "_3" and so on appended. Throws CVELFileSaveException when this takes more text than a header may have.
void SaveInfoTrees(const CInfoGroups& groups, velstdlib::util::CVELConfig& document, const std::string& section);

} // namespace veltaris::velflexlib::dataset
