// Checked element access whose failures read the same on every platform.
#pragma once

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <vector>

namespace veltaris::velstdlib::util {

// Each throws a plain std::out_of_range, whose text is all that a caller of the library sees of it.

[[noreturn]] inline void ThrowVectorSubscript()
{
    throw std::out_of_range("invalid vector<T> subscript");
}

template <class T>
T& CheckedAt(std::vector<T>& elements, std::size_t index)
{
    if (index >= elements.size())
        ThrowVectorSubscript();
    return elements[index];
}

template <class Array>
auto& CheckedArrayAt(Array& elements, std::size_t index)
{
    if (index >= elements.size())
        throw std::out_of_range("invalid array<T, N> subscript");
    return elements[index];
}

template <class Key, class T>
const T& CheckedAt(const std::map<Key, T>& elements, const Key& key)
{
    const auto found = elements.find(key);
    if (found == elements.end())
        throw std::out_of_range("invalid map<K, T> key");
    return found->second;
}

// Moves one element to another position; those between make way by one. Throws std::out_of_range "Source index out of
// range" or "Destinatin index out of range" (sic).
template <class T>
void MoveElement(std::vector<T>& elements, std::size_t from, std::size_t to)
{
    if (from >= elements.size())
        BOOST_THROW_EXCEPTION(std::out_of_range("Source index out of range"));
    if (to >= elements.size())
        BOOST_THROW_EXCEPTION(std::out_of_range("Destinatin index out of range"));
    const auto at = [&](std::size_t index) { return elements.begin() + static_cast<std::ptrdiff_t>(index); };
    if (to < from)
        std::rotate(at(to), at(from), at(from + 1));
    else
        std::rotate(at(from), at(from + 1), at(to + 1));
}

} // namespace veltaris::velstdlib::util
