// A two-way table between the values of an enumeration and the codes that stand for them in files and in the
// interface. There is one such table per enumeration, made when the library is loaded.
#pragma once

#include "velstdlib/util/ContainerHelper.h"

#include <boost/exception/exception.hpp>
#include <boost/throw_exception.hpp>

#include <initializer_list>
#include <map>
#include <stdexcept>
#include <utility>

namespace veltaris::velstdlib::util {

// Thrown where a value or a code has no partner in a BiMapper.
class CNoMappingException : public boost::exception, public std::out_of_range
{
    using std::out_of_range::out_of_range;
};

// Each value has one code and each code one value: of pairs that repeat either, the first counts. A table does not
// change once it is made, so that any number of threads may use it.
template <class Enum, class Code>
class BiMapper
{
public:
    BiMapper(std::initializer_list<std::pair<Enum, Code>> pairs)
    {
        for (const auto& [value, code] : pairs) {
            m_codes.emplace(value, code);
            m_values.emplace(code, value);
        }
    }

    // Each gives the partner. Without one, CNoMappingException "invalid map<K, T> key" is thrown, which tells which of
    // the two functions was called.
    Code map(Enum value) const { return Partner(m_codes, value, BOOST_CURRENT_LOCATION); }
    Enum map(Code code) const { return Partner(m_values, code, BOOST_CURRENT_LOCATION); }

private:
    template <class Key, class T>
    static T Partner(const std::map<Key, T>& partners, const Key& key, const boost::source_location& where)
    {
        try {
            return CheckedAt(partners, key);
        } catch (const std::out_of_range& e) {
            boost::throw_exception(CNoMappingException(e.what()), where);
        }
    }

    std::map<Enum, Code> m_codes;
    std::map<Code, Enum> m_values;
};

} // namespace veltaris::velstdlib::util
