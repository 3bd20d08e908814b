#include "salvage/Salvage.h"

#include "transfer/DataSetFile.h"
#include "velflexlib/dataset/samples/SampleCodec.h"
#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <span>
#include <system_error>
#include <utility>

namespace veltaris::salvage {

namespace dataset = velflexlib::dataset;
namespace util = velstdlib::util;

namespace {

constexpr std::int64_t usableBits = 16; // of a channel without samples whose own bits no file can have

// What the header says of a channel, and where its samples begin if they are certain: with the bytes that there are
// from there on.
struct Place
{
    std::string section;
    std::optional<FileSpan> samples;
};
using Places = std::map<std::pair<std::uint64_t, std::uint64_t>, Place>; // by group and slot

Places FindPlaces(const Judgement& judgement)
{
    Places places;
    const FileSpan& samples = judgement.image.samples;
    for (std::size_t c = 0; c < judgement.isCertain.size(); ++c) {
        const inspect::ChannelSamples& channel = judgement.inspection.channels[c];
        Place& place = places[{channel.group, channel.slot}];
        place.section = channel.section;
        const std::uint64_t before = std::min(channel.offset - judgement.inspection.headerBytes, samples.bytes);
        if (judgement.isCertain[c])
            place.samples = FileSpan{samples.offset + before, samples.bytes - before};
    }
    return places;
}

// Lines of which each has an axis that differs from the common one.
std::map<std::uint64_t, dataset::CLineAxis> OwnAxes(dataset::CLineAxes axes, std::uint64_t lines)
{
    std::map<std::uint64_t, dataset::CLineAxis> own;
    axes.SetMissingFrom(axes.Lines());
    for (std::uint64_t line = 0; line < lines; ++line) {
        if (const dataset::CLineAxis axis = axes.At(line); !(axis == axes.Common()))
            own.emplace(line, axis);
    }
    return own;
}

// Fills the channels of a data set one after the other.
class CFiller
{
public:
    explicit CFiller(std::istream& file) : m_file(file) {}

    SalvagedChannel Fill(dataset::CDataBuffer& buffer, const Place& place)
    {
        const dataset::CLineAxes axes = buffer.GetLineAxes();
        SalvagedChannel channel;
        channel.section = place.section;
        channel.name = buffer.GetAxisName(dataset::signalAxis);
        channel.points = axes.Points();
        channel.lines = axes.Lines();
        const bool isUsable = IsUsable(buffer.GetBitCount());
        if (!isUsable)
            buffer.SetBitCount(usableBits);
        const bool isCertain = place.samples && isUsable;
        const FileSpan samples = isCertain ? *place.samples : FileSpan();
        Charge(buffer, samples.bytes);
        Load(buffer, samples);
        Describe(buffer, isCertain, channel);
        return channel;
    }

private:
    static bool IsUsable(std::int64_t bits) { return bits == 8 || bits == 16 || bits == 32; }

    // A file may have only so many lines that cost it nothing. Where they would be more, the channel is made shorter.
    void Charge(dataset::CDataBuffer& buffer, std::uint64_t bytes)
    {
        const dataset::CLineAxes axes = buffer.GetLineAxes();
        dataset::CHeldLines held = axes.LinesWithSamples(axes.Lines());
        const std::uint64_t lineBytes =
            axes.Points() * dataset::BytesPerSample(dataset::WidthOfBits(buffer.GetBitCount()));
        if (lineBytes > 0)
            held.Truncate(std::min(bytes / lineBytes, held.Count()));
        const bool hasSamples = lineBytes > 0 && held.Count() > 0;
        const std::uint64_t cost = axes.Lines() - (hasSamples ? held.End() : 0);
        if (cost <= m_freeLines) {
            m_freeLines -= cost;
            return;
        }
        const std::uint64_t lines = hasSamples ? held.End() : 0;
        buffer.Restore(hasSamples ? axes.Points() : 0, lines, OwnAxes(axes, lines), buffer.GetCurrentLine());
    }

    void Load(dataset::CDataBuffer& buffer, const FileSpan& samples)
    {
        buffer.LoadSamples(samples.bytes,
                           [&](std::span<std::byte> bytes, dataset::SampleWidth width, std::size_t& filled) {
                               filled = ReadInto(m_file, samples.offset, bytes);
                               filled -= filled % dataset::BytesPerSample(width);
                               dataset::DropSpareBits(bytes.first(filled), width);
                               if (filled < bytes.size())
                                   throw std::system_error(EIO, std::generic_category());
                           });
    }

    static void Describe(const dataset::CDataBuffer& buffer, bool isCertain, SalvagedChannel& channel)
    {
        const dataset::CLineAxes axes = buffer.GetLineAxes();
        channel.heldLines = axes.Lines();
        const std::uint64_t there = isCertain && axes.Points() > 0 ? axes.MissingFrom() : 0;
        for (std::uint64_t line = 0; line < there; ++line) {
            const bool isEmpty = axes.CountAt(line) == 0;
            channel.savedLines += isEmpty ? 0 : 1;
            Add(channel, line, isEmpty ? LineState::Empty : LineState::Saved);
        }
        if (there == channel.lines)
            return;
        const LineState rest = channel.points == 0 ? LineState::Empty : LineState::Missing;
        channel.ranges.push_back({there, channel.lines - there, isCertain ? rest : LineState::Uncertain});
    }

    static void Add(SalvagedChannel& channel, std::uint64_t line, LineState state)
    {
        if (channel.ranges.empty() || channel.ranges.back().state != state)
            channel.ranges.push_back({line, 0, state});
        ++channel.ranges.back().count;
    }

    std::istream& m_file;
    std::uint64_t m_freeLines = util::limits::pointlessLines;
};

} // namespace

bool Salvaged::HasContent() const
{
    return dataSet->GetGroupCount() > 0 || !dataSet->GetInfoSet().GetGroups().empty();
}

Salvaged Salvage(std::istream& file, const std::string& fileName, bool trust)
{
    const Judgement judgement = Judge(file, fileName, trust);
    Places places = FindPlaces(judgement);
    Salvaged salvaged{judgement.inspection.dataSet, {}, judgement.state, judgement.repair, judgement.doubt,
                      judgement.image.header};
    CFiller filler(file);
    const auto groups = salvaged.dataSet->GetAllGroups();
    for (std::uint64_t group = 0; group < groups.size(); ++group) {
        const auto buffers = groups[group]->GetChannelBuffers();
        for (std::uint64_t slot = 0; slot < buffers.size(); ++slot) {
            if (!buffers[slot])
                continue;
            SalvagedChannel channel = filler.Fill(*buffers[slot], places[{group, slot}]);
            channel.group = group;
            channel.slot = slot;
            channel.groupName = groups[group]->GetName();
            salvaged.channels.push_back(std::move(channel));
        }
    }
    return salvaged;
}

void Save(const Salvaged& salvaged, const std::string& fileName)
{
    transfer::SaveDataSet(*salvaged.dataSet, fileName);
}

} // namespace veltaris::salvage
