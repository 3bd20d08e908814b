// An array that grows without moving its elements.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace veltaris::velstdlib::util {

// The elements stand in chunks, each as long as all before it together, so that none ever moves. They are made with
// the value that `Element()` has and are destroyed with the array.
// Find may be called by any thread at any time and takes no lock. Grow is for one thread at a time, beside any number
// that find. What several threads do to an element at once is the element's business: an atomic one needs nothing else.
template <class Element>
class CStableArray
{
public:
    CStableArray() = default;
    CStableArray(const CStableArray&) = delete;
    CStableArray& operator=(const CStableArray&) = delete;
    ~CStableArray()
    {
        for (auto& chunk : m_chunks)
            std::unique_ptr<Element[]>(chunk.load()); // NOLINT(bugprone-unused-raii): deletes it
    }

    // Null when the array has never grown that far.
    Element* Find(std::uint64_t index) const noexcept
    {
        if (index >= mostElements)
            return nullptr;
        const CPlace place(index);
        Element* const chunk = m_chunks[place.chunk].load(std::memory_order_acquire);
        return chunk ? chunk + place.offset : nullptr;
    }

    // The element, which is made if there is none. Throws std::bad_alloc, with nothing changed.
    Element& Grow(std::uint64_t index)
    {
        if (index >= mostElements)
            throw std::bad_alloc();
        const CPlace place(index);
        auto& chunk = m_chunks[place.chunk];
        if (!chunk.load(std::memory_order_relaxed))
            chunk.store(std::make_unique<Element[]>(firstChunk << place.chunk).release(), std::memory_order_release);
        return chunk.load(std::memory_order_relaxed)[place.offset];
    }

private:
    static constexpr std::uint64_t firstChunk = 64; // elements; a power of two
    static constexpr std::size_t chunkCount = 48;
    static constexpr std::uint64_t mostElements = (firstChunk << chunkCount) - firstChunk; // more than memory can hold

    // Counted from `firstChunk`, the highest bit of an index tells its chunk, and the others are its offset there.
    struct CPlace
    {
        explicit CPlace(std::uint64_t index)
            : chunk(static_cast<std::size_t>(std::bit_width(index + firstChunk) - std::bit_width(firstChunk))),
              offset((index + firstChunk) ^ (firstChunk << chunk))
        {
        }
        std::size_t chunk;
        std::uint64_t offset;
    };

    std::array<std::atomic<Element*>, chunkCount> m_chunks{};
};

} // namespace veltaris::velstdlib::util
