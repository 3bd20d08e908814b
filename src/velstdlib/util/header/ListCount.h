// Counts that stand beside the numbered keys of a section.
#pragma once

#include "velstdlib/util/header/VELKeyToValue.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// The count under the key; 0 when it is missing, negative or unreadable. Throws CVELFileBadContentException, with the
// file's name, above the limit.
std::uint64_t ReadListCount(const CVELKeyToValueList& keys, std::string_view key, std::uint64_t limit,
                            const std::string& fileName);

// The values of the keys that are the prefix and a number below `count`, in the order of the numbers. The keys that
// there are bound the work: the count alone would not.
std::map<std::uint64_t, std::string_view> ReadNumberedValues(const CVELKeyToValueList& keys, std::string_view prefix,
                                                             std::uint64_t count);

} // namespace veltaris::velstdlib::util
