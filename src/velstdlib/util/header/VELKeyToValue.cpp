#include "velstdlib/util/header/VELKeyToValue.h"

#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/Log.h"
#include "velstdlib/util/VELException.h"

#include <boost/current_function.hpp>
#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <boost/throw_exception.hpp>

#include <array>
#include <charconv>
#include <limits>
#include <stdexcept>

namespace veltaris::velstdlib::util {

namespace {

// A line of a file has no empty key, though the list before may have got one otherwise.
bool HasKeyAndValue(std::string_view line, std::size_t keyLength)
{
    return keyLength > 0 && line.size() > keyLength + 1 && line[keyLength] == '=';
}

} // namespace

void CVELKeyToValueList::SetValue(std::string_view key, std::string_view value)
{
    if (value.empty())
        return RemoveKey(key);
    CheckOrder();
    if (const Entry* const same = ExpectedEntry(key); same && same->keyLength == key.size())
        return Append({m_texts.KeepLine(key, value), same->keyLength, same->hash});
    Set(CFoldedName(key), m_texts.KeepLine(key, value));
}

void CVELKeyToValueList::SetValue(std::string_view key, std::uint64_t value)
{
    std::array<char, std::numeric_limits<std::uint64_t>::digits10 + 1> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    SetValue(key, std::string_view(digits.begin(), end));
}

void CVELKeyToValueList::ExpectKeysOf(const CVELKeyToValueList& before)
{
    m_entries.reserve(before.GetCount());
    m_listBefore = &before;
}

void CVELKeyToValueList::SetLine(std::string_view line)
{
    if (const Entry* const same = ExpectedEntry(line); same && HasKeyAndValue(line, same->keyLength)) {
        CheckOrder();
        return Append({line, same->keyLength, same->hash});
    }
    const auto equals = line.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return;
    const std::string_view key = line.substr(0, equals);
    if (!HasKeyAndValue(line, equals))
        return RemoveKey(key);
    CheckOrder();
    Set(CFoldedName(key), line);
}

// The entry of the list before that stands where this list goes on, if the text starts with its key. The first text
// that does not ends the likeness for good.
auto CVELKeyToValueList::ExpectedEntry(std::string_view text) -> const Entry*
{
    const std::size_t position = m_entries.size();
    if (m_listBefore && m_listBefore->KeysWereOnlyAdded() && position < m_listBefore->m_entries.size()) {
        const Entry& entry = m_listBefore->m_entries[position];
        if (text.starts_with(entry.Name()))
            return &entry;
    }
    m_listBefore = nullptr;
    return nullptr;
}

void CVELKeyToValueList::CheckOrder() const
{
    if (m_nextOrder == std::numeric_limits<std::uint64_t>::max())
        BOOST_THROW_EXCEPTION(std::runtime_error("Internal order value overflow"));
}

// For keys that were not expected: from here on the list is unlike the one before.
void CVELKeyToValueList::Set(const CFoldedName& key, std::string_view line)
{
    m_listBefore = nullptr;
    if (key.text.size() > limits::headerBytes)
        ThrowFileSave({}, string::TextId::TooMuchTextForFile);
    const auto replaced = m_index.Find(key);
    Append({line, static_cast<std::uint32_t>(key.text.size()), key.hash});
    if (replaced)
        Erase(*replaced);
    if (m_tombstones > GetCount())
        Compact();
}

// The key may still stand elsewhere: it is not looked for until that was erased.
void CVELKeyToValueList::Append(const Entry& entry)
{
    m_entries.push_back(entry);
    try {
        m_index.Insert(m_entries.size() - 1);
    } catch (...) {
        m_entries.pop_back();
        throw;
    }
    ++m_nextOrder;
    m_textBytes += entry.TextBytes();
}

void CVELKeyToValueList::RemoveKey(std::string_view key)
{
    if (const auto position = m_index.Find(CFoldedName(key)))
        Erase(*position);
}

bool CVELKeyToValueList::IsLikelyNext(std::string_view key) const
{
    if (m_likelyNext >= m_entries.size())
        return false;
    const Entry& entry = m_entries[m_likelyNext];
    return entry.Name() == key && !entry.IsTombstone();
}

auto CVELKeyToValueList::Find(std::string_view key) const -> const Entry*
{
    if (!IsLikelyNext(key)) {
        const auto position = m_index.Find(CFoldedName(key));
        if (!position)
            return nullptr;
        m_likelyNext = *position;
    }
    return &m_entries[m_likelyNext++];
}

std::string CVELKeyToValueList::GetValue(std::string_view key, std::string_view defaultValue) const
{
    const Entry* const entry = Find(key);
    return std::string(entry ? entry->Value() : defaultValue);
}

template <class T>
T CVELKeyToValueList::GetValueT(std::string_view key, T defaultValue) const
{
    const Entry* const entry = Find(key);
    if (!entry)
        return defaultValue;
    try {
        return string::ParseNumber<T>(entry->Value());
    } catch (const boost::bad_lexical_cast& e) {
        LogWarning(BOOST_CURRENT_FUNCTION, e.what());
        return defaultValue;
    }
}

template int CVELKeyToValueList::GetValueT(std::string_view, int) const;
template std::uint64_t CVELKeyToValueList::GetValueT(std::string_view, std::uint64_t) const;
template double CVELKeyToValueList::GetValueT(std::string_view, double) const;

void CVELKeyToValueList::Erase(std::size_t position)
{
    m_listBefore = nullptr;
    m_index.Erase(position);
    m_textBytes -= m_entries[position].TextBytes();
    m_entries[position] = {};
    ++m_tombstones;
}

void CVELKeyToValueList::Compact()
{
    std::erase_if(m_entries, [](const Entry& entry) { return entry.IsTombstone(); });
    m_tombstones = 0;
    m_index.Rebuild();
}

} // namespace veltaris::velstdlib::util
