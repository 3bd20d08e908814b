// The C interface of the library with failures as exceptions and handles that close themselves.
#pragma once

#include <VELOxdDll.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace oxd {

// A call on an open data set failed. what() is the reason alone.
class LibraryError : public std::runtime_error
{
public:
    explicit LibraryError(const std::string& text);
    bool IsShortBuffer() const { return m_shortBuffer; }

private:
    bool m_shortBuffer;
};

// Throws the failure that the last call into the library left, if it left one.
void ThrowPendingError();

class DataSet
{
public:
    // Throws a Failure if the file cannot be opened, is damaged or of another format.
    static DataSet Open(const std::string& file);
    static DataSet Create();

    DataSet(DataSet&& other) noexcept : m_handle(std::exchange(other.m_handle, 0)) {}
    DataSet& operator=(DataSet&&) = delete;
    ~DataSet() { CloseOxdFile(m_handle); }

    // Throws a Failure if the file cannot be written.
    void SaveAs(const std::string& file);

    // Calls a function of the interface on this data set; throws a LibraryError if it fails.
    template <typename Result, typename... Parameters>
    Result Call(Result (*function)(std::uint64_t, Parameters...), std::type_identity_t<Parameters>... arguments) const
    {
        if constexpr (std::is_void_v<Result>) {
            function(m_handle, arguments...);
            ThrowPendingError();
        } else {
            const Result result = function(m_handle, arguments...);
            ThrowPendingError();
            return result;
        }
    }

    // Calls a function that fills a text buffer and returns the text.
    template <typename... Parameters>
    std::string Text(void (*function)(std::uint64_t, Parameters...), auto... arguments) const
    {
        for (std::string buffer(256, '\0');; buffer.resize(buffer.size() * 4)) {
            try {
                Call(function, arguments..., buffer.data(), buffer.size());
                return buffer.substr(0, buffer.find('\0'));
            } catch (const LibraryError& error) {
                if (!error.IsShortBuffer()) {
                    throw;
                }
            }
        }
    }

private:
    explicit DataSet(std::uint64_t handle) : m_handle(handle) {}

    std::uint64_t m_handle;
};

} // namespace oxd
