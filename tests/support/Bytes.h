// Writing and reading whole files as bytes.
#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

inline void WriteBytes(const std::string& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string ReadBytes(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
