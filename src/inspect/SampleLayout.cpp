#include "inspect/SampleLayout.h"

#include "inspect/HeaderChecks.h"

#include "velstdlib/math/Product.h"
#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <map>
#include <utility>

namespace veltaris::inspect {

namespace dataset = velflexlib::dataset;

namespace {

std::uint64_t Sum(std::uint64_t a, std::uint64_t b)
{
    std::uint64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? ~std::uint64_t{0} : sum;
}

std::uint64_t BytesOfBits(std::int64_t bits)
{
    return bits == 8 || bits == 16 || bits == 32 ? static_cast<std::uint64_t>(bits) / 8 : 0;
}

std::string NameOfChannel(const ChannelSamples& channel)
{
    return "Channel " + Quoted(channel.name) + " (group " + std::to_string(channel.group) + ", slot " +
           std::to_string(channel.slot) + ")";
}

} // namespace

void CSampleLayout::Place(const dataset::CDataSetPlan& plan, const dataset::CDataSet& dataSet)
{
    std::map<std::pair<std::uint64_t, std::uint64_t>, const SectionLink*> links;
    for (const SectionLink& link : m_uses.Channels())
        links[{link.group, link.slot}] = &link;
    const auto groups = dataSet.GetAllGroups();
    for (const auto& [group, slot, section] : plan.channels) {
        PlacedChannel channel;
        channel.buffer = group < groups.size() ? groups[group]->GetChannelBuffer(slot) : nullptr;
        if (!channel.buffer)
            break;
        channel.samples.group = group;
        channel.samples.slot = slot;
        channel.samples.section = section;
        channel.section = m_lines.FindSection(section);
        channel.link = links[{group, slot}];
        Measure(channel);
        m_claimedBytes = Sum(m_claimedBytes, channel.samples.bytes);
        m_channels.push_back(std::move(channel));
    }
}

// The same lines as are read when the channel is loaded.
void CSampleLayout::Measure(PlacedChannel& channel) const
{
    ChannelSamples& samples = channel.samples;
    const dataset::CLineAxes axes = channel.buffer->GetLineAxes();
    dataset::CHeldLines held = axes.LinesWithSamples(axes.Lines());
    samples.name = channel.buffer->GetAxisName(dataset::signalAxis);
    samples.points = axes.Points();
    samples.lines = axes.Lines();
    samples.bits = channel.buffer->GetBitCount();
    samples.offset = Sum(m_extent.header, m_claimedBytes);
    channel.heldLines = held.Count();
    channel.lineBytes = axes.Points() * BytesOfBits(samples.bits);
    samples.bytes = velstdlib::math::Product(channel.heldLines, channel.lineBytes);
    const std::uint64_t there = m_extent.file - std::min(m_extent.file, samples.offset);
    if (channel.lineBytes > 0)
        held.Truncate(std::min(there / channel.lineBytes, held.Count()));
    samples.linesThere = held.End();
}

void CSampleLayout::Judge(bool isWhole, std::uint32_t failedSection)
{
    // Where the head of a section is lost, the keys of two sections are mixed: that the bytes fit then says nothing.
    const bool hasAllSections = std::ranges::find(m_channels, noSection, &PlacedChannel::section) == m_channels.end();
    m_fits = isWhole && hasAllSections && m_claimedBytes == m_dataBytes;
    for (const PlacedChannel& channel : m_channels)
        CheckPresence(channel);
    const std::size_t doubted = FirstDoubted(failedSection);
    const std::size_t off = isWhole && doubted == m_channels.size() ? FirstOneCharacterOff() : doubted;
    for (std::size_t c = off; c < m_channels.size(); ++c) {
        m_channels[c].samples.isCertain = false;
        m_channels[c].samples.isDoubtedForOneDigit = c < doubted;
    }
    if (!m_fits)
        AddOddSizes();
    if (isWhole && m_claimedBytes < m_dataBytes)
        AddBytesLeftOver(off < m_channels.size() || m_channels.empty());
}

void CSampleLayout::CheckPresence(const PlacedChannel& channel)
{
    const ChannelSamples& samples = channel.samples;
    const std::string name = NameOfChannel(samples);
    const std::string none = "the file does not open";
    if (BytesOfBits(samples.bits) == 0)
        return m_findings.AddKey(
            RuleId::UnusableBits, channel.section, "SaveBits",
            {none, name + " has samples of " + std::to_string(samples.bits) + " bits, which no file has."});
    const std::uint64_t there = m_extent.file - std::min(m_extent.file, samples.offset);
    const std::uint64_t loadable = channel.lineBytes == 0 ? 0 : std::min(there / channel.lineBytes, channel.heldLines);
    if (velstdlib::math::Product(loadable, samples.points) > velstdlib::util::limits::channelSamples)
        m_findings.AddKey(RuleId::TooManySamples, channel.section, "Points",
                          {none, name + " has more samples than a channel may have."});
    if (samples.bytes > there)
        m_findings.AddPlace(RuleId::SamplesMissing, m_extent.file, {},
                            {none, name + " needs " + std::to_string(samples.bytes) + " bytes, and there are " +
                                       std::to_string(there) + ": enough for " + std::to_string(samples.linesThere) +
                                       " of " + std::to_string(samples.lines) + " lines."});
}

const SizeDoubts& CSampleLayout::DoubtsOf(std::uint32_t section)
{
    const auto [doubts, isNew] = m_doubts.try_emplace(section);
    if (isNew && section != noSection)
        doubts->second = FindSizeDoubts(m_lines, m_uses, section);
    return doubts->second;
}

Doubt CSampleLayout::DoubtOf(const PlacedChannel& channel)
{
    if (channel.section == noSection || (channel.link && channel.link->isRepeated))
        return Doubt::UnlessBytesFit;
    const auto named = MatchKey(m_lines.SectionName(channel.section), "DataSet-#:#");
    const bool isMisplaced = m_uses.Version() != dataset::framesVersion && named &&
                             (named->first != channel.samples.group || named->second != channel.samples.slot);
    return isMisplaced || BytesOfBits(channel.samples.bits) == 0 ? Doubt::Certain : DoubtsOf(channel.section).doubt;
}

// The samples of channels that nothing names may stand anywhere.
std::size_t CSampleLayout::FirstDoubted(std::uint32_t failedSection)
{
    if (!m_fits && HasUnlistedChannels())
        return 0;
    const auto isDoubted = [&](const PlacedChannel& channel) {
        const Doubt doubt = DoubtOf(channel);
        return doubt == Doubt::Certain || (doubt == Doubt::UnlessBytesFit && !m_fits) ||
               (failedSection != noSection && channel.section == failedSection);
    };
    return static_cast<std::size_t>(std::ranges::find_if(m_channels, isDoubted) - m_channels.begin());
}

bool CSampleLayout::HasUnlistedChannels() const
{
    for (std::uint32_t section = 0; section < m_lines.SectionCount(); ++section) {
        if (!m_uses.IsUsed(section) && LooksLikeChannel(m_lines, section))
            return true;
    }
    return false;
}

// The first channel for which another size, that is one character away, would claim exactly the bytes that there are.
std::size_t CSampleLayout::FirstOneCharacterOff()
{
    std::size_t first = 0;
    if (m_fits)
        return m_channels.size();
    for (; first < m_channels.size(); ++first) {
        const PlacedChannel& channel = m_channels[first];
        const std::uint64_t difference = std::max(m_claimedBytes, m_dataBytes) - std::min(m_claimedBytes, m_dataBytes);
        const bool isOneLine = DoubtsOf(channel.section).hasLineSizes && difference == channel.lineBytes;
        if (isOneLine || FitsWithOtherNumber(channel, true) || FitsWithOtherNumber(channel, false))
            break;
    }
    return first;
}

bool CSampleLayout::FitsWithOtherNumber(const PlacedChannel& channel, bool ofPoints)
{
    const ChannelSamples& samples = channel.samples;
    const std::uint64_t others = m_claimedBytes - samples.bytes;
    const std::uint64_t unit =
        ofPoints ? velstdlib::math::Product(channel.heldLines, BytesOfBits(samples.bits)) : channel.lineBytes;
    if (unit == 0 || m_dataBytes < others || (m_dataBytes - others) % unit != 0)
        return false;
    const std::uint64_t number = ofPoints ? samples.points : samples.lines;
    const std::uint64_t fitting = (m_dataBytes - others) / unit + (ofPoints ? 0 : samples.lines - channel.heldLines);
    const char* const key = ofPoints ? "Points" : "Lines";
    if (number == fitting || !IsOneCharacterOff(m_lines.ValueOf(channel.section, key), fitting))
        return false;
    m_findings.AddKey(RuleId::SizeDoubtful, channel.section, key,
                      {std::to_string(number), NameOfChannel(samples) + " has " + std::to_string(number) + " in " +
                                                   Quoted(key) + "; " + std::to_string(fitting) +
                                                   " would fit the bytes of the file exactly."});
    return true;
}

void CSampleLayout::AddOddSizes()
{
    for (const auto& [section, doubts] : std::map(m_doubts.begin(), m_doubts.end())) {
        for (const OddSize& odd : doubts.odd)
            m_findings.AddKey(RuleId::SizeDoubtful, section, odd.key, {"as it stands", odd.reason});
    }
}

void CSampleLayout::AddBytesLeftOver(bool isDoubted)
{
    const std::uint64_t bytes = m_dataBytes - m_claimedBytes;
    const std::uint64_t offset = m_extent.header + m_claimedBytes;
    m_findings.AddPlace(
        isDoubted ? RuleId::BytesLeftOverUnexplained : RuleId::BytesLeftOver, offset, {},
        {"nothing", std::to_string(bytes) + " bytes are left over behind the samples of all channels."});
}

} // namespace veltaris::inspect
