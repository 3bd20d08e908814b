#include "inspect/ContentChecks.h"

#include "velstdlib/string/NumberText.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <array>
#include <cmath>
#include <optional>
#include <unordered_set>
#include <utility>

namespace veltaris::inspect {

namespace dataset = velflexlib::dataset;

namespace {

constexpr std::array<std::string_view, 3> axisNames{"point axis", "line axis", "signal axis"};

bool IsRounded(double value)
{
    const std::string written = velstdlib::string::FormatDouble(value);
    return std::isfinite(value) && velstdlib::string::ParseNumber<double>(written) != value;
}

class CChannelChecker
{
public:
    CChannelChecker(const PlacedChannel& channel, const CHeaderLines& lines, const CSectionUses& uses,
                    CFindingList& findings)
        : m_channel(channel), m_lines(lines), m_uses(uses), m_findings(findings),
          m_name(Quoted(lines.SectionName(channel.section)))
    {
    }

    void Check()
    {
        for (std::size_t axis = 0; axis < axisNames.size(); ++axis)
            CheckAxis(axis, m_channel.buffer->GetAxis(axis));
        CheckCurrentLine();
        if (m_lines.IntOf(m_channel.section, "Version", 1) == lineAxesVersion)
            CheckLineAxes();
        if (m_channel.samples.bits == 8 && m_channel.heldLines > 0)
            Add(RuleId::BitsWidened, "SaveBits", "16", "The samples of section " + m_name + " have 8 bits.");
    }

private:
    void Add(RuleId rule, std::string_view key, std::string taken, std::string sentence)
    {
        m_findings.AddKey(rule, m_channel.section, key, {std::move(taken), std::move(sentence)});
    }

    void CheckAxis(std::size_t index, const dataset::CAxis& axis)
    {
        const std::string prefix = "Dim" + std::to_string(index);
        const std::string name = "The " + std::string(axisNames.at(index)) + " of section " + m_name;
        const std::string range = velstdlib::string::FormatDouble(axis.range);
        if (!std::isfinite(axis.range) || !std::isfinite(axis.min))
            Add(RuleId::AxisNotFinite, prefix + (std::isfinite(axis.min) ? "Range" : "Min"), range,
                name + " is not finite.");
        else if (!std::isfinite(axis.min + axis.range))
            Add(RuleId::AxisNotFinite, prefix + "Range", range, name + " ends beyond the largest number.");
        else if (axis.range == 0 && HasExtent(index))
            Add(index == dataset::signalAxis ? RuleId::SignalRangeZero : RuleId::AxisRangeZero, prefix + "Range", "0",
                name + " has the range 0.");
        else if (axis.range < 0)
            Add(RuleId::AxisReversed, prefix + "Range", range, name + " has a negative range.");
        CheckDigits(prefix + "Range", axis.range);
        CheckDigits(prefix + "Min", axis.min);
    }

    // Whether an axis of range 0 hides something.
    bool HasExtent(std::size_t index) const
    {
        const ChannelSamples& samples = m_channel.samples;
        switch (index) {
        case dataset::pointAxis:
            return samples.points > 1;
        case dataset::lineAxis:
            return samples.lines > 1;
        default:
            return m_channel.heldLines > 0;
        }
    }

    void CheckDigits(const std::string& key, double value)
    {
        if (IsRounded(value))
            Add(RuleId::NumberRounded, key, velstdlib::string::FormatDouble(value),
                Quoted(key) + " in section " + m_name + " is saved as " + velstdlib::string::FormatDouble(value) + ".");
    }

    void CheckCurrentLine()
    {
        const int line = m_lines.IntOf(m_channel.section, "CurLine", 0);
        if (line < 0 || (line > 0 && std::cmp_greater_equal(line, m_channel.samples.lines)))
            Add(RuleId::CurrentLineOutside, "CurLine", std::to_string(line),
                "The current line of section " + m_name + " is " + std::to_string(line) + ", of " +
                    std::to_string(m_channel.samples.lines) + " lines.");
    }

    void CheckLineAxes()
    {
        for (const std::uint32_t position : m_lines.LinesOf(m_channel.section)) {
            const HeaderLine& line = m_lines.Lines()[position];
            if (line.isReplaced || line.kind != HeaderLine::Kind::Key)
                continue;
            const auto key = FindKeySpec(SectionUse::Channel, m_uses.Version(), m_lines.Key(line));
            if (key && key->spec->pattern.starts_with("LineDim") && key->indices.first < m_channel.samples.lines)
                CheckLineAxis(line, *key->spec);
        }
    }

    void CheckLineAxis(const HeaderLine& line, const KeySpec& spec)
    try {
        const auto number = velstdlib::string::ParseNumber<double>(m_lines.Value(line));
        const std::string key(m_lines.Key(line));
        if (spec.kind == ValueKind::AxisNumber)
            CheckLineNumber(line, key, number);
        else if (number > static_cast<double>(m_channel.samples.points))
            m_findings.AddLine(RuleId::LineTooLong, line,
                               {"a line that cannot be read",
                                Quoted(key) + " in section " + m_name + " is " + Quoted(m_lines.Value(line)) + " of " +
                                    std::to_string(m_channel.samples.points) + " points."});
    } catch (const boost::bad_lexical_cast&) {
        return; // which is found where values are
    }

    void CheckLineNumber(const HeaderLine& line, const std::string& key, double number)
    {
        if (!std::isfinite(number))
            m_findings.AddLine(RuleId::AxisNotFinite, line,
                               {"as it stands", Quoted(key) + " in section " + m_name + " is not finite."});
        CheckDigits(key, number);
    }

    const PlacedChannel& m_channel;
    const CHeaderLines& m_lines;
    const CSectionUses& m_uses;
    CFindingList& m_findings;
    std::string m_name; // of the section
};

} // namespace

void CheckChannels(const std::vector<PlacedChannel>& channels, const CHeaderLines& lines, const CSectionUses& uses,
                   CFindingList& findings)
{
    std::unordered_set<std::uint32_t> checked;
    for (const PlacedChannel& channel : channels) {
        if (channel.section != noSection && checked.insert(channel.section).second)
            CChannelChecker(channel, lines, uses, findings).Check();
    }
}

} // namespace veltaris::inspect
