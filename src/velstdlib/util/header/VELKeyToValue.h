// The keys and values of one section of a header.
#pragma once

#include "velstdlib/util/header/FoldedIndex.h"
#include "velstdlib/util/header/TextStore.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::velstdlib::util {

// Keys are found without regard to ASCII case; each is kept in the spelling, and at the place in the write order, in
// which it was last set. Keys and values are texts and never empty: setting an empty value removes the key.
class CVELKeyToValueList
{
public:
    // Texts are kept in `texts`, also those that were replaced. `nextOrder` is the number that the first key set will
    // have.
    explicit CVELKeyToValueList(CTextStore& texts, std::uint64_t nextOrder = 0)
        : m_texts(texts), m_index(*this), m_nextOrder(nextOrder)
    {
    }
    CVELKeyToValueList(const CVELKeyToValueList&) = delete;
    CVELKeyToValueList& operator=(const CVELKeyToValueList&) = delete;
    ~CVELKeyToValueList() = default;

    // Throws std::runtime_error "Internal order value overflow", changing nothing, after 2^64 - 1 keys set, and
    // CVELFileSaveException for a key that is longer than any header.
    void SetValue(std::string_view key, std::string_view value);
    void SetValue(std::string_view key, std::uint64_t value);
    // The same for a line of a text that is in the store already. One without "=" or without a key is ignored.
    void SetLine(std::string_view line);
    // Expects this empty list to get the keys of `model`, which must live as long, in the same order: while that holds,
    // no key is searched for. Most sections of a header are alike. Takes memory for as many keys: a list is a model
    // once.
    void Follow(const CVELKeyToValueList& model);
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
                visit(entry.Name(), entry.Value());
        }
    }
    // The same with whole lines, "key=value".
    template <class Visit>
    void ForEachLine(Visit&& visit) const
    {
        for (const Entry& entry : m_entries) {
            if (!entry.IsHole())
                visit(entry.line);
        }
    }

private:
    friend class CFoldedIndex<CVELKeyToValueList>;

    struct Entry
    {
        std::string_view line; // "key=value"
        std::uint32_t keyLength = 0;
        std::uint32_t hash = 0;

        std::string_view Name() const { return line.substr(0, keyLength); }
        std::uint32_t NameHash() const { return hash; }
        std::string_view Value() const { return line.substr(keyLength + 1); }
        std::size_t TextBytes() const { return line.size() - 1; }
        // Where a key was removed or set anew.
        bool IsHole() const { return line.empty(); }
    };

    std::size_t Size() const { return m_entries.size(); }
    const Entry& At(std::size_t position) const { return m_entries[position]; }
    const Entry* Find(std::string_view key) const;
    const Entry* NextOfModel(std::string_view text);
    bool KeysWereOnlyAdded() const { return m_holes == 0 && m_entries.size() == m_nextOrder; }
    void CheckOrder() const;
    void Set(const CFoldedName& key, std::string_view line);
    void Append(const Entry& entry);
    void MakeHole(std::size_t position);
    void CloseHoles();

    CTextStore& m_texts;
    std::vector<Entry> m_entries; // by ascending order
    std::size_t m_holes = 0;
    std::size_t m_textBytes = 0;
    const CVELKeyToValueList* m_model = nullptr;
    mutable std::size_t m_likelyNext = 0; // what is asked for in the order of writing is found at once
    CFoldedIndex<CVELKeyToValueList> m_index;
    std::uint64_t m_nextOrder;
};

} // namespace veltaris::velstdlib::util
