// Where the texts of a document are kept.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// Texts stay where they are, and all go together: views of them are good until then.
class CTextStore
{
public:
    CTextStore() = default;
    CTextStore(const CTextStore&) = delete;
    CTextStore& operator=(const CTextStore&) = delete;
    ~CTextStore() = default;

    // Drops all texts and takes this one over, without a copy.
    std::string_view Reset(std::string text);

    std::string_view Keep(std::string_view text);
    // A line of a header, as it is written but for its end.
    std::string_view KeepLine(std::string_view key, std::string_view value);

private:
    char* Allocate(std::size_t bytes) { return static_cast<char*>(m_rest.allocate(bytes, 1)); }

    std::string m_first;
    std::pmr::monotonic_buffer_resource m_rest;
};

} // namespace veltaris::velstdlib::util
