// Where the samples of a channel are held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace veltaris::velflexlib::dataset {

// Lines of raw samples in one contiguous piece of memory. Samples that are still 0 cost no memory of their own where
// the system hands out zeroed pages on first use.
class CSampleBlock
{
public:
    CSampleBlock() = default;

    // Throws std::bad_alloc when memory runs out or a limit is exceeded.
    CSampleBlock(std::uint64_t points, std::uint64_t lines, std::int32_t fill);

    std::span<std::int32_t> All() { return {m_samples.get(), m_count}; }
    std::span<std::int32_t> Line(std::uint64_t line) { return All().subspan(line * m_points, m_points); }
    std::span<const std::int32_t> All() const { return {m_samples.get(), m_count}; }
    std::span<const std::int32_t> Line(std::uint64_t line) const { return All().subspan(line * m_points, m_points); }

    // Keeps the first `points` samples of each line; there must be as many.
    void ShortenLines(std::uint64_t points);

private:
    struct Free
    {
        void operator()(std::int32_t* samples) const { std::free(samples); }
    };

    std::uint64_t m_points = 0;
    std::size_t m_count = 0;
    std::unique_ptr<std::int32_t[], Free> m_samples;
};

} // namespace veltaris::velflexlib::dataset
