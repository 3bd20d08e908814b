#include "salvage/Repairs.h"

#include "salvage/Edits.h"
#include "salvage/Traces.h"

#include "inspect/HeaderChecks.h"
#include "velstdlib/math/Product.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <optional>
#include <unordered_map>
#include <utility>

namespace veltaris::salvage {

using inspect::ChannelSamples;
using inspect::HeaderLine;
using inspect::SectionLink;
using velstdlib::math::Product;
using velstdlib::string::EqualFolded;

namespace {

constexpr std::array<std::string_view, 4> sizeKeys{"Points", "Lines", "SaveBits", "Version"};
constexpr std::array<std::string_view, 4> countKeys{"Version", "GroupCount", "ChannelCount", "FrameCount"};
constexpr std::string_view lineKeyPrefix = "LineDim";
constexpr std::size_t mostHeads = 16; // that are looked for among all lines

std::uint64_t ToNumber(const std::string& digitsOnly)
{
    std::uint64_t number = 0;
    std::from_chars(digitsOnly.data(), digitsOnly.data() + digitsOnly.size(), number);
    return number;
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> others)
{
    return std::ranges::find(others, text) != others.end();
}

bool IsVersion(std::string_view text)
{
    return IsOneOf(text, {"1", "2", "3"});
}

class CRepairFinder
{
public:
    explicit CRepairFinder(const HeaderToRepair& header)
        : m_header(header), m_lines(header.lines), m_uses(header.uses), m_data(DataBytes(header.inspection))
    {
        for (const ChannelSamples& channel : header.inspection.channels)
            m_channels.emplace(m_lines.FindSection(channel.section), &channel);
    }

    std::vector<Repair> Find()
    {
        const bool lacksChannels = m_header.inspection.channels.empty() || HasUnlisted(m_lines, m_uses);
        for (const HeaderLine& line : m_lines.Lines()) {
            if (line.section == inspect::noSection || line.kind == HeaderLine::Kind::Section)
                continue;
            if (m_uses.Has(line.section, inspect::SectionUse::Channel))
                RepairSize(line);
            if (lacksChannels && line.section == m_uses.DataSetSection())
                RepairCount(line);
        }
        RepairLinks();
        RepairHeads();
        return std::move(m_repairs);
    }

private:
    static std::uint64_t DataBytes(const inspect::Inspection& inspection)
    {
        return inspection.fileBytes - inspection.headerBytes;
    }

    std::string_view RawText(const HeaderLine& line) const
    {
        const std::string_view text = m_header.text.substr(line.offset);
        const std::string_view raw = text.substr(0, text.find('\n'));
        return raw.substr(0, raw.find_last_not_of("\r \t") + 1);
    }

    void Add(const HeaderLine& line, const std::string& text)
    {
        m_repairs.push_back({line.offset, line.number, std::string(m_lines.SectionName(line.section)),
                             std::string(RawText(line)), text});
    }

    // Numbers near that of the line, and the key where the line has another one.
    template <class Fits>
    void RepairNumber(const HeaderLine& line, std::string_view key, Fits fits)
    {
        const std::string_view raw = RawText(line);
        const std::string start = std::string(key) + "=";
        if (EqualFolded(raw.substr(0, start.size()), start)) {
            for (const std::string& number : NumbersNear(raw.substr(start.size()))) {
                if (fits(number))
                    Add(line, start + number);
            }
        } else if (!m_lines.FindKey(line.section, key)) {
            const auto notDigit = raw.find_last_not_of(decimalDigits);
            const std::string_view number = raw.substr(notDigit == std::string_view::npos ? 0 : notDigit + 1);
            const std::string whole = start + std::string(number);
            if (!number.empty() && IsOneEdit(raw, whole) && fits(std::string(number)))
                Add(line, whole);
        }
    }

    void RepairSize(const HeaderLine& line)
    {
        const auto channel = m_channels.find(line.section);
        if (channel == m_channels.end())
            return;
        for (const std::string_view key : sizeKeys)
            RepairNumber(line, key, [&](const std::string& number) {
                return MayFit(*channel->second, line.section, key, number);
            });
        RepairNumber(line, std::string(lineKeyPrefix) + FirstNumber(line) + "Points",
                     [&](const std::string& number) { return MayToggleLine(*channel->second, number); });
    }

    std::string FirstNumber(const HeaderLine& line) const
    {
        const std::string_view raw = RawText(line);
        const auto begin = std::min(raw.find_first_of(decimalDigits), raw.size());
        const auto end = std::min(raw.find_first_not_of(decimalDigits, begin), raw.size());
        return std::string(raw.substr(begin, end - begin));
    }

    // A line has samples or none, and 1 stands for any number that it may have.
    bool MayToggleLine(const ChannelSamples& channel, const std::string& number) const
    {
        const std::uint64_t lineBytes = Product(channel.points, SampleBytes(channel));
        const std::uint64_t claimed = m_header.inspection.claimedBytes;
        return (number == "0" && claimed >= m_data && claimed - m_data == lineBytes) ||
               (number == "1" && claimed <= m_data && (claimed == m_data || m_data - claimed == lineBytes));
    }

    static std::uint64_t SampleBytes(const ChannelSamples& channel)
    {
        const bool isUsable = channel.bits == 8 || channel.bits == 16 || channel.bits == 32;
        return isUsable ? static_cast<std::uint64_t>(channel.bits) / 8 : 0;
    }

