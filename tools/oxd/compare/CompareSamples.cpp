#include "oxd/compare/CompareSamples.h"

#include "oxd/library/LineOperators.h"
#include "oxd/library/LineTally.h"

#include <algorithm>

namespace oxd {

namespace {

// The lines of one channel, and those of them that cannot be read.
class LineReader
{
public:
    explicit LineReader(const Channel& channel) : m_channel(channel), m_lines(channel.Lines()) {}

    // Nothing if the line cannot be read; no samples if the channel lacks it.
    std::optional<std::vector<std::int32_t>> Raw(std::uint64_t line)
    {
        if (line >= m_lines) {
            return std::vector<std::int32_t>();
        }
        try {
            return m_channel.ReadRaw(line, rawData.code);
        } catch (const LibraryError& error) {
            m_unreadable.Add(line, error.what());
            return std::nullopt;
        }
    }

    std::vector<double> Real(std::uint64_t line) const { return m_channel.ReadReal(line, rawData.code); }

    std::uint64_t Lines() const { return m_lines; }
    const LineTally& Unreadable() const { return m_unreadable; }

private:
    const Channel& m_channel;
    std::uint64_t m_lines;
    LineTally m_unreadable;
};

SignalScale ScaleOf(const Axis& axis, std::int64_t bits)
{
    return {axis.min, axis.range, bits};
}

class SampleComparison
{
public:
    SampleComparison(const ChannelPair& channels, const Axis& a, const Axis& b, const ComparisonOptions& options)
        : m_options(options), m_place(channels.place), m_a(channels.a), m_b(channels.b),
          m_rule(ScaleOf(a, channels.bitsOfA), ScaleOf(b, channels.bitsOfB), options.tolerance)
    {
        m_values.unit = a.unit;
    }

    void Run()
    {
        const std::uint64_t lines = std::max(m_a.Lines(), m_b.Lines());
        for (std::uint64_t line = 0; line < lines; ++line) {
            CompareLine(line);
        }
    }

    void Store(Recorder& recorder)
    {
        const Comparison& outcome = recorder.Outcome();
        recorder.Add(std::move(m_valid));
        recorder.Add(std::move(m_values));
        for (const auto& [file, lines] : {std::pair(outcome.a, &m_a), std::pair(outcome.b, &m_b)}) {
            if (lines->Unreadable().Count() > 0) {
                recorder.AddProblem(file + ": group " + std::to_string(m_place.group->position) + ", channel " +
                                    std::to_string(m_place.channel->position) + ": " +
                                    lines->Unreadable().Sentence("cannot be read"));
            }
        }
    }

private:
    void CompareLine(std::uint64_t line)
    {
        const auto a = m_a.Raw(line);
        const auto b = m_b.Raw(line);
        if (!a || !b) {
            return;
        }
        if (a->size() != b->size()) {
            m_valid.Add({.line = line, .a = a->size(), .b = b->size()},
                        Distance(static_cast<double>(a->size()), static_cast<double>(b->size())),
                        m_options.shownAtMost);
        }
        const std::size_t common = std::min(a->size(), b->size());
        const bool sameRaw = std::equal(a->begin(), a->begin() + static_cast<std::ptrdiff_t>(common), b->begin());
        if (common > 0 && !(sameRaw && m_rule.ComparesRaw())) {
            CompareValues(line, *a, *b, common);
        }
    }

    void CompareValues(std::uint64_t line, const std::vector<std::int32_t>& rawOfA,
                       const std::vector<std::int32_t>& rawOfB, std::size_t count)
    {
        const std::vector<double> valuesOfA = m_a.Real(line);
        const std::vector<double> valuesOfB = m_b.Real(line);
        const std::size_t readable = std::min({count, valuesOfA.size(), valuesOfB.size()});
        for (std::size_t point = 0; point < readable; ++point) {
            const Sample a{rawOfA[point], valuesOfA[point]};
            const Sample b{rawOfB[point], valuesOfB[point]};
            if (!m_rule.AreSame(a, b)) {
                m_values.Add({line, point, a.value, b.value, RawPair{a.raw, b.raw}}, Distance(a.value, b.value),
                             m_options.shownAtMost);
            }
        }
    }

    const ComparisonOptions& m_options;
    const Place& m_place;
    LineReader m_a;
    LineReader m_b;
    SampleRule m_rule;
    Difference m_valid{Aspect::Samples, "valid samples", m_place};
    Difference m_values{Aspect::Samples, "value", m_place};
};

} // namespace

void CompareSamples(const ChannelPair& channels, Recorder& recorder)
{
    if (!recorder.Wants(Aspect::Samples)) {
        return;
    }
    const Axis a = channels.a.ReadAxis(signalAxis);
    const Axis b = channels.b.ReadAxis(signalAxis);
    if (a.unit != b.unit) {
        recorder.Differ(Aspect::Samples, "unit of the values", channels.place, a.unit, b.unit);
        return;
    }
    SampleComparison comparison(channels, a, b, recorder.Options());
    comparison.Run();
    comparison.Store(recorder);
}

} // namespace oxd
