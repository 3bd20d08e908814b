#include "velstdlib/util/VELKeyToValue.h"

#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/Log.h"

#include <boost/current_function.hpp>
#include <boost/lexical_cast/bad_lexical_cast.hpp>
#include <boost/throw_exception.hpp>

#include <limits>
#include <stdexcept>

namespace veltaris::velstdlib::util {

void CVELKeyToValueList::SetValue(std::string_view key, std::string_view value)
{
    if (value.empty()) {
        RemoveKey(key);
        return;
    }
    if (m_nextOrder == std::numeric_limits<std::uint64_t>::max())
        BOOST_THROW_EXCEPTION(std::runtime_error("Internal order value overflow"));
    m_entries.push_back({m_nextOrder, std::string(key), std::string(value)});
    ++m_nextOrder;
    RemoveKey(key);
    try {
        m_index.Insert(m_entries.size() - 1);
    } catch (...) {
        m_entries.pop_back();
        throw;
    }
    m_textBytes += key.size() + value.size();
    if (m_holes > GetCount())
        CloseHoles();
}

void CVELKeyToValueList::SetValue(std::string_view key, std::uint64_t value)
{
    SetValue(key, std::to_string(value));
}

void CVELKeyToValueList::RemoveKey(std::string_view key)
{
    if (const auto position = m_index.Find(key))
        MakeHole(*position);
}

std::string CVELKeyToValueList::GetValue(std::string_view key, std::string_view defaultValue) const
{
    const auto position = m_index.Find(key);
    return position ? m_entries[*position].value : std::string(defaultValue);
}

template <class T>
T CVELKeyToValueList::GetValueT(std::string_view key, T defaultValue) const
{
    const auto position = m_index.Find(key);
    if (!position)
        return defaultValue;
    try {
        return string::ParseNumber<T>(m_entries[*position].value);
    } catch (const boost::bad_lexical_cast& e) {
        LogWarning(BOOST_CURRENT_FUNCTION, e.what());
        return defaultValue;
    }
}

template int CVELKeyToValueList::GetValueT(std::string_view, int) const;
template std::uint64_t CVELKeyToValueList::GetValueT(std::string_view, std::uint64_t) const;
template double CVELKeyToValueList::GetValueT(std::string_view, double) const;

void CVELKeyToValueList::MakeHole(std::size_t position)
{
    m_index.Erase(position);
    m_textBytes -= m_entries[position].key.size() + m_entries[position].value.size();
    m_entries[position] = {};
    ++m_holes;
}

void CVELKeyToValueList::CloseHoles()
{
    std::erase_if(m_entries, [](const Entry& entry) { return entry.IsHole(); });
    m_holes = 0;
    m_index.Clear();
    for (std::size_t position = 0; position < m_entries.size(); ++position)
        m_index.Insert(position);
}

} // namespace veltaris::velstdlib::util
