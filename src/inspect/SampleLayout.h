// Where the samples of each channel stand, and whether they are likely to be its own.
#pragma once

#include "inspect/ChannelSamples.h"
#include "inspect/FindingList.h"
#include "inspect/SizeDoubts.h"
#include "inspect/header/SectionUses.h"

#include "velflexlib/dataset/DataSet.h"
#include "velflexlib/dataset/serialisers/DataSetSection.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace veltaris::inspect {

// A channel that was read from its section, and what more is known of it than is shown to others.
struct PlacedChannel
{
    ChannelSamples samples;
    std::shared_ptr<velflexlib::dataset::CDataBuffer> buffer;
    std::uint32_t section = noSection;
    const SectionLink* link = nullptr;
    std::uint64_t heldLines = 0; // lines with samples
    std::uint64_t lineBytes = 0; // of one that has some; 0 without usable bits, too
};

// Sizes of a file, in bytes.
struct FileExtent
{
    std::uint64_t file = 0;
    std::uint64_t header = 0; // with its end mark
};

// Refers to lines, uses and findings, which must outlive it. Used once.
class CSampleLayout
{
public:
    CSampleLayout(FileExtent extent, const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
        : m_extent(extent), m_lines(lines), m_uses(uses), m_findings(findings), m_dataBytes(extent.file - extent.header)
    {
    }

    // Places the channels of the plan that are in the data set, up to the first that was not read.
    void Place(const velflexlib::dataset::CDataSetPlan& plan, const velflexlib::dataset::CDataSet& dataSet);
    // Adds what is wrong with the samples, and decides which are certain. `failedSection` is the one at which reading
    // the header ended; `isWhole` says that it was read to its end.
    void Judge(bool isWhole, std::uint32_t failedSection);

    const std::vector<PlacedChannel>& Channels() const { return m_channels; }
    std::uint64_t ClaimedBytes() const { return m_claimedBytes; } // by all of them together

private:
    void Measure(PlacedChannel& channel) const;
    void CheckPresence(const PlacedChannel& channel);
    const SizeDoubts& DoubtsOf(std::uint32_t section);
    Doubt DoubtOf(const PlacedChannel& channel);
    std::size_t FirstDoubted(std::uint32_t failedSection);
    std::size_t FirstOneCharacterOff();
    bool FitsWithOtherNumber(const PlacedChannel& channel, bool ofPoints);
    bool HasUnlistedChannels() const;
    void AddOddSizes();
    void AddBytesLeftOver(bool isDoubted);

    FileExtent m_extent;
    const CHeaderLines& m_lines;
    const CSectionUses& m_uses;
    CFindingList& m_findings;
    std::vector<PlacedChannel> m_channels;
    std::unordered_map<std::uint32_t, SizeDoubts> m_doubts; // by section
    std::uint64_t m_dataBytes;                              // behind the header
    std::uint64_t m_claimedBytes = 0;
    bool m_fits = false; // all channels claim exactly the bytes that there are
};

} // namespace veltaris::inspect
