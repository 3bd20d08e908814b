// The groups of a data set by their names.
#pragma once

#include "velstdlib/string/FoldedText.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace veltaris::velflexlib::dataset {

// The first group of each name, as names were at some state of the data set. States are numbers; a name that changes,
// or a group that comes or goes, makes a new one. An index costs more than a search through all groups, so it is worth
// making for a state in which groups are looked up again. Not thread-safe: guarded by the lock of the CDataSet that
// owns it.
class CGroupNames
{
public:
    struct CHash
    {
        std::size_t operator()(std::string_view name) const { return velstdlib::string::HashFolded(name); }
    };
    using Index = boost::unordered_flat_map<std::string, int, CHash, std::equal_to<>>;

    // The id of the first group of this name, -1 when there is none, and nothing when there is no index of this state.
    std::optional<int> Find(const std::string& name, std::uint64_t state) const
    {
        if (!m_indexedState || *m_indexedState != state)
            return std::nullopt;
        const auto found = m_index.find(name);
        return found == m_index.end() ? -1 : found->second;
    }

    // Whether this was called with the same state before.
    bool IsSearchedAgain(std::uint64_t state) { return std::exchange(m_searchedState, state) == state; }

    // Leaves in `index` what is to be freed, without the lock.
    void Keep(Index& index, std::uint64_t state)
    {
        m_index.swap(index);
        m_indexedState = state;
    }

private:
    Index m_index;
    std::optional<std::uint64_t> m_indexedState;
    std::optional<std::uint64_t> m_searchedState;
};

} // namespace veltaris::velflexlib::dataset
