#include "velstdlib/util/header/ListCount.h"

#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/IndexedKey.h"

namespace veltaris::velstdlib::util {

std::uint64_t ReadListCount(const CVELKeyToValueList& keys, std::string_view key, std::uint64_t limit,
                            const std::string& fileName)
{
    if (keys.GetValue(key).starts_with('-'))
        return 0; // as an unsigned number it would wrap around
    const auto count = keys.GetValueT<std::uint64_t>(key, 0);
    if (count > limit)
        ThrowBadContent(fileName);
    return count;
}

std::map<std::uint64_t, std::string_view> ReadNumberedValues(const CVELKeyToValueList& keys, std::string_view prefix,
                                                             std::uint64_t count)
{
    std::map<std::uint64_t, std::string_view> values;
    keys.ForEach([&](std::string_view key, std::string_view value) {
        const auto numbered = SplitIndexedKey(key, prefix);
        if (numbered && numbered->index < count && numbered->rest.empty())
            values.emplace(numbered->index, value);
    });
    return values;
}

} // namespace veltaris::velstdlib::util
