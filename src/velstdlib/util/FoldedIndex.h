// An index over the names of a sequence's elements that finds them without regard to ASCII case.
#pragma once

#include "velstdlib/string/FoldedText.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <optional>
#include <string_view>

namespace veltaris::velstdlib::util {

// Holds positions only. `Sequence` owns the index, stays where it is in memory, and answers NameAt(position) for
// every position that was inserted and not erased since.
template <class Sequence>
class CFoldedIndex
{
public:
    explicit CFoldedIndex(const Sequence& sequence) : m_positions(0, Hash{&sequence}, Equal{&sequence}) {}

    std::optional<std::size_t> Find(std::string_view name) const
    {
        const auto found = m_positions.find(name);
        return found == m_positions.end() ? std::nullopt : std::optional(*found);
    }

    void Insert(std::size_t position) { m_positions.insert(position); }
    void Erase(std::size_t position) { m_positions.erase(position); }
    void Clear() { m_positions.clear(); }

private:
    struct Names
    {
        using is_transparent = void;
        const Sequence* sequence;

        std::string_view Of(std::string_view name) const { return name; }
        std::string_view Of(std::size_t position) const { return sequence->NameAt(position); }
    };

    struct Hash : Names
    {
        std::size_t operator()(auto element) const { return string::HashFolded(Names::Of(element)); }
    };

    struct Equal : Names
    {
        bool operator()(auto a, auto b) const { return string::EqualFolded(Names::Of(a), Names::Of(b)); }
    };

    boost::unordered_flat_set<std::size_t, Hash, Equal> m_positions;
};

} // namespace veltaris::velstdlib::util
