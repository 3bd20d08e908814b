#include "oxd/textdiff/UnifiedText.h"

#include "oxd/textdiff/LineDifference.h"

#include <algorithm>

namespace oxd {

namespace {

constexpr std::size_t context = 3; // lines around each difference

// Lines of both texts, from `begin` up to but not with `end`.
struct Range
{
    std::size_t begin;
    std::size_t end;
};

struct Hunk
{
    Range before;
    Range after;
};

Lines SplitLines(std::string_view text)
{
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// Differences without the lines around them.
std::vector<Hunk> FindChanges(const LineMarks& difference)
{
    const auto& [removed, added] = difference;
    std::vector<Hunk> changes;
    std::size_t before = 0;
    std::size_t after = 0;
    while (before < removed.size() || after < added.size()) {
        Hunk change{{before, before}, {after, after}};
        while (change.before.end < removed.size() && removed[change.before.end]) {
            ++change.before.end;
        }
        while (change.after.end < added.size() && added[change.after.end]) {
            ++change.after.end;
        }
        const bool isChange = change.before.end > before || change.after.end > after;
        if (isChange) {
            changes.push_back(change);
        }
        before = change.before.end + (isChange ? 0 : 1);
        after = change.after.end + (isChange ? 0 : 1);
    }
    return changes;
}

Range Widened(Range range, std::size_t count)
{
    return {range.begin - std::min(range.begin, context), std::min(range.end + context, count)};
}

// Differences with the lines around them; those that are near each other share these.
std::vector<Hunk> FindHunks(const LineMarks& difference)
{
    std::vector<Hunk> hunks;
    for (const Hunk& change : FindChanges(difference)) {
        const Hunk hunk{Widened(change.before, difference.removed.size()),
                        Widened(change.after, difference.added.size())};
        if (!hunks.empty() && hunk.before.begin <= hunks.back().before.end) {
            hunks.back() = {{hunks.back().before.begin, hunk.before.end}, {hunks.back().after.begin, hunk.after.end}};
        } else {
            hunks.push_back(hunk);
        }
    }
    return hunks;
}

std::string ToText(Range range)
{
    const std::size_t count = range.end - range.begin;
    const std::string first = std::to_string(count == 0 ? range.begin : range.begin + 1);
    return count == 1 ? first : first + "," + std::to_string(count);
}

void AppendLine(std::string& text, char mark, std::string_view line)
{
    text.append(1, mark).append(line).append("\n");
}

void AppendHunk(std::string& text, const Hunk& hunk, const LineMarks& difference, const Lines& before,
                const Lines& after)
{
    text.append("@@ -").append(ToText(hunk.before)).append(" +").append(ToText(hunk.after)).append(" @@\n");
    std::size_t i = hunk.before.begin;
    std::size_t j = hunk.after.begin;
    while (i < hunk.before.end || j < hunk.after.end) {
        if (i < hunk.before.end && difference.removed[i]) {
            AppendLine(text, '-', before[i++]);
        } else if (j < hunk.after.end && difference.added[j]) {
            AppendLine(text, '+', after[j++]);
        } else {
            AppendLine(text, ' ', before[i++]);
            ++j;
        }
    }
}

} // namespace

std::string UnifiedDifference(const NamedText& before, const NamedText& after)
{
    const Lines linesBefore = SplitLines(before.text);
    const Lines linesAfter = SplitLines(after.text);
    const LineMarks difference = CompareLines(linesBefore, linesAfter);
    const std::vector<Hunk> hunks = FindHunks(difference);
    std::string text;
    if (!hunks.empty()) {
        text = "--- " + before.name + "\n+++ " + after.name + "\n";
    }
    for (const Hunk& hunk : hunks) {
        AppendHunk(text, hunk, difference, linesBefore, linesAfter);
    }
    return text;
}

} // namespace oxd
