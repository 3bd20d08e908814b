// Where the texts of a document are kept: one block for the text that was parsed, and blocks for what is added.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>

namespace veltaris::velstdlib::util {

// A text that is kept stays where it is until Reset is called or the store destroyed, and views of it are valid until
// then. Single texts cannot be given back. Not thread-safe.
class CTextStore
{
public:
    CTextStore() = default;
    CTextStore(const CTextStore&) = delete;
    CTextStore& operator=(const CTextStore&) = delete;
    ~CTextStore() = default;

    // Drops all texts and takes this one over, without copying it. The result is a view of it.
    std::string_view Reset(std::string text);

    // Copies the text. The result is a view of the copy.
    std::string_view Keep(std::string_view text);
    // Keeps "key=value", which is a line of a header without its end.
    std::string_view KeepLine(std::string_view key, std::string_view value);

private:
    char* Allocate(std::size_t bytes) { return static_cast<char*>(m_rest.allocate(bytes, 1)); }

    std::string m_first;
    std::pmr::monotonic_buffer_resource m_rest;
};

} // namespace veltaris::velstdlib::util
