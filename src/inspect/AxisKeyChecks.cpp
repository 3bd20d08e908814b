#include "inspect/HeaderChecks.h"

#include "velflexlib/dataset/serialisers/DataSetSection.h"
#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/FoldedText.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace veltaris::inspect {

namespace {

constexpr int plainVersion = 2; // of a channel's section, from which on units have no prefixes of their numbers

constexpr std::array<std::string_view, 6> numberKeys{"Dim0Range", "Dim0Min",   "Dim1Range",
                                                     "Dim1Min",   "Dim2Range", "Dim2Min"};
constexpr std::array<std::string_view, 3> unitKeys{"Dim0Unit", "Dim1Unit", "Dim2Unit"};

// Of one line each.
constexpr std::array<std::string_view, 3> linePatterns{"LineDim#Range", "LineDim#Min", "LineDim#Points"};

using Indices = std::vector<std::uint64_t>;

// The text, which is UTF-8, without its first character.
std::string_view BehindFirst(std::string_view text)
{
    const auto isWithin = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    text.remove_prefix(text.empty() ? 0 : 1);
    while (!text.empty() && isWithin(text.front()))
        text.remove_prefix(1);
    return text;
}

// Whether the text begins with `whole`, or would if one character were put in, left out or changed.
bool NearlyBeginsWith(std::string_view text, std::string_view whole)
{
    const auto begins = std::ranges::mismatch(text, whole, {}, velstdlib::string::Folded, velstdlib::string::Folded);
    const std::string_view rest(begins.in1, text.end()), restOfWhole(begins.in2, whole.end());
    if (restOfWhole.empty())
        return true;
    const std::string_view next = BehindFirst(rest);
    const auto beginsFolded = [](std::string_view a, std::string_view b) {
        return velstdlib::string::EqualFolded(a.substr(0, b.size()), b);
    };
    return beginsFolded(next, restOfWhole.substr(1)) || beginsFolded(rest, restOfWhole.substr(1)) ||
           beginsFolded(next, restOfWhole);
}

// Checks the section of one channel.
class CAxisKeyChecker
{
public:
    CAxisKeyChecker(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings, std::uint32_t section)
        : m_lines(lines), m_uses(uses), m_findings(findings), m_section(section),
          m_version(lines.IntOf(section, "Version", 1)), m_where(" in section " + Quoted(lines.SectionName(section)))
    {
    }

    void Check()
    {
        for (const std::string_view key : numberKeys)
            CheckNumber(key);
        for (const std::string_view key : unitKeys)
            CheckUnit(key);
        CheckCutValues();
        CheckPrefixes();
        CheckLineKeys();
    }

private:
    // The lines of the section from its first head to the next one.
    std::span<const HeaderLine> Body() const
    {
        const HeaderLine* const head = &m_lines.SectionHead(m_section);
        const HeaderLine* const end = m_lines.Lines().data() + m_lines.Lines().size();
        return {head + 1, std::find_if(head + 1, end,
                                       [](const HeaderLine& line) { return line.kind == HeaderLine::Kind::Section; })};
    }

    // Whether the key is there without a value, which is found then.
    bool FindEmptied(std::string_view key, const std::string& taken)
    {
        const auto body = Body();
        const auto line = std::ranges::find_if(body, [&](const HeaderLine& each) {
            return each.kind == HeaderLine::Kind::Removal && velstdlib::string::EqualFolded(m_lines.Key(each), key);
        });
        if (line == body.end())
            return false;
        m_findings.AddLine(RuleId::AxisKeyMissing, *line,
                           {taken, Quoted(key) + m_where + " has no value; " + taken + " is used instead."});
        return true;
    }

    // Files of version 1 may lack numbers.
    void CheckNumber(std::string_view key)
    {
        const std::string taken = m_version < plainVersion && key.ends_with("Range") ? "1" : "0";
        if (m_lines.FindKey(m_section, key) || FindEmptied(key, taken))
            return;
        if (m_version < plainVersion)
            FindTrace(key, taken);
        else
            m_findings.AddKey(RuleId::AxisKeyMissing, m_section, key,
                              {taken, Quoted(key) + m_where + " is missing; " + taken + " is used instead."});
    }

    // A unit that is empty has no key.
    void CheckUnit(std::string_view key)
    {
        if (!m_lines.FindKey(m_section, key) && !FindEmptied(key, "no unit"))
            FindTrace(key, "no unit");
    }

    // Of a key that may be missing.
    void FindTrace(std::string_view key, const std::string& taken)
    {
        const auto body = Body();
        for (std::size_t i = 0; i < body.size(); ++i) {
            if (IsTraceOf(std::string(key) + "=", body, i))
                return m_findings.AddLine(RuleId::AxisKeyDamaged, body[i],
                                          {taken, Quoted(key) + m_where + " is missing, and " +
                                                      Quoted(m_lines.Text(body[i])) + " looks like what is left."});
        }
    }

    // Whether damage to one byte can have made the line of the beginning of another one. A line feed makes two.
    bool IsTraceOf(const std::string& beginning, std::span<const HeaderLine> body, std::size_t i) const
    {
        const std::string_view text = m_lines.Text(body[i]);
        if (text.find(beginning) != std::string_view::npos)
            return true;
        const bool isLine = body[i].kind != HeaderLine::Kind::Other;
        if (isLine && FindKeySpec(SectionUse::Channel, m_uses.Version(), m_lines.Key(body[i])))
            return false;
        const bool isCut = !isLine && i + 1 < body.size();
        return NearlyBeginsWith(text, beginning) ||
               (isCut &&
                NearlyBeginsWith(std::string(text) + "\n" + std::string(m_lines.Text(body[i + 1])), beginning));
    }

