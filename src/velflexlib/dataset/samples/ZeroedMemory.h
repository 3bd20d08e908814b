// Memory for samples, straight from the system.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace veltaris::velflexlib::dataset {

// A block of memory that begins as zeros. Pages of a large block that are never touched cost nothing, and they are huge
// pages where the system has them: touching pages one by one and giving them back takes most of the time of opening and
// closing a file. A small block is zeroed when it is first used, unless it is overwritten then.
// Invariant: while m_owesZeros is set, nobody has seen the bytes.
// Not thread-safe, not even for reading, since the first reader writes the zeros: guarded by the lock of the
// CDataBuffer that owns it.
class CZeroedMemory
{
public:
    CZeroedMemory() noexcept : m_bytes(nullptr, Free{0}) {}
    // Throws std::bad_alloc.
    explicit CZeroedMemory(std::size_t bytes);

    std::span<std::byte> Bytes()
    {
        WriteZerosOwed();
        return {m_bytes.get(), m_bytes.get_deleter().size};
    }
    std::span<const std::byte> Bytes() const
    {
        WriteZerosOwed();
        return {m_bytes.get(), m_bytes.get_deleter().size};
    }

    // The caller must write all of them before anything else is done with them, except those that are never read again.
    std::span<std::byte> BytesToOverwrite()
    {
        m_owesZeros = false;
        return Bytes();
    }

private:
    struct Free
    {
        std::size_t size;
        void operator()(std::byte* bytes) const noexcept;
    };

    void WriteZerosOwed() const
    {
        if (m_owesZeros && m_bytes) // none is left when it was moved from
            WriteZeros();
    }
    void WriteZeros() const;

    std::unique_ptr<std::byte[], Free> m_bytes;
    mutable bool m_owesZeros = false;
};

} // namespace veltaris::velflexlib::dataset
