// Numbers as bytes with the lowest one first, whatever the order of this machine is.
#pragma once

#include <concepts>
#include <string>

namespace oxd {

template <std::unsigned_integral Number>
void AppendLittleEndian(std::string& bytes, Number number)
{
    for (std::size_t i = 0; i < sizeof number; ++i) {
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    }
}

} // namespace oxd
