#include "velflexlib/dataset/serialisers/DataBufferToVELConfig.h"

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/serialisers/ChannelSection.h"

#include <algorithm>
#include <cstddef>
#include <istream>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CFileWriter;
using velstdlib::util::CHeaderSection;
using velstdlib::util::CVELConfig;

namespace {

// So much is read or written at a time: enough for the cost of a system call not to matter, and little enough to stay
// in a processor's second-level cache.
constexpr std::size_t bytesPerTransfer = std::size_t{1} << 20U;

// Adds to `filled` what was read into the bytes, in whole samples, also when the stream throws.
void ReadChunk(std::istream& stream, std::span<std::byte> bytes, SampleWidth width, std::size_t& filled)
{
    const auto count = [&] {
        const auto got = static_cast<std::size_t>(stream.gcount());
        const auto whole = got - got % BytesPerSample(width);
        DropSpareBits(bytes.first(whole), width);
        filled += whole;
    };
    try {
        stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    } catch (const std::ios_base::failure&) {
        count();
        throw;
    }
    count();
}

// Fills the bytes with lines of `lineBytes`, and with zeros from where the stream ends or, ahead of a line, reading is
// to end. Short lines are read many at a time, and `abort` is asked as often.
void ReadLines(std::istream& stream, std::span<std::byte> bytes, SampleWidth width, std::size_t lineBytes,
               const std::atomic<bool>& abort, std::size_t& filled)
{
    const std::size_t batchBytes = lineBytes * std::max<std::size_t>(bytesPerTransfer / lineBytes, 1);
    while (!abort && stream && filled < bytes.size()) {
        const std::size_t end = filled + std::min(bytes.size() - filled, batchBytes);
        while (stream && filled < end)
            ReadChunk(stream, bytes.subspan(filled, std::min(end - filled, bytesPerTransfer)), width, filled);
    }
    std::ranges::fill(bytes.subspan(filled), std::byte{});
}

// Writes samples as they are if they are held in the width of the file. Converts them in `buffer` if not, or fills that
// with zeros if the channel was reshaped meanwhile and has fewer samples.
void WriteSamples(CFileWriter& file, const CSampleBlock& samples, SampleWidth width, std::uint64_t first,
                  std::span<std::byte> buffer)
{
    const std::uint64_t count = buffer.size() / BytesPerSample(width);
    const bool areThere = first + count <= samples.All().Count();
    const std::size_t offset = first * BytesPerSample(samples.Width());
    if (areThere && samples.Width() == width)
        return file.Write(samples.Bytes().subspan(offset, buffer.size()));
    if (areThere)
        TranscodeSamples(samples.Bytes().data() + offset, samples.Width(), count, buffer.data(), width);
    else
        std::ranges::fill(buffer, std::byte{});
    file.Write(buffer);
}

} // namespace

void CDataBufferToVELConfig::LoadHeader(const CHeaderSection& section, CLoadBudget& budget)
{
    CChannelHeader header = ReadChannelSection(section);
    if (header.points == 0 && !budget.TakePointlessLines(header.lines))
        section.ThrowBadContent(channelLinesKey);
    m_buffer.SetGroupName(std::move(header.frame));
    for (std::size_t axis = 0; axis < header.axes.size(); ++axis)
        m_buffer.SetAxis(axis, std::move(header.axes[axis]));
    m_buffer.SetBitCount(header.bitCount);
    m_buffer.Restore(header.points, header.lines, std::move(header.ownLineAxes),
                     static_cast<std::uint64_t>(header.currentLine));
}

void CDataBufferToVELConfig::SaveHeader(CVELConfig& document, const std::string& sectionName)
{
    document.GetContent().SelectCreateSection(sectionName);
    WriteChannelSection(document.GetContent().GetActiveSection(), m_buffer);
}

void CDataBufferToVELConfig::LoadData(std::istream& stream, std::uint64_t& bytesLeft, const std::atomic<bool>& abort)
{
    const std::size_t points = m_buffer.GetPoints();
    const auto load = [&](std::span<std::byte> bytes, SampleWidth width, std::size_t& filled) {
        bytesLeft -= bytes.size();
        if (!bytes.empty())
            ReadLines(stream, bytes, width, points * BytesPerSample(width), abort, filled);
    };
    if (!m_buffer.LoadSamples(bytesLeft, load) && !abort)
        stream.setstate(std::ios::eofbit | std::ios::failbit);
}

std::size_t CDataBufferToVELConfig::TransferBytes() const
{
    constexpr std::uint64_t least = 4096;
    return std::clamp<std::uint64_t>(m_buffer.GetStoredSampleCount() * sizeof(std::int32_t), least, bytesPerTransfer);
}

void CDataBufferToVELConfig::SaveData(CFileWriter& file, std::span<std::byte> buffer)
{
    const SampleWidth width = WidthOfBits(m_buffer.GetBitCount());
    const std::uint64_t samplesPerTransfer = buffer.size() / BytesPerSample(width);
    const std::uint64_t sampleCount = m_buffer.GetStoredSampleCount();
    for (std::uint64_t first = 0; first < sampleCount; first += samplesPerTransfer) {
        const auto count = std::min(sampleCount - first, samplesPerTransfer);
        m_buffer.AccessSamples([&](const CSampleBlock& samples) {
            WriteSamples(file, samples, width, first, buffer.first(count * BytesPerSample(width)));
        });
    }
}

} // namespace veltaris::velflexlib::dataset
