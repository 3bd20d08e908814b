#include "velflexlib/dataset/serialisers/DataBufferToVELConfig.h"

#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velflexlib/dataset/serialisers/ChannelSection.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"

#include <algorithm>
#include <cstddef>
#include <istream>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CFileWriter;
using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

// So much is read or written at a time: enough to make little of a call of the system, and little enough for a
// processor's second cache.
constexpr std::size_t bytesPerTransfer = std::size_t{1} << 20U;

std::uint64_t ReadSize(const CVELKeyToValueList& section, const char* key, const std::string& fileName)
{
    const int size = section.GetValueT<int>(key, 0);
    if (size < 0)
        velstdlib::util::ThrowBadContent(fileName);
    return static_cast<std::uint64_t>(size);
}

// What is left to be filled when the stream ends or the reading is to end.
std::span<std::byte> ReadSamples(std::istream& stream, std::span<std::byte> bytes, SampleWidth width,
                                 const std::atomic<bool>& abort)
{
    while (!abort && stream && !bytes.empty()) {
        const auto piece = bytes.first(std::min(bytes.size(), bytesPerTransfer));
        stream.read(reinterpret_cast<char*>(piece.data()), static_cast<std::streamsize>(piece.size()));
        const auto got = static_cast<std::size_t>(stream.gcount());
        const auto count = got - got % BytesPerSample(width);
        DropSpareBits(piece.first(count), width);
        bytes = bytes.subspan(count);
    }
    return bytes;
}

// Writes samples as they are where they have the right width; otherwise, and as zeros where the channel was reshaped
// meanwhile, by way of `room`.
void WriteSamples(CFileWriter& file, const CSampleBlock& samples, SampleWidth width, std::uint64_t first,
                  std::span<std::byte> room)
{
    const std::uint64_t count = room.size() / BytesPerSample(width);
    const bool areThere = first + count <= samples.All().Count();
    const std::size_t offset = first * BytesPerSample(samples.Width());
    if (areThere && samples.Width() == width)
        return file.Write(samples.Bytes().subspan(offset, room.size()));
    if (areThere)
        TranscodeSamples(samples.Bytes().data() + offset, samples.Width(), count, room.data(), width);
    else
        std::ranges::fill(room, std::byte{});
    file.Write(room);
}

} // namespace

void CDataBufferToVELConfig::LoadHeader(CVELConfig& document, std::string_view sectionName, CLoadBudget& budget)
{
    document.GetContent().SelectCreateSection(sectionName);
    const CVELKeyToValueList& section = document.GetContent().GetActiveSection();
    const std::string& fileName = document.GetFileName();
    budget.ChargeSection(section);
    const int version = section.GetValueT<int>("Version", prefixedUnitsVersion);
    if (version > lineAxesVersion)
        velstdlib::util::ThrowFileVersion(fileName, version);
    const std::uint64_t points = ReadSize(section, "Points", fileName);
    const std::uint64_t lines = ReadSize(section, "Lines", fileName);
    m_buffer.SetGroupName(section.GetValue("Frame", "Unknown"));
    const auto currentLine = static_cast<std::int64_t>(section.GetValueT<int>("CurLine", 0));
    LoadAxes(m_buffer, section, version);
    m_buffer.SetBitCount(section.GetValueT<int>("SaveBits", 8));
    WidthOfBits(m_buffer.GetBitCount());

    std::map<std::uint64_t, CLineAxis> lineAxes;
    if (version == lineAxesVersion) {
        const CLineAxis common{points, m_buffer.GetAxisMin(pointAxis), m_buffer.GetAxisRange(pointAxis)};
        lineAxes = LoadLineAxes(section, common, lines, fileName);
    }
    const auto isEmpty = [](const auto& own) { return own.second.count == 0; };
    const auto emptyLines = points > 0 ? std::ranges::count_if(lineAxes, isEmpty) : 0;
    budget.ChargeSamples(points, lines - static_cast<std::uint64_t>(emptyLines), m_buffer.GetBitCount());
    m_buffer.Restore(points, lines, std::move(lineAxes), static_cast<std::uint64_t>(currentLine));
}

void CDataBufferToVELConfig::SaveHeader(CVELConfig& document, const std::string& sectionName)
{
    const bool hasLineAxes = HasLineAxes(m_buffer);
    document.GetContent().SelectCreateSection(sectionName);
    CVELKeyToValueList& section = document.GetContent().GetActiveSection();
    section.SetValue("Version", std::to_string(hasLineAxes ? lineAxesVersion : plainVersion));
    section.SetValue("Points", m_buffer.GetPoints());
    section.SetValue("Lines", m_buffer.GetLines());
    section.SetValue("Frame", velstdlib::util::CleanHeaderText(m_buffer.GetGroupName()));
    section.SetValue("CurLine", std::to_string(static_cast<std::int64_t>(m_buffer.GetCurrentLine())));
    SaveAxes(m_buffer, section);
    if (hasLineAxes)
        SaveLineAxes(m_buffer, section);
    section.SetValue("SaveMode", "Binary");
    section.SetValue("SaveBits", std::to_string(m_buffer.GetBitCount()));
    section.SetValue("SaveSign", "Signed");
    section.SetValue("SaveOrder", "Intel");
}

void CDataBufferToVELConfig::LoadData(std::istream& stream, const std::atomic<bool>& abort)
{
    const auto load = [&](std::span<std::byte> bytes, SampleWidth width, std::size_t&) {
        std::ranges::fill(ReadSamples(stream, bytes, width, abort), std::byte{});
    };
    m_buffer.LoadSamples(~std::uint64_t{0}, load); // that the file is long enough was found with its header
}

std::size_t CDataBufferToVELConfig::RoomToSave() const
{
    constexpr std::uint64_t least = 4096;
    return std::clamp<std::uint64_t>(m_buffer.GetStoredSampleCount() * sizeof(std::int32_t), least, bytesPerTransfer);
}

void CDataBufferToVELConfig::SaveData(CFileWriter& file, std::span<std::byte> room)
{
    const SampleWidth width = WidthOfBits(m_buffer.GetBitCount());
    const std::uint64_t samplesPerTransfer = room.size() / BytesPerSample(width);
    const std::uint64_t sampleCount = m_buffer.GetStoredSampleCount();
    for (std::uint64_t first = 0; first < sampleCount; first += samplesPerTransfer) {
        const auto count = std::min(sampleCount - first, samplesPerTransfer);
        m_buffer.AccessSamples([&](const CSampleBlock& samples) {
            WriteSamples(file, samples, width, first, room.first(count * BytesPerSample(width)));
        });
    }
}

} // namespace veltaris::velflexlib::dataset
