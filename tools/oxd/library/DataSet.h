// The C interface of the library with failures as exceptions and handles that close themselves. What the tool does with
// files of the format goes through the public header of the library, which is included only here.
#pragma once

#include "oxd/files/OutputFile.h"

#include <VELOxdDll.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace oxd {

// A call on an open data set failed. what() is the reason alone: whoever knows what the call was about makes a Failure
// of it.
class LibraryError : public std::runtime_error
{
public:
    explicit LibraryError(const std::string& text);

    // Whether the buffer for a text was too small, so that a larger one may do.
    bool IsShortBuffer() const { return m_shortBuffer; }

private:
    bool m_shortBuffer;
};

// Throws the failure that the last call into the library left, if it left one: a lack of memory as std::bad_alloc.
void ThrowPendingError();

// Owns a handle of the library and closes it in the end; a DataSet that was moved from owns none and only waits to be
// destroyed. Calls that change the data set are const, since it is the library that holds it.
class DataSet
{
public:
    // Throws a Failure if the file cannot be opened, is damaged or of another format.
    static DataSet Open(const std::string& file);

    // An empty data set that has no name yet.
    static DataSet Create();

    DataSet(DataSet&& other) noexcept : m_handle(std::exchange(other.m_handle, 0)) {}
    DataSet& operator=(DataSet&&) = delete;
    ~DataSet() { CloseOxdFile(m_handle); }

    // Saves the data set into the file that is to become the output, and gives the name of that. Throws a Failure if it
    // cannot be written. Views, processors and sections that the library does not know are not saved.
    std::string SaveTo(OutputFile& output);

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

    // Calls a function that fills a text buffer, with larger buffers until the text fits, and returns the text.
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