    bool MayFit(const ChannelSamples& channel, std::uint32_t section, std::string_view key,
                const std::string& number) const
    {
        if (key == "Version")
            return IsVersion(number) && (HasLineKeys(section) || !IsVersion(m_lines.ValueOf(section, key)));
        if (key == "SaveBits")
            return IsOneOf(number, {"8", "16", "32"});
        const std::uint64_t sizedLines = CountSizedLines(section);
        if (key == "Lines" && sizedLines > 0)
            return ToNumber(number) == sizedLines; // all lines say how many points they have, or none does
        return m_channels.count(section) > 1 ||
               MayFit(channel, key == "Points", ToNumber(number), HasLineKeys(section));
    }

    std::uint64_t CountSizedLines(std::uint32_t section) const
    {
        const auto isSized = [&](std::uint32_t position) {
            return inspect::MatchKey(m_lines.Key(m_lines.Lines()[position]), "LineDim#Points").has_value();
        };
        return static_cast<std::uint64_t>(std::ranges::count_if(m_lines.LinesOf(section), isSized));
    }

    // Lines that have no samples are told by their numbers, so that with more or fewer lines nobody knows how many.
    bool MayFit(const ChannelSamples& channel, bool isPoints, std::uint64_t number, bool hasLineKeys) const
    {
        constexpr std::uint64_t unknown = ~std::uint64_t{0};
        const std::uint64_t sampleBytes = SampleBytes(channel);
        const std::uint64_t lineBytes = Product(channel.points, sampleBytes);
        const bool isKnown = !hasLineKeys || (isPoints && lineBytes > 0);
        if (m_header.inspection.claimedBytes == unknown || !isKnown)
            return true;
        const std::uint64_t lines = hasLineKeys ? channel.bytes / lineBytes : channel.lines;
        const std::uint64_t others = m_header.inspection.claimedBytes - channel.bytes;
        const std::uint64_t bytes = Product(number, isPoints ? Product(lines, sampleBytes) : lineBytes);
        return m_data >= others && bytes == m_data - others;
    }

    bool HasLineKeys(std::uint32_t section) const
    {
        return std::ranges::any_of(m_lines.LinesOf(section), [&](std::uint32_t position) {
            const std::string_view key = m_lines.Key(m_lines.Lines()[position]);
            return EqualFolded(key.substr(0, lineKeyPrefix.size()), lineKeyPrefix);
        });
    }

    void RepairCount(const HeaderLine& line)
    {
        const auto any = [](const std::string&) { return true; };
        for (const std::string_view key : countKeys)
            RepairNumber(line, key, any);
        RepairNumber(line, "Gr" + FirstNumber(line) + "-Count", any);
    }

    // Makes links of the lines that nearly name a section that nothing names.
    void RepairLinks()
    {
        std::size_t tried = 0;
        for (std::uint32_t section = 0; section < m_lines.SectionCount() && tried < mostHeads; ++section) {
            if (!IsUnlisted(m_lines, m_uses, section))
                continue;
            ++tried;
            const std::string name(m_lines.SectionName(section));
            const auto place = inspect::MatchKey(name, "DataSet-#:#");
            for (const HeaderLine& line : m_lines.Lines()) {
                if (line.section == m_uses.DataSetSection() && line.kind != HeaderLine::Kind::Section)
                    RepairLink(line, name, place);
            }
        }
    }

    void RepairLink(const HeaderLine& line, const std::string& name, const std::optional<inspect::KeyIndices>& place)
    {
        const std::string_view raw = RawText(line);
        if (place) {
            const std::string whole =
                "Gr" + std::to_string(place->first) + "-Ch" + std::to_string(place->second) + "=" + name;
            if (IsOneEdit(raw, whole))
                Add(line, whole);
        } else if (line.kind == HeaderLine::Kind::Key && IsOneEdit(m_lines.Value(line), name)) {
            Add(line, std::string(m_lines.Key(line)) + "=" + name);
        }
    }

    // Makes heads of the lines that are nearly one that is named and not there.
    void RepairHeads()
    {
        std::vector<std::string> missing;
        if (m_uses.DataSetSection() == inspect::noSection)
            missing.emplace_back("[" + std::string(inspect::dataSetName) + "]");
        for (const SectionLink& link : m_uses.Channels()) {
            if (link.section == inspect::noSection && missing.size() < mostHeads)
                missing.push_back("[" + std::string(m_lines.Value(*link.line)) + "]");
        }
        for (const std::string& head : missing) {
            for (const HeaderLine& line : m_lines.Lines()) {
                if (IsOneEdit(RawText(line), head))
                    Add(line, head);
            }
        }
    }

    const HeaderToRepair& m_header;
    const inspect::CHeaderLines& m_lines;
    const inspect::CSectionUses& m_uses;
    std::uint64_t m_data;
    std::unordered_multimap<std::uint32_t, const ChannelSamples*> m_channels; // by section
    std::vector<Repair> m_repairs;
};

} // namespace

bool IsLineRepair(const Repair& repair)
{
    return repair.text.starts_with(lineKeyPrefix);
}

std::string Repaired(std::string_view header, const Repair& repair)
{
    std::string text(header);
    return text.replace(repair.offset, repair.found.size(), repair.text);
}

std::vector<Repair> FindRepairs(const HeaderToRepair& header)
{
    return CRepairFinder(header).Find();
}

} // namespace veltaris::salvage
