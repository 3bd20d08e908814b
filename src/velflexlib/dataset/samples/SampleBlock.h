// The storage of a channel's samples.
#pragma once

#include "velflexlib/dataset/samples/HeldLines.h"
#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/samples/ZeroedMemory.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace veltaris::velflexlib::dataset {

// Adjacent samples of a block, for reading only. It is valid until the block changes, so it is used under the lock that
// guards the block.
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

    // The samples that are read must exist.
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

// Lines of raw samples, one behind the other in memory, as a file of some width has them. A sample that this width
// cannot hold moves all of them to 32 bits. Lines that are not held have no storage until one of them is written.
// Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CSampleBlock
{
public:
    CSampleBlock() = default;

    // Zeros in the lines that are held. Throws std::bad_alloc when memory runs out or a limit is exceeded.
    CSampleBlock(std::uint64_t points, std::uint64_t lines, CHeldLines held, SampleWidth width = SampleWidth::Bits32);
    // All lines are held, in 32 bits: writing them moves nothing.
    CSampleBlock(std::uint64_t points, std::uint64_t lines) : CSampleBlock(points, lines, CHeldLines(lines)) {}

    SampleWidth Width() const { return m_width; }
    const CHeldLines& Held() const { return m_held; }

    // All samples that are held, in the order of their lines.
    CStoredSamples All() const { return {m_memory.Bytes().data(), m_width, m_count}; }
    std::span<const std::byte> Bytes() const { return m_memory.Bytes().first(m_count * BytesPerSample(m_width)); }
    // All of them must be written before anything else is done with the block, or dropped by KeepBytes.
    std::span<std::byte> BytesToOverwrite()
    {
        return m_memory.BytesToOverwrite().first(m_count * BytesPerSample(m_width));
    }

    // Empty for a line that is not held.
    CStoredSamples Line(std::uint64_t line) const
    {
        if (!m_held.Contains(line))
            return {};
        return {m_memory.Bytes().data() + Offset(line) * BytesPerSample(m_width), m_width, m_points};
    }

    // Makes the line held, and widens all samples if samples with these bits would not fit. When a line that is not
    // held is written, all lines below the end become held, or all lines of the channel if it is beyond the end: so
    // writing them one by one moves the samples only once. Throws std::bad_alloc, with nothing changed, when memory
    // runs out or a limit is exceeded.
    void MakeWritable(std::uint64_t line, std::int32_t bits)
    {
        if (!FitInto(m_width, bits) || !m_held.Contains(line))
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

    // Keeps no other lines than these, which must be held.
    void KeepLines(CHeldLines held);
    // Keeps only the lines whose samples are all in the first `bytes` bytes.
    void KeepBytes(std::size_t bytes);

private:
    std::uint64_t Offset(std::uint64_t line) const { return m_held.RowOf(line) * m_points; }
    CHeldLines HeldToWrite(std::uint64_t line) const;
    void Move(std::uint64_t line, std::int32_t bits);
    std::byte* AddressOf(std::uint64_t line, std::uint64_t point)
    {
        return m_memory.Bytes().data() + (Offset(line) + point) * BytesPerSample(m_width);
    }

    std::uint64_t m_points = 0;
    std::uint64_t m_lines = 0;
    SampleWidth m_width = SampleWidth::Bits32;
    CHeldLines m_held;
    std::uint64_t m_count = 0; // samples of all lines that are held
    CZeroedMemory m_memory;
};

} // namespace veltaris::velflexlib::dataset
