// Numbers as header texts. No locale takes part, neither the one of C nor the global one of C++, and the functions may
// be called by several threads at once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::string {

// The number that the whole text spells, for int, unsigned 64-bit and double; throws boost::bad_lexical_cast.
// Integers are decimal digits after an optional sign, without blanks and within the type's range; a negative
// unsigned number wraps around. Doubles also take a fraction, an exponent, "inf", "infinity", "nan" and
// "nan(...)" in any case, and the legacy spellings of these, such as "1.#INF" and "-1.#IND", in this case only.
template <class T>
T ParseNumber(std::string_view text);

template <>
int ParseNumber<int>(std::string_view text);
template <>
std::uint64_t ParseNumber<std::uint64_t>(std::string_view text);
template <>
double ParseNumber<double>(std::string_view text);

// The number that the text begins with, after white space and whatever follows its digits. Throws a plain
// std::invalid_argument "invalid stoi argument" when there is none, and std::out_of_range "stoi argument out of range".
int ParseLeadingInt(std::string_view text);

// As "%g" writes it: 6 significant digits, which is the precision that the file format has.
std::string FormatDouble(double value);

} // namespace veltaris::velstdlib::string
