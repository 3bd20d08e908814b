// Data files for benchmarks, written without the library, and access to the library that turns its failures into
// exceptions. Like the library's stored error, nothing here may be used by several threads at once.
#pragma once

#include "support/Image.h"

#include <VELOxdDll.h>

#include <cstdint>
#include <string>
#include <utility>

namespace bench {

// Throws std::runtime_error with the library's error text if one of its calls has failed since the last check.
void CheckLibrary();

// Returns the header of a file with one group of this number of channels of the given shape, and with this number of
// information items. It ends with the end mark.
std::string HeaderOf(const Shape& shape, std::uint64_t channels, std::uint64_t infoItems = 0);
// Writes such a file, with its samples. Throws std::ios_base::failure if that fails.
void WriteOxd(const std::string& path, const Shape& shape, std::uint64_t channels = 1, std::uint64_t infoItems = 0);

// Owns the handle of an open file and closes it. A handle of 0 stands for no file.
class COxd
{
public:
    COxd() = default;
    static COxd Open(const std::string& path) { return COxd(OpenOxdFile(path.c_str())); }
    static COxd Create(const std::string& path) { return COxd(CreateOxdFile(path.c_str())); }
    // Creates a file with one channel, in group 0 and slot 0.
    static COxd CreateImage(const std::string& path, const Shape& shape);
    COxd(COxd&& other) noexcept : m_handle(std::exchange(other.m_handle, 0)) {}
    COxd& operator=(COxd&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~COxd() { Close(); }

    std::uint64_t operator*() const { return m_handle; }
    void SaveAs(const std::string& path) const;
    void Close() { CloseOxdFile(std::exchange(m_handle, 0)); }

private:
    explicit COxd(std::uint64_t handle);

    std::uint64_t m_handle = 0;
};

// Returns the checksum of every `step`th line of channel 0.
double ChecksumOf(std::uint64_t file, const Shape& shape, std::uint64_t step = 1);

} // namespace bench
