// Checked access to the elements of containers, and moving them. These functions keep no state: they may be called by
// several threads as far as the container allows it.
#pragma once

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <vector>

namespace veltaris::velstdlib::util {

// The checked functions throw a plain std::out_of_range, without the place of the failure: a caller of the library sees
// nothing but its text, which reads the same on every platform.

// Throws "invalid vector<T> subscript".
[[noreturn]] inline void ThrowVectorSubscript()
{
    throw std::out_of_range("invalid vector<T> subscript");
}

// The element at a position of a vector, which throws as above when there is none.
template <class T>
T& CheckedAt(std::vector<T>& elements, std::size_t index)
{
    if (index >= elements.size())
        ThrowVectorSubscript();
    return elements[index];
}

// The element at a position of an array, which throws "invalid array<T, N> subscript". Views of arrays will do as well.
template <class Array>
auto& CheckedArrayAt(Array& elements, std::size_t index)
{
    if (index >= elements.size())
        throw std::out_of_range("invalid array<T, N> subscript");
    return elements[index];
}

// The value of a key, which throws "invalid map<K, T> key" when the map does not have it.
template <class Key, class T>
const T& CheckedAt(const std::map<Key, T>& elements, const Key& key)
{
    const auto found = elements.find(key);
    if (found == elements.end())
        throw std::out_of_range("invalid map<K, T> key");
    return found->second;
}

// Moves one element to another position; those between move by one towards where it was. Throws std::out_of_range
// "Source index out of range" or "Destinatin index out of range", which is spelt like this on purpose: callers know it.
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
