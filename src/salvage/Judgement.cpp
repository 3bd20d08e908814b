#include "salvage/Judgement.h"

#include "salvage/HeaderText.h"
#include "salvage/Survivors.h"
#include "salvage/Traces.h"

#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace veltaris::salvage {

namespace {

// Of a header without an end, which may be any text before samples.
constexpr std::uint64_t mostHeaderBytes = std::uint64_t{64} << 20U;

constexpr const char* lostEnd = "The header has no certain end, so that nobody knows where the samples begin.";
constexpr const char* otherNumber = "The file would have its exact length if a number in the header were another.";
constexpr const char* damagedHeader = "The header is damaged where it says how the samples are laid out.";
constexpr const char* leftOver = "The file has more bytes than the header accounts for.";
constexpr const char* oddLines = "The header does not tell which lines of the channel have samples.";

class CJudge
{
public:
    CJudge(std::istream& file, std::string fileName, bool trust)
        : m_file(file), m_fileName(std::move(fileName)), m_trusts(trust)
    {
    }

    Judgement Judge()
    {
        m_bytes = Length();
        m_first = InspectWhole();
        if (!HasCertainEnd())
            return JudgeCut();
        const CLegible legible(
            m_file, m_fileName,
            {ReadPart(m_file, {0, m_first.headerBytes}), {m_first.headerBytes, m_bytes - m_first.headerBytes}});
        Judgement judgement = Take(legible, HeaderState::AsItStands, damagedHeader);
        if (IsOrderCertain(legible.Lines(), legible.Uses())) {
            const bool isSound = legible.IsRead() && IsMaybeSound(legible.Inspected());
            TakeFirst(legible, isSound ? CertainOfSound(legible) : CertainOfDamaged(legible), judgement);
            if (isSound)
                return judgement;
        }
        const std::vector<Survivor> survivors = FindSurvivors(legible);
        return survivors.empty() ? judgement : Agree(survivors);
    }

private:
    std::uint64_t Length()
    {
        m_file.clear();
        m_file.seekg(0, std::ios::end);
        const auto length = m_file.tellg();
        if (length < 0)
            throw std::system_error(EIO, std::generic_category());
        return static_cast<std::uint64_t>(length);
    }

    inspect::Inspection InspectWhole()
    {
        CImageStream stream(m_file, {{}, {0, m_bytes}});
        return inspect::InspectStream(stream, m_fileName);
    }

    bool HasCertainEnd()
    {
        if (m_first.headerBytes == 0 || m_first.headerBytes > velstdlib::util::limits::headerBytes)
            return false;
        const std::string header = ReadPart(m_file, {0, m_first.headerBytes});
        const bool fits = m_first.Opens() && m_first.claimedBytes == m_bytes - m_first.headerBytes;
        return fits ? EndsOnOwnLine(header) : EndsAsWritten(header);
    }

    // The samples begin behind what is left of the mark, if they then end with the file.
    Judgement JudgeCut()
    {
        const HeaderPart part = FindHeaderPart(ReadPart(m_file, {0, std::min(m_bytes, mostHeaderBytes)}));
        const std::string header = part.text + std::string(part.isWhole ? endOfHeader.substr(2) : endOfHeader);
        std::vector<Survivor> survivors;
        for (const std::uint64_t markBytes : {1, 2, 3}) {
            const std::uint64_t begin = part.end + markBytes;
            if (!part.isWhole || begin > m_bytes)
                continue;
            if (auto survivor = Survive(m_file, m_fileName, {header, {begin, m_bytes - begin}}))
                survivors.push_back(std::move(*survivor));
        }
        if (survivors.size() == 1)
            return Agree(survivors);
        return Take(CLegible(m_file, m_fileName, {header, {}}), HeaderState::Cut, lostEnd);
    }

    // Nothing of it is certain at first.
    static Judgement Take(const CLegible& legible, HeaderState state, const char* doubt)
    {
        const inspect::Inspection& inspection = legible.Inspected();
        return {legible.Image(), inspection, state, {}, std::vector<bool>(inspection.channels.size()), doubt};
    }

    // Whether the file may have been cut off and nothing else.
    static bool IsMaybeSound(const inspect::Inspection& inspection)
    {
        const std::uint64_t data = inspection.fileBytes - inspection.headerBytes;
        const bool isCertain = std::ranges::all_of(inspection.channels, [](const inspect::ChannelSamples& channel) {
            return channel.isCertain || channel.isDoubtedForOneDigit;
        });
        return isCertain && inspection.claimedBytes >= data;
    }

