// The keys and values of one section of a header.
//
// A header may have a million sections of a few keys each, or one section of a million keys. Four ways to a key make
// both fast, and each gives the same result as a search through all keys would:
// - A short list is searched from its start, and
// - a long one has a hash index; CFoldedIndex holds both ways.
// - Writing: sections of a header are mostly alike. As long as a list repeats the keys of the previous section in the
//   same order and spelling, its next key is predicted from there and needs no look-up: it differs from all keys before
//   it, as it does in the previous section.
// - Reading: keys are mostly asked for in the order in which they stand. The key behind the last one that was found is
//   compared first.
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
// which it was last set. A key may be empty, a value may not: setting an empty value removes the key.
//
// Not thread-safe, not even where nothing but const functions are called: finding a key remembers where it was.
class CVELKeyToValueList
{
public:
    // Texts are kept in `texts`, also those that were replaced, and it must live as long. `nextOrder` is the number in
    // the write order that the first key set will have.
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
    // The same for a line of a text that is in the store already. One without "=" or with nothing before it is ignored.
    void SetLine(std::string_view line);
    // Expects this list, which must be empty, to get the keys of `before` in the same order. `before` must live as long
    // and may change meanwhile. Takes memory for as many keys at once, so that a list should be given here only once.
    void ExpectKeysOf(const CVELKeyToValueList& before);
    void RemoveKey(std::string_view key);

    std::string GetValue(std::string_view key, std::string_view defaultValue = {}) const;

    // For int, unsigned 64-bit and double: the number that the value spells. The default when the key is missing, and,
    // with a warning in the log, when the value is no such number.
    template <class T>
    T GetValueT(std::string_view key, T defaultValue) const;

    std::size_t GetCount() const { return m_entries.size() - m_tombstones; }
    // The bytes of all keys and values.
    std::size_t GetTextBytes() const { return m_textBytes; }

    // Calls visit(key, value) for every key in write order. The list must not be changed meanwhile.
    template <class Visit>
    void ForEach(Visit&& visit) const
    {
        for (const Entry& entry : m_entries) {
            if (!entry.IsTombstone())
                visit(entry.Name(), entry.Value());
        }
    }
    // The same with whole lines, "key=value".
    template <class Visit>
    void ForEachLine(Visit&& visit) const
    {
        for (const Entry& entry : m_entries) {
            if (!entry.IsTombstone())
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
        // What is left where a key was removed, or set again and moved to the end. It has no key, not even an empty
        // one: the line of an empty key begins with "=".
        bool IsTombstone() const { return line.empty(); }
    };

    std::size_t Size() const { return m_entries.size(); }
    const Entry& At(std::size_t position) const { return m_entries[position]; }
    bool IsLikelyNext(std::string_view key) const;
    const Entry* Find(std::string_view key) const;
    const Entry* ExpectedEntry(std::string_view text);
    bool KeysWereOnlyAdded() const { return m_tombstones == 0 && m_entries.size() == m_nextOrder; }
    void CheckOrder() const;
    void Set(const CFoldedName& key, std::string_view line);
    void Append(const Entry& entry);
    void Erase(std::size_t position);
    void Compact();

    CTextStore& m_texts;
    // In write order. Setting a key removes the tombstones when they outnumber the keys; removing a key never does.
    std::vector<Entry> m_entries;
    std::size_t m_tombstones = 0;
    std::size_t m_textBytes = 0;
    // Null as soon as this list is unlike the one before it. Until then the entries of both have equal keys at equal
    // positions, as far as this list goes.
    const CVELKeyToValueList* m_listBefore = nullptr;
    // Where the next key asked for is likely to be. Only a guess: it may be beyond the end, or a tombstone.
    mutable std::size_t m_likelyNext = 0;
    CFoldedIndex<CVELKeyToValueList> m_index;
    std::uint64_t m_nextOrder;
};

} // namespace veltaris::velstdlib::util
