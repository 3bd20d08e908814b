// Where the samples of a channel are held.
#pragma once

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/samples/ZeroedMemory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Adjacent samples of a block, to be read only. It is valid until the block changes.
class CStoredSamples
{
public:
    CStoredSamples() = default;
    CStoredSamples(const std::byte* stored, SampleWidth width, std::uint64_t count)
        : m_stored(stored), m_width(width), m_count(count)
    {
    }

    SampleWidth Width() const { return m_width; }
    std::uint64_t Count() const { return m_count; }
    CStoredSamples First(std::uint64_t count) const { return {m_stored, m_width, count}; }

    const std::byte* From(std::uint64_t index) const { return m_stored + index * BytesPerSample(m_width); }
    const CStoredKernels& Kernels() const { return KernelsOf(m_width); }

    // There must be as many.
    std::int32_t At(std::uint64_t index) const { return DecodeSample(From(index), m_width); }
    void Read(std::uint64_t first, std::span<std::int32_t> samples) const
    {
        if (samples.size() == 1)
            samples.front() = At(first);
        else
            DecodeSamples(From(first), m_width, samples);
    }

private:
    const std::byte* m_stored = nullptr;
    SampleWidth m_width = SampleWidth::Bits32;
    std::uint64_t m_count = 0;
};

// Lines of raw samples in one contiguous piece of memory, as a file of some width has them. A sample that this width
// cannot hold moves all of them to 32 bits. Some lines may have no storage until they are written.
class CSampleBlock
{
public:
    CSampleBlock() = default;

    // Zeros. `absentLines`, in ascending order, get no storage. Throws std::bad_alloc when memory runs out or a limit
    // is exceeded.
    CSampleBlock(std::uint64_t points, std::uint64_t lines, SampleWidth width,
                 std::vector<std::uint64_t> absentLines = {});

    SampleWidth Width() const { return m_width; }

    // The storage of all lines that have any, in their order.
    CStoredSamples All() const { return {m_memory.Bytes().data(), m_width, m_count}; }
    std::span<const std::byte> Bytes() const { return m_memory.Bytes().first(m_count * BytesPerSample(m_width)); }
    // All of them are to be written before anything else is done with the block.
    std::span<std::byte> BytesToOverwrite()
    {
        return m_memory.BytesToOverwrite().first(m_count * BytesPerSample(m_width));
    }

    // Empty for a line without storage.
    CStoredSamples Line(std::uint64_t line) const
    {
        if (IsAbsent(line))
            return {};
        return {m_memory.Bytes().data() + Offset(line) * BytesPerSample(m_width), m_width, m_points};
    }

    // Gives the line storage, and all samples a width, that samples with no other bits than these can be written to.
    // Throws std::bad_alloc, with nothing changed, when there is no memory for that.
    void MakeWritable(std::uint64_t line, std::int32_t bits)
    {
        if (!FitInto(m_width, bits) || IsAbsent(line))
            Move(line, bits);
    }
    // Stores adjacent samples of a line that was made writable.
    void Write(std::uint64_t line, std::uint64_t first, std::span<const std::int32_t> samples);
    void Write(std::uint64_t line, std::uint64_t point, std::int32_t sample)
    {
        EncodeSample(sample, m_width, AddressOf(line, point));
    }
    void FillWithZeros(std::uint64_t line, std::uint64_t first);

    // Keeps the first `points` samples of each line; there must be as many.
    void ShortenLines(std::uint64_t points);

    // Takes the storage of these lines away, in ascending order, which are all that are to have none: zeros stood
    // there.
    void RemoveLines(std::vector<std::uint64_t> absentLines);
    std::size_t AbsentCount() const { return m_absentLines.size(); }

private:
    bool IsAbsent(std::uint64_t line) const
    {
        return !m_absentLines.empty() && std::ranges::binary_search(m_absentLines, line);
    }
    std::uint64_t Offset(std::uint64_t line) const
    {
        return (m_absentLines.empty() ? line : line - AbsentBefore(line)) * m_points;
    }
    std::uint64_t AbsentBefore(std::uint64_t line) const;
    void Move(std::uint64_t line, std::int32_t bits);
    std::byte* AddressOf(std::uint64_t line, std::uint64_t point)
    {
        return m_memory.Bytes().data() + (Offset(line) + point) * BytesPerSample(m_width);
    }

    std::uint64_t m_points = 0;
    std::uint64_t m_lines = 0;
    SampleWidth m_width = SampleWidth::Bits32;
    std::vector<std::uint64_t> m_absentLines;
    std::uint64_t m_count = 0;
    CZeroedMemory m_memory;
};

} // namespace veltaris::velflexlib::dataset
