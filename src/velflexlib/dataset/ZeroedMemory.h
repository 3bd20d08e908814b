// Memory of the system for samples.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace veltaris::velflexlib::dataset {

// A piece of memory that begins as zeros. Pages of it that are never touched cost nothing. A large one is made of huge
// pages where the system has them: touching it page by page, and giving it back, is most of the time that opening and
// closing a file takes.
class CZeroedMemory
{
public:
    CZeroedMemory() noexcept : m_bytes(nullptr, Free{0}) {}
    // Throws std::bad_alloc.
    explicit CZeroedMemory(std::size_t bytes);

    std::span<std::byte> Bytes() { return {m_bytes.get(), m_bytes.get_deleter().size}; }
    std::span<const std::byte> Bytes() const { return {m_bytes.get(), m_bytes.get_deleter().size}; }

private:
    struct Free
    {
        std::size_t size;
        void operator()(std::byte* bytes) const noexcept;
    };

    std::unique_ptr<std::byte[], Free> m_bytes;
};

} // namespace veltaris::velflexlib::dataset
