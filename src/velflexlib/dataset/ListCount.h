// Counts that stand beside the numbered keys of a section.
#pragma once

#include "velstdlib/util/VELKeyToValue.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace veltaris::velflexlib::dataset {

// The count under the key; 0 when it is missing, negative or unreadable. Throws CVELFileBadContentException, with the
// file's name, above the limit.
std::uint64_t ReadListCount(const velstdlib::util::CVELKeyToValueList& keys, std::string_view key, std::uint64_t limit,
                            const std::string& fileName);

} // namespace veltaris::velflexlib::dataset
