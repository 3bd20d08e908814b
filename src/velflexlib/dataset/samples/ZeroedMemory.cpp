#include "velflexlib/dataset/samples/ZeroedMemory.h"

#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>

#include <cstdint>
#endif

namespace veltaris::velflexlib::dataset {

namespace {

constexpr std::size_t hugePage = std::size_t{2} << 20U;

bool IsLarge(std::size_t bytes)
{
    return bytes >= hugePage;
}

#if defined(__linux__)

// Maps one huge page more than is needed and gives back what lies before the first boundary and behind the block.
void* AllocateLarge(std::size_t bytes)
{
    if (bytes > SIZE_MAX / 2)
        return nullptr;
    void* const mapped = mmap(nullptr, bytes + hugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) // NOLINT(cppcoreguidelines-pro-type-cstyle-cast): the system's macro
        return nullptr;
    auto* const begin = static_cast<std::byte*>(mapped);
    const std::size_t ahead = (hugePage - reinterpret_cast<std::uintptr_t>(begin) % hugePage) % hugePage;
    constexpr std::size_t page = 4096;
    const std::size_t used = (bytes + page - 1) / page * page;
    if (ahead > 0)
        munmap(begin, ahead);
    if (ahead + used < bytes + hugePage)
        munmap(begin + ahead + used, bytes + hugePage - ahead - used);
    madvise(begin + ahead, used, MADV_HUGEPAGE); // advice: without it the pages are small
    return begin + ahead;
}

void FreeLarge(void* memory, std::size_t bytes)
{
    munmap(memory, bytes);
}

#else

// The C library maps large blocks, does not touch their pages because these are zeros already, and unmaps the block as
// soon as it is freed.
void* AllocateLarge(std::size_t bytes)
{
    return std::calloc(bytes, 1); // NOLINT(cppcoreguidelines-no-malloc)
}

void FreeLarge(void* memory, std::size_t)
{
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc)
}

#endif

std::byte* Allocate(std::size_t bytes)
{
    void* const memory =
        IsLarge(bytes) ? AllocateLarge(bytes) : std::malloc(bytes); // NOLINT(cppcoreguidelines-no-malloc)
    if (!memory && bytes > 0)
        throw std::bad_alloc();
    return static_cast<std::byte*>(memory);
}

} // namespace

CZeroedMemory::CZeroedMemory(std::size_t bytes)
    : m_bytes(Allocate(bytes), Free{bytes}), m_owesZeros(bytes > 0 && !IsLarge(bytes))
{
}

void CZeroedMemory::WriteZeros() const
{
    m_owesZeros = false;
    std::memset(m_bytes.get(), 0, m_bytes.get_deleter().size);
}

void CZeroedMemory::Free::operator()(std::byte* bytes) const noexcept
{
    if (IsLarge(size))
        FreeLarge(bytes, size);
    else
        std::free(bytes); // NOLINT(cppcoreguidelines-no-malloc)
}

} // namespace veltaris::velflexlib::dataset
