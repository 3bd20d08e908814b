#include "velstdlib/util/header/ListCount.h"

#include "velstdlib/util/Limits.h"
#include "velstdlib/util/header/IndexedKey.h"

#include <algorithm>

namespace veltaris::velstdlib::util {

namespace {

std::uint64_t ReadCount(const CVELKeyToValueList& keys, std::string_view key, int /*type*/)
{
    return static_cast<std::uint64_t>(std::max(keys.GetValueT<int>(key, 0), 0));
}

std::uint64_t ReadCount(const CVELKeyToValueList& keys, std::string_view key, std::uint64_t /*type*/)
{
    if (keys.GetValue(key).starts_with('-'))
        return 0; // as an unsigned number it would wrap around
    return keys.GetValueT<std::uint64_t>(key, 0);
}

} // namespace

std::uint64_t LimitByKeys(const CVELKeyToValueList& keys)
{
    return std::max<std::uint64_t>(limits::listEntries, keys.GetCount());
}

template <class Number>
std::uint64_t ReadListCount(const CHeaderSection& section, std::string_view key, std::uint64_t limit,
                            const boost::source_location& where)
{
    const std::uint64_t count = ReadCount(section.keys, key, Number());
    if (count > limit)
        section.ThrowBadContent(key, where);
    return count;
}

template std::uint64_t ReadListCount<int>(const CHeaderSection&, std::string_view, std::uint64_t,
                                          const boost::source_location&);
template std::uint64_t ReadListCount<std::uint64_t>(const CHeaderSection&, std::string_view, std::uint64_t,
                                                    const boost::source_location&);

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
