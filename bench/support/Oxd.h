// Data files to measure with, written byte by byte, and the library's interface with its failures as exceptions.
#pragma once

#include "support/Image.h"

#include <VELOxdDll.h>

#include <cstdint>
#include <string>
#include <utility>

namespace bench {

// Throws std::runtime_error with the library's text when a call of it has failed.
void CheckLibrary();

// The header of a file whose one group has so many channels of this shape, and so many items of information, with the
// mark at its end.
std::string HeaderOf(const Shape& shape, std::uint64_t channels, std::uint64_t infoItems = 0);
void WriteOxd(const std::string& path, const Shape& shape, std::uint64_t channels = 1, std::uint64_t infoItems = 0);

// An open file, closed at the end.
class COxd
{
public:
    COxd() = default;
    static COxd Open(const std::string& path) { return COxd(OpenOxdFile(path.c_str())); }
    static COxd Create(const std::string& path) { return COxd(CreateOxdFile(path.c_str())); }
    // With one channel, group 0 and slot 0.
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

// Of the samples of channel 0, every `step`th line.
double ChecksumOf(std::uint64_t file, const Shape& shape, std::uint64_t step = 1);

} // namespace bench
