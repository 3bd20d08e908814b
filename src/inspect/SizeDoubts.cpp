#include "inspect/SizeDoubts.h"

#include "inspect/ValueCheck.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veltaris::inspect {

namespace {

constexpr std::string_view lineSizes = "LineDim#Points";

class CDoubtCollector
{
public:
    CDoubtCollector(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section)
        : m_lines(lines), m_uses(uses), m_section(section)
    {
    }

    SizeDoubts Collect()
    {
        for (const std::uint32_t position : m_lines.LinesOf(m_section)) {
            const HeaderLine& line = m_lines.Lines()[position];
            const auto key = FindKeySpec(SectionUse::Channel, m_uses.Version(), m_lines.Key(line));
            if (key)
                CheckLine(position, *key->spec);
        }
        CheckMissing();
        CheckLineSizes();
        return std::move(m_doubts);
    }

private:
    static bool IsSize(const KeySpec& spec) { return spec.kind == ValueKind::Size || spec.kind == ValueKind::Version; }

    // A line feed that came to stand in a value cuts it, and the rest of it is a line that is ignored.
    bool IsCut(std::uint32_t position) const
    {
        const std::vector<HeaderLine>& lines = m_lines.Lines();
        return position + 1 < lines.size() && lines[position + 1].kind == HeaderLine::Kind::Other;
    }

    void CheckLine(std::uint32_t position, const KeySpec& spec)
    {
        const HeaderLine& line = m_lines.Lines()[position];
        m_hasLineKeys = m_hasLineKeys || spec.pattern.starts_with("LineDim");
        if (!IsSize(spec))
            return;
        if (line.repeats)
            AddOdd(m_lines.Key(line), "appears more than once");
        if (line.isReplaced || line.kind != HeaderLine::Kind::Key)
            return;
        if (IsCut(position))
            AddOdd(m_lines.Key(line), "may be cut, since the line behind it is ignored");
        m_lineSizeCount += spec.pattern == lineSizes ? 1 : 0;
        if (CheckValue(spec, m_lines.Value(line), false))
            m_doubts.doubt = Doubt::Certain;
    }

    // Written files of version 2 have all of these keys. Those of version 1 may lack the bits, which are 8 then.
    void CheckMissing()
    {
        constexpr std::array<std::string_view, 4> sizes{"Points", "Lines", "SaveBits", "Version"};
        const std::size_t expected = sizes.size() - (m_uses.Version() == 1 ? 1 : 0);
        for (const std::string_view key : std::span(sizes).first(expected)) {
            if (!m_lines.FindKey(m_section, key))
                AddOdd(key, "is missing");
        }
    }

    void CheckLineSizes()
    {
        m_doubts.hasLineSizes = m_lineSizeCount > 0;
        const bool hasLineAxes = m_lines.IntOf(m_section, "Version", 1) == lineAxesVersion;
        if (m_hasLineKeys && !hasLineAxes)
            AddOdd("Version", "says that lines have no axes of their own, and there are keys for some");
        else if (m_lineSizeCount > 0 && std::cmp_not_equal(m_lineSizeCount, m_lines.IntOf(m_section, "Lines", 0)))
            AddOdd("Lines", "is not the number of lines that say how many points they have");
    }

    void AddOdd(std::string_view key, const std::string& what)
    {
        if (m_doubts.doubt == Doubt::None)
            m_doubts.doubt = Doubt::UnlessBytesFit;
        if (m_doubts.odd.size() < CFindingList::mostPerRule)
            m_doubts.odd.push_back({std::string(key), Quoted(key) + " in section " +
                                                          Quoted(m_lines.SectionName(m_section)) + " " + what +
                                                          ", and the bytes of the file do not fit the sizes."});
    }

    const CHeaderLines& m_lines;
    const CSectionUses& m_uses;
    std::uint32_t m_section;
    SizeDoubts m_doubts;
    bool m_hasLineKeys = false;
    std::uint64_t m_lineSizeCount = 0;
};

} // namespace

SizeDoubts FindSizeDoubts(const CHeaderLines& lines, const CSectionUses& uses, std::uint32_t section)
{
    return CDoubtCollector(lines, uses, section).Collect();
}

bool IsOneCharacterOff(std::string_view text, std::uint64_t other)
{
    const std::string number = std::to_string(other);
    if (text == number || std::max(text.size(), number.size()) - std::min(text.size(), number.size()) > 1)
        return false;
    const auto begin = std::ranges::mismatch(text, number);
    const std::string_view rest(begin.in1, text.end()), restOfNumber(begin.in2, number.end());
    const std::size_t cut = text.size() < number.size() ? 0 : 1, cutOfNumber = number.size() < text.size() ? 0 : 1;
    return rest.substr(std::min(cut, rest.size())) == restOfNumber.substr(std::min(cutOfNumber, restOfNumber.size()));
}

} // namespace veltaris::inspect
