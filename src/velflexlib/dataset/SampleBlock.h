// Where the samples of a channel are held.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Lines of raw samples in one contiguous piece of memory. Some lines may have no storage in it until they are written.
// Samples that are still 0 cost no memory of their own where the system hands out zeroed pages on first use.
class CSampleBlock
{
public:
    CSampleBlock() = default;

    // Zeros. `absentLines`, in ascending order, get no storage. Throws std::bad_alloc when memory runs out or a limit
    // is exceeded.
    CSampleBlock(std::uint64_t points, std::uint64_t lines, std::vector<std::uint64_t> absentLines = {});

    // The storage of all lines that have any, in their order.
    std::span<std::int32_t> All() { return {m_samples.get(), m_count}; }
    std::span<const std::int32_t> All() const { return {m_samples.get(), m_count}; }

    // Empty for a line without storage.
    std::span<const std::int32_t> Line(std::uint64_t line) const;
    // Gives the line storage first if it has none; throws std::bad_alloc when there is no memory for that.
    std::span<std::int32_t> WritableLine(std::uint64_t line);

    // Keeps the first `points` samples of each line; there must be as many.
    void ShortenLines(std::uint64_t points);

private:
    struct Free
    {
        void operator()(std::int32_t* samples) const { std::free(samples); } // NOLINT(cppcoreguidelines-no-malloc)
    };

    bool IsAbsent(std::uint64_t line) const;
    std::size_t Offset(std::uint64_t line) const;
    void GiveAllLinesStorage();

    std::uint64_t m_points = 0;
    std::uint64_t m_lines = 0;
    std::vector<std::uint64_t> m_absentLines;
    std::size_t m_count = 0;
    std::unique_ptr<std::int32_t[], Free> m_samples;
};

} // namespace veltaris::velflexlib::dataset
