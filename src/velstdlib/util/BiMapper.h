// A two-way table between an enumeration and the codes that stand for it in files and in the interface.
#pragma once

#include "velstdlib/util/ContainerHelper.h"

#include <boost/exception/exception.hpp>
#include <boost/throw_exception.hpp>

#include <initializer_list>
#include <map>
#include <stdexcept>
#include <utility>

namespace veltaris::velstdlib::util {

// A value has no partner in a BiMapper.
class CNoMappingException : public boost::exception, public std::out_of_range
{
    using std::out_of_range::out_of_range;
};

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

    Code map(Enum value) const
    {
        try {
            return CheckedAt(m_codes, value);
        } catch (const std::out_of_range& e) {
            BOOST_THROW_EXCEPTION(CNoMappingException(e.what()));
        }
    }

    Enum map(Code code) const
    {
        try {
            return CheckedAt(m_values, code);
        } catch (const std::out_of_range& e) {
            BOOST_THROW_EXCEPTION(CNoMappingException(e.what()));
        }
    }

private:
    std::map<Enum, Code> m_codes;
    std::map<Code, Enum> m_values;
};

} // namespace veltaris::velstdlib::util
