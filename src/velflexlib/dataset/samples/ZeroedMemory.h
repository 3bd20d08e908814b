// Memory of the system for samples.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace veltaris::velflexlib::dataset {

// A piece of memory that begins as zeros. Pages of a large one that are never touched cost nothing, and it is made of
// huge pages where the system has them: touching it page by page, and giving it back, is most of the time that opening
// and closing a file takes. Of a small one the zeros are written when it is first used, unless it is to be overwritten.
// Access needs a lock, to const ones too.
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

    // All of them are to be written before anything else is done with them.
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