    // Numbers and units whose line is followed by one that is neither a section nor a key.
    void CheckCutValues()
    {
        const auto body = Body();
        for (std::size_t i = 0; i + 1 < body.size(); ++i) {
            const HeaderLine& line = body[i];
            const bool isCut = line.kind == HeaderLine::Kind::Key && !line.isReplaced &&
                               body[i + 1].kind == HeaderLine::Kind::Other && body[i + 1].number == line.number + 1;
            const auto key =
                isCut ? FindKeySpec(SectionUse::Channel, m_uses.Version(), m_lines.Key(line)) : std::nullopt;
            if (key && IsOfAxis(*key->spec) && !key->spec->pattern.ends_with("Name"))
                m_findings.AddLine(RuleId::AxisKeyDamaged, line,
                                   {std::string(m_lines.Value(line)),
                                    Quoted(m_lines.Key(line)) + m_where + " is " + Quoted(m_lines.Value(line)) +
                                        ", and the line behind it, which is ignored, may belong to the value."});
        }
    }

    // Data sets of version 2 are written with channels of version 2 or 3, whose units have no prefixes of numbers.
    void CheckPrefixes()
    {
        if (m_uses.Version() != velflexlib::dataset::groupsVersion || m_version >= plainVersion)
            return;
        for (const std::string_view key : unitKeys) {
            const std::string_view unit = m_lines.ValueOf(m_section, key);
            const std::string_view prefix = velstdlib::math::LeadingSIPrefix(unit);
            if (!prefix.empty() && prefix.size() < unit.size())
                return m_findings.AddKey(
                    RuleId::ChannelVersionDoubtful, m_section, "Version",
                    {std::to_string(m_version), "The version" + m_where + " is " + std::to_string(m_version) +
                                                    ", so that " + Quoted(prefix) + " of the unit " + Quoted(unit) +
                                                    " is used as a prefix of numbers."});
        }
    }

    void CheckLineKeys()
    {
        std::array<Indices, linePatterns.size()> given;
        const HeaderLine* any = nullptr;
        for (const std::uint32_t position : m_lines.LinesOf(m_section)) {
            const HeaderLine& line = m_lines.Lines()[position];
            if (line.isReplaced || line.kind != HeaderLine::Kind::Key)
                continue;
            for (std::size_t i = 0; i < linePatterns.size(); ++i) {
                const auto indices = MatchKey(m_lines.Key(line), linePatterns.at(i));
                if (!indices)
                    continue;
                given.at(i).push_back(indices->first);
                any = &line;
            }
        }
        if (any && m_version == lineAxesVersion)
            CheckEachLine(given);
        else if (any)
            m_findings.AddKey(RuleId::LineKeysIgnored, m_section, "Version",
                              {std::to_string(m_version), "The version" + m_where + " is " + std::to_string(m_version) +
                                                              ", so that " + Quoted(m_lines.Key(*any)) +
                                                              " and the like are ignored."});
    }

    // Files are written with all keys for all lines where one line differs from the channel. Others may have the
    // numbers of points alone.
    void CheckEachLine(std::array<Indices, linePatterns.size()>& given)
    {
        const auto lines = static_cast<std::uint64_t>(std::max(m_lines.IntOf(m_section, "Lines", 0), 0));
        for (Indices& indices : given) {
            std::erase_if(indices, [&](std::uint64_t line) { return line >= lines; });
            std::ranges::sort(indices);
        }
        if (std::ranges::all_of(given, &Indices::empty))
            return;
        for (std::size_t i = 0; i < linePatterns.size(); ++i) {
            const bool isExpected = !given.at(i).empty() || linePatterns.at(i).ends_with("Points");
            if (isExpected && given.at(i).size() < lines)
                AddMissingOfLines(linePatterns.at(i), given.at(i), lines - given.at(i).size());
        }
    }

    void AddMissingOfLines(std::string_view pattern, const Indices& given, std::uint64_t missing)
    {
        std::uint64_t first = 0;
        while (first < given.size() && given[first] == first)
            ++first;
        std::string key(pattern);
        key.replace(key.find('#'), 1, std::to_string(first));
        const std::string others = missing == 1 ? "" : ", and so are those of " + std::to_string(missing - 1) + " more";
        m_findings.AddKey(key.ends_with("Points") ? RuleId::LinePointsMissing : RuleId::AxisKeyMissing, m_section, key,
                          {"that of the channel", Quoted(key) + m_where + " is missing" + others +
                                                      ", although lines have axes of their own."});
    }

    const CHeaderLines& m_lines;
    const CSectionUses& m_uses;
    CFindingList& m_findings;
    std::uint32_t m_section;
    int m_version;
    std::string m_where;
};

} // namespace

void CheckAxisKeys(const CHeaderLines& lines, const CSectionUses& uses, CFindingList& findings)
{
    for (std::uint32_t section = 0; section < lines.SectionCount(); ++section) {
        if (uses.Has(section, SectionUse::Channel))
            CAxisKeyChecker(lines, uses, findings, section).Check();
    }
}

} // namespace veltaris::inspect
