#include "salvage/Survivors.h"

#include "salvage/Traces.h"

#include <algorithm>
#include <utility>

namespace veltaris::salvage {

namespace {

constexpr std::size_t mostTried = 1024; // repairs of one header
constexpr int mostRemoved = 16;         // sections that cannot be read

inspect::Inspection InspectImage(std::istream& file, const std::string& fileName, const FileImage& image)
{
    CImageStream stream(file, image);
    return inspect::InspectStream(stream, fileName);
}

// A failure of the header itself; what concerns samples alone does not keep it from being read.
bool IsUnreadable(const inspect::Finding& finding)
{
    using enum inspect::RuleId;
    const inspect::RuleId rule = finding.rule->number;
    return finding.rule->stopsOpening && rule != SamplesMissing && rule != UnusableBits && rule != TooManySamples;
}

// The keys of a section are removed from the last one on, so that the offsets of the others stay.
void RemoveKeys(std::string& header, const inspect::CHeaderLines& lines, std::uint32_t section)
{
    const auto positions = lines.LinesOf(section);
    for (std::size_t i = positions.size(); i-- > 0;) {
        const std::size_t offset = lines.Lines()[positions[i]].offset;
        header.erase(offset, header.find('\n', offset) + 1 - offset);
    }
}

} // namespace

CLegible::CLegible(std::istream& file, std::string fileName, FileImage image)
    : m_file(file), m_fileName(std::move(fileName)), m_original(std::move(image)), m_image(m_original)
{
    Read();
    for (int removed = 0; removed < mostRemoved && RemoveUnreadable(); ++removed)
        Read();
    m_isRead = std::ranges::none_of(m_inspection.findings, IsUnreadable);
}

void CLegible::Read()
{
    m_inspection = InspectImage(m_file, m_fileName, m_image);
    m_uses.reset();
    m_lines = std::make_unique<inspect::CHeaderLines>(m_image.header);
    m_uses = std::make_unique<inspect::CSectionUses>(*m_lines);
}

// Returns whether the header is another now.
bool CLegible::RemoveUnreadable()
{
    const auto found = std::ranges::find_if(m_inspection.findings, IsUnreadable);
    if (found == m_inspection.findings.end())
        return false;
    if (found->rule->number == inspect::RuleId::SectionWithoutName) {
        const auto head = m_image.header.find("[]", found->offset);
        if (head == std::string::npos)
            return false;
        m_image.header.insert(head + 1, "?");
        return true;
    }
    const std::uint32_t section = m_lines->FindSection(found->section);
    if (section == inspect::noSection || section == m_uses->DataSetSection() || m_lines->LinesOf(section).empty())
        return false;
    RemoveKeys(m_image.header, *m_lines, section);
    return true;
}

std::optional<Survivor> Survive(std::istream& file, const std::string& fileName, FileImage image)
{
    Survivor survivor{std::move(image), {}, {}};
    survivor.inspection = InspectImage(file, fileName, survivor.image);
    const inspect::Inspection& inspection = survivor.inspection;
    const inspect::CHeaderLines lines(survivor.image.header);
    const bool fits = inspection.Opens() && inspection.headerBytes == survivor.image.header.size() &&
                      inspection.claimedBytes == survivor.image.samples.bytes &&
                      std::ranges::all_of(inspection.channels, &inspect::ChannelSamples::isCertain);
    if (!fits || !HasNoTraces(lines, inspect::CSectionUses(lines), inspection))
        return std::nullopt;
    return survivor;
}

std::vector<Survivor> FindSurvivors(const CLegible& header)
{
    const FileImage& image = header.Original();
    const inspect::CHeaderLines lines(image.header);
    const inspect::CSectionUses uses(lines);
    const std::vector<Repair> repairs = FindRepairs({image.header, lines, uses, header.Inspected()});
    std::vector<Survivor> survivors;
    if (repairs.size() > mostTried)
        return survivors;
    for (const Repair& repair : repairs) {
        auto survivor = Survive(header.File(), header.FileName(), {Repaired(image.header, repair), image.samples});
        if (!survivor)
            continue;
        survivor->repair = repair;
        survivors.push_back(std::move(*survivor));
    }
    return survivors;
}

std::size_t FirstOtherNumber(const CLegible& header)
{
    const auto& channels = header.Inspected().channels;
    std::size_t first = channels.size();
    for (const Repair& repair :
         FindRepairs({header.Image().header, header.Lines(), header.Uses(), header.Inspected()})) {
        if (repair.text.starts_with("Points=") || repair.text.starts_with("Lines=")) {
            const auto isOfSection = [&](const inspect::ChannelSamples& channel) {
                return channel.section == repair.section;
            };
            first = std::min(first,
                             static_cast<std::size_t>(std::ranges::find_if(channels, isOfSection) - channels.begin()));
        }
    }
    return first;
}

} // namespace veltaris::salvage
