#include "velflexlib/dataset/DataBufferToVELConfig.h"

#include "velflexlib/dataset/ChannelSection.h"
#include "velflexlib/dataset/SampleCodec.h"
#include "velstdlib/util/HeaderText.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <cstddef>
#include <istream>
#include <ostream>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;
using velstdlib::util::CVELKeyToValueList;

namespace {

// Samples are converted in pieces that stay in the processor's cache.
constexpr std::uint64_t samplesPerPiece = 16'384;

// Calls use(first, count) for adjacent pieces of so many samples, until it answers false.
template <class Use>
void ForEachPiece(std::uint64_t sampleCount, Use use)
{
    for (std::uint64_t first = 0; first < sampleCount; first += samplesPerPiece) {
        if (!use(first, std::min(sampleCount - first, samplesPerPiece)))
            return;
    }
}

std::uint64_t ReadSize(const CVELKeyToValueList& section, const char* key, const std::string& fileName)
{
    const int size = section.GetValueT<int>(key, 0);
    if (size < 0)
        velstdlib::util::ThrowBadContent(fileName);
    return static_cast<std::uint64_t>(size);
}

char* Chars(std::vector<std::byte>& bytes)
{
    return reinterpret_cast<char*>(bytes.data());
}

} // namespace

void CDataBufferToVELConfig::LoadHeader(CVELConfig& document, const std::string& sectionName, CLoadBudget& budget)
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
    m_buffer.HoldNotifications();
    m_buffer.SetGroupName(section.GetValue("Frame", "Unknown"));
    const auto currentLine = static_cast<std::int64_t>(section.GetValueT<int>("CurLine", 0));
    LoadAxes(m_buffer, section, version);
    m_buffer.SetBitCount(section.GetValueT<int>("SaveBits", 8));
    CheckBitCount(m_buffer.GetBitCount());

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
    const std::int64_t bitCount = m_buffer.GetBitCount();
    CheckBitCount(bitCount);
    const auto sampleBytes = static_cast<std::uint64_t>(bitCount / 8);
    std::vector<std::byte> bytes;
    ForEachPiece(m_buffer.GetStoredSampleCount(), [&](std::uint64_t first, std::uint64_t count) {
        bytes.resize(count * sampleBytes);
        if (abort || !stream.read(Chars(bytes), static_cast<std::streamsize>(bytes.size())))
            return false;
        m_buffer.AccessStoredSamples(first, count, [&](auto samples) { DecodeSamples(bytes, bitCount, samples); });
        return true;
    });
    if (bitCount != 32)
        m_buffer.SetBitCount(16);
    m_buffer.FinishLoading();
    m_buffer.ReleaseNotifications();
}

void CDataBufferToVELConfig::SaveData(std::ostream& stream)
{
    const std::int64_t bitCount = m_buffer.GetBitCount();
    CheckBitCount(bitCount);
    const auto sampleBytes = static_cast<std::uint64_t>(bitCount / 8);
    std::vector<std::byte> bytes;
    ForEachPiece(m_buffer.GetStoredSampleCount(), [&](std::uint64_t first, std::uint64_t count) {
        bytes.assign(count * sampleBytes, std::byte{});
        m_buffer.AccessStoredSamples(first, count, [&](auto samples) { EncodeSamples(samples, bitCount, bytes); });
        return static_cast<bool>(stream.write(Chars(bytes), static_cast<std::streamsize>(bytes.size())));
    });
}

} // namespace veltaris::velflexlib::dataset
