// The counts in a section, and the numbered keys that they count.
#pragma once

#include "velstdlib/util/header/HeaderSection.h"

#include <boost/assert/source_location.hpp>

#include <cstdint>
#include <limits>
#include <map>
#include <string_view>

namespace veltaris::velstdlib::util {

// For counts that something else bounds.
inline constexpr std::uint64_t noCountLimit = std::numeric_limits<std::uint64_t>::max();

// For lists whose section may ask for more entries than any fixed limit if it has the keys for them.
std::uint64_t LimitByKeys(const CVELKeyToValueList& keys);

// The count under the key; 0 when it is missing, negative or unreadable. `Number` is int or std::uint64_t: a value
// beyond an int is unreadable as one, but may exceed the limit as the other. Throws CVELFileBadContentException above
// the limit, raised at `where`.
template <class Number>
std::uint64_t ReadListCount(const CHeaderSection& section, std::string_view key, std::uint64_t limit,
                            const boost::source_location& where = BOOST_CURRENT_LOCATION);

// The values of the keys that consist of the prefix and a number below `count`, in the order of the numbers. The work
// is bounded by the keys that exist, because the count may be anything.
std::map<std::uint64_t, std::string_view> ReadNumberedValues(const CVELKeyToValueList& keys, std::string_view prefix,
                                                             std::uint64_t count);

} // namespace veltaris::velstdlib::util
