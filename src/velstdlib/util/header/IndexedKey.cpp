#include "velstdlib/util/header/IndexedKey.h"

#include "velstdlib/string/FoldedText.h"

#include <charconv>

namespace veltaris::velstdlib::util {

std::optional<CIndexedKey> SplitIndexedKey(std::string_view key, std::string_view prefix)
{
    if (key.size() <= prefix.size() || !string::EqualFolded(key.substr(0, prefix.size()), prefix))
        return std::nullopt;
    key.remove_prefix(prefix.size());
    std::uint64_t index = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), index);
    const auto digits = static_cast<std::size_t>(end - key.data());
    const bool padded = key.front() == '0' && digits > 1;
    if (error != std::errc() || padded)
        return std::nullopt;
    return CIndexedKey{index, key.substr(digits)};
}

} // namespace veltaris::velstdlib::util
