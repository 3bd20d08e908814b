// An index over the names of a sequence's elements that finds them without regard to ASCII case.
#pragma once

#include "velstdlib/string/FoldedText.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace veltaris::velstdlib::util {

// A name to look for, with its hash.
struct CFoldedName
{
    explicit CFoldedName(std::string_view name) : text(name), hash(static_cast<std::uint32_t>(string::HashFolded(name)))
    {
    }

    std::string_view text;
    std::uint32_t hash;
};

// Holds positions only. `Sequence` owns the index and stays where it is in memory. Its element at every position below
// Size() has a Name() and the NameHash() of that; where an element was erased since, the name is empty. A short
// sequence is searched as it is, which is faster and takes no memory: most sections are short.
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

    // The element at the position, which is the last one, has a name from now on.
    void Insert(std::size_t position)
    {
        if (m_positions)
            m_positions->insert(static_cast<std::uint32_t>(position));
        else if (position >= longestScan)
            IndexAll();
    }

    void Erase(std::size_t position)
    {
        if (m_positions)
            m_positions->erase(static_cast<std::uint32_t>(position));
    }

    // To be called after positions have changed.
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

        // Positions are inserted once each, under different names.
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
            if (m_sequence.At(position).NameHash() == name.hash && equal(name, position))
                return position;
        }
        return std::nullopt;
    }

    void IndexAll()
    {
        auto positions = std::make_unique<Positions>(2 * m_sequence.Size(), Hash{&m_sequence}, Equal{&m_sequence});
        const auto size = static_cast<std::uint32_t>(m_sequence.Size());
        for (std::uint32_t position = 0; position < size; ++position) {
            if (!m_sequence.At(position).Name().empty())
                positions->insert(position);
        }
        m_positions = std::move(positions);
    }

    using Positions = boost::unordered_flat_set<std::uint32_t, Hash, Equal>; // a header is no longer than that

    const Sequence& m_sequence;
    std::unique_ptr<Positions> m_positions;
};

} // namespace veltaris::velstdlib::util