    // Channels from the first on, and why no more.
    struct Certain
    {
        std::size_t count;
        const char* doubt;
    };

    Certain CertainOfSound(const CLegible& legible) const
    {
        const auto& channels = legible.Inspected().channels;
        return {m_trusts ? channels.size() : FirstDoubted(channels), otherNumber};
    }

    // Something of the header was another. What is odd about a section may be older than that, so that it need not be
    // where the damage is.
    static Certain CertainOfDamaged(const CLegible& legible)
    {
        const auto& channels = legible.Inspected().channels;
        const std::size_t first = FirstDoubted(channels);
        if (first == channels.size() || channels[first].isDoubtedForOneDigit)
            return {0, leftOver};
        return {std::min(first, FirstOtherNumber(legible)), damagedHeader};
    }

    static std::size_t FirstDoubted(const std::vector<inspect::ChannelSamples>& channels)
    {
        const auto first = std::ranges::find(channels, false, &inspect::ChannelSamples::isCertain);
        return static_cast<std::size_t>(first - channels.begin());
    }

    // Calls them certain, as far as their lines are.
    static void TakeFirst(const CLegible& legible, const Certain& certain, Judgement& judgement)
    {
        const inspect::CHeaderLines& lines = legible.Lines();
        const bool fits = judgement.inspection.claimedBytes == judgement.image.samples.bytes;
        judgement.doubt = certain.doubt;
        for (std::size_t c = 0; c < certain.count; ++c) {
            const std::uint32_t section = lines.FindSection(judgement.inspection.channels[c].section);
            const LineDoubt doubt = FindLineDoubt(lines, legible.Uses(), section, fits);
            judgement.isCertain[c] = doubt == LineDoubt::None;
            if (doubt == LineDoubt::None)
                continue;
            judgement.doubt = oddLines;
            if (doubt == LineDoubt::OwnSize || !fits)
                return;
        }
    }

    // What all of these headers say alike.
    static Judgement Agree(const std::vector<Survivor>& survivors)
    {
        Judgement judgement;
        judgement.image = survivors.front().image;
        judgement.inspection = survivors.front().inspection;
        judgement.doubt = otherNumber;
        const auto& channels = judgement.inspection.channels;
        judgement.isCertain.assign(channels.size(), true);
        for (const Survivor& survivor : survivors) {
            for (std::size_t c = 0; c < channels.size(); ++c)
                judgement.isCertain[c] =
                    judgement.isCertain[c] && HasSame(survivor, judgement, c) && !IsGuess(survivor, channels[c]);
        }
        const bool isOne = std::ranges::find(judgement.isCertain, false) == judgement.isCertain.end();
        judgement.state = isOne ? HeaderState::Repaired : HeaderState::Ambiguous;
        judgement.repair = isOne ? survivors.front().repair : std::nullopt;
        return judgement;
    }

    // That a line had samples can be told, but not how many.
    static bool IsGuess(const Survivor& survivor, const inspect::ChannelSamples& channel)
    {
        return survivor.repair && survivor.repair->section == channel.section && IsLineRepair(*survivor.repair) &&
               !survivor.repair->text.ends_with("=0");
    }

    // Offsets are counted from the header, which repairs may make longer.
    static bool HasSame(const Survivor& survivor, const Judgement& judgement, std::size_t position)
    {
        const auto& channels = survivor.inspection.channels;
        if (position >= channels.size())
            return false;
        const inspect::ChannelSamples& a = channels[position];
        const inspect::ChannelSamples& b = judgement.inspection.channels[position];
        return a.group == b.group && a.slot == b.slot && a.section == b.section && a.points == b.points &&
               a.lines == b.lines && a.bits == b.bits && a.bytes == b.bytes &&
               a.offset - survivor.inspection.headerBytes == b.offset - judgement.inspection.headerBytes;
    }

    std::istream& m_file;
    std::string m_fileName;
    bool m_trusts;
    std::uint64_t m_bytes = 0;
    inspect::Inspection m_first;
};

} // namespace

Judgement Judge(std::istream& file, const std::string& fileName, bool trust)
{
    return CJudge(file, fileName, trust).Judge();
}

} // namespace veltaris::salvage
