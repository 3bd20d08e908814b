// The keys and values of one section of a header.
#pragma once

#include "velstdlib/util/FoldedIndex.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::velstdlib::util {

// Keys are found without regard to ASCII case; each is kept in the spelling, and at the place in the write order, in
// which it was last set. Values are texts and never empty: setting an empty one removes the key.
class CVELKeyToValueList
{
public:
    // `nextOrder` is the number that the first key set will have.
    explicit CVELKeyToValueList(std::uint64_t nextOrder = 0) : m_index(*this), m_nextOrder(nextOrder) {}
    CVELKeyToValueList(const CVELKeyToValueList&) = delete;
    CVELKeyToValueList& operator=(const CVELKeyToValueList&) = delete;
    ~CVELKeyToValueList() = default;

    // Throws std::runtime_error "Internal order value overflow", changing nothing, after 2^64 - 1 keys set.
    void SetValue(std::string_view key, std::string_view value);
    void SetValue(std::string_view key, std::uint64_t value);
    void RemoveKey(std::string_view key);

    std::string GetValue(std::string_view key, std::string_view defaultValue = {}) const;

    // For int, unsigned 64-bit and double: the number that the value spells. The default when the key is missing, and,
    // with a warning in the log, when the value is no such number.
    template <class T>
    T GetValueT(std::string_view key, T defaultValue) const;

    std::size_t GetCount() const { return m_entries.size() - m_holes; }
    // Of all keys and values.
    std::size_t GetTextBytes() const { return m_textBytes; }

    // Calls visit(key, value) for every key in write order. The list must not be changed meanwhile.
    template <class Visit>
    void ForEach(Visit&& visit) const
    {
        for (const Entry& entry : m_entries) {
            if (!entry.IsHole())
                visit(std::string_view(entry.key), std::string_view(entry.value));
        }
    }

private:
    friend class CFoldedIndex<CVELKeyToValueList>;

    struct Entry
    {
        std::uint64_t order;
        std::string key;
        std::string value;

        // Where a key was removed or set anew: no key is stored without a value.
        bool IsHole() const { return value.empty(); }
    };

    std::string_view NameAt(std::size_t position) const { return m_entries[position].key; }
    void MakeHole(std::size_t position);
    void CloseHoles();

    std::vector<Entry> m_entries; // by ascending order
    std::size_t m_holes = 0;
    std::size_t m_textBytes = 0;
    CFoldedIndex<CVELKeyToValueList> m_index;
    std::uint64_t m_nextOrder;
};

} // namespace veltaris::velstdlib::util
