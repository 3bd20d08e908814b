// An index over the names of a sequence's elements that finds them without regard to ASCII case. It serves the sections
// of a header and the keys of a section.
#pragma once

#include "velstdlib/string/FoldedText.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace veltaris::velstdlib::util {

// A name to look up and its hash, which is computed once. The text must outlive this object.
struct CFoldedName
{
    explicit CFoldedName(std::string_view name) : text(name), hash(static_cast<std::uint32_t>(string::HashFolded(name)))
    {
    }

    std::string_view text;
    std::uint32_t hash;
};

// The index of a `Sequence` that has
//   Size()        how many elements there are, of which tombstones are some
//   At(position)  an element with its Name(), the NameHash() of that, as CFoldedName has it, and IsTombstone()
// It holds positions only and asks the sequence for the rest, which must own it and stay where it is in memory. No two
// elements that are found have equal names, and one whose name is empty is found like any other.
//
// A sequence that was never longer than `longestScan` has no index: it is searched from its start, which is faster and
// takes no memory. Most sections are short.
//
// Not thread-safe; several threads may search at once while none changes the sequence.
template <class Sequence>
class CFoldedIndex
{
public:
    explicit CFoldedIndex(const Sequence& sequence) : m_sequence(sequence) {}

    std::optional<std::size_t> Find(const CFoldedName& name) const
    {
        if (!m_positions)
            return Scan(name);
        const auto found = m_positions->find(name);
        return found == m_positions->end() ? std::nullopt : std::optional<std::size_t>(*found);
    }

    // To be called when an element was appended, which is the one at this position. When it throws std::bad_alloc, the
    // index is as it was.
    void Insert(std::size_t position)
    {
        if (m_positions)
            m_positions->insert(static_cast<std::uint32_t>(position));
        else if (position >= longestScan)
            IndexAll();
    }

    // To be called before the element becomes a tombstone.
    void Erase(std::size_t position)
    {
        if (m_positions)
            m_positions->erase(static_cast<std::uint32_t>(position));
    }

    // To be called after the positions of elements have changed.
    void Rebuild()
    {
        m_positions.reset();
        if (m_sequence.Size() > longestScan)
            IndexAll();
    }

private:
    static constexpr std::size_t longestScan = 32;

    struct Hash
    {
        using is_transparent = void;
        const Sequence* sequence;

        std::size_t operator()(const CFoldedName& name) const { return name.hash; }
        std::size_t operator()(std::uint32_t position) const { return sequence->At(position).NameHash(); }
    };

    struct Equal
    {
        using is_transparent = void;
        const Sequence* sequence;

        // Each position is inserted once, and the names are different.
        bool operator()(std::uint32_t a, std::uint32_t b) const { return a == b; }
        bool operator()(const CFoldedName& name, std::uint32_t position) const
        {
            const auto& element = sequence->At(position);
            return element.NameHash() == name.hash && string::EqualFolded(element.Name(), name.text);
        }
        bool operator()(std::uint32_t position, const CFoldedName& name) const { return (*this)(name, position); }
    };

    std::optional<std::size_t> Scan(const CFoldedName& name) const
    {
        const Equal equal{&m_sequence};
        const auto size = static_cast<std::uint32_t>(m_sequence.Size());
        for (std::uint32_t position = 0; position < size; ++position) {
            const auto& element = m_sequence.At(position);
            if (element.NameHash() == name.hash && !element.IsTombstone() && equal(name, position))
                return position;
        }
        return std::nullopt;
    }

    void IndexAll()
    {
        auto positions = std::make_unique<Positions>(2 * m_sequence.Size(), Hash{&m_sequence}, Equal{&m_sequence});
        const auto size = static_cast<std::uint32_t>(m_sequence.Size());
        for (std::uint32_t position = 0; position < size; ++position) {
            if (!m_sequence.At(position).IsTombstone())
                positions->insert(position);
        }
        m_positions = std::move(positions);
    }

    using Positions = boost::unordered_flat_set<std::uint32_t, Hash, Equal>; // no header has more elements

    const Sequence& m_sequence;
    std::unique_ptr<Positions> m_positions;
};

} // namespace veltaris::velstdlib::util
