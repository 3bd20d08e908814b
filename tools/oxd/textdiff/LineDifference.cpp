#include "oxd/textdiff/LineDifference.h"

#include "oxd/textdiff/ShortestEdit.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace oxd {

namespace {

// Gives each line a number, which is the same for lines that are the same. Sorting takes no longer for lines that were
// made to be hard to tell apart.
LineNumbers NumberLines(const Lines& lines, const Lines& distinct)
{
    LineNumbers numbers(lines.size());
    std::transform(lines.begin(), lines.end(), numbers.begin(), [&](std::string_view line) {
        return static_cast<std::uint32_t>(std::lower_bound(distinct.begin(), distinct.end(), line) - distinct.begin());
    });
    return numbers;
}

Lines DistinctLines(const Lines& before, const Lines& after)
{
    Lines distinct = before;
    distinct.insert(distinct.end(), after.begin(), after.end());
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    return distinct;
}

constexpr std::size_t none = static_cast<std::size_t>(-1);
constexpr std::size_t several = none - 1;

// Where each number stands in the text, if it does once.
std::vector<std::size_t> OnlyPlaces(const LineNumbers& numbers, std::size_t count)
{
    std::vector<std::size_t> places(count, none);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        places[numbers[i]] = places[numbers[i]] == none ? i : several;
    }
    return places;
}

struct Anchor
{
    std::size_t before;
    std::size_t after;
    std::size_t previous; // the anchor in front of it in the longest row that ends with it
};

// A row of anchors that is ascending in both texts and as long as can be, by the heads of the rows of each length.
std::vector<Anchor> LongestRow(std::vector<Anchor> anchors)
{
    std::vector<std::size_t> heads;
    for (std::size_t i = 0; i < anchors.size(); ++i) {
        const auto head =
            std::lower_bound(heads.begin(), heads.end(), anchors[i].after,
                             [&](std::size_t at, std::size_t after) { return anchors[at].after < after; });
        anchors[i].previous = head == heads.begin() ? none : *(head - 1);
        if (head == heads.end()) {
            heads.push_back(i);
        } else {
            *head = i;
        }
    }
    std::vector<Anchor> row;
    for (std::size_t i = heads.empty() ? none : heads.back(); i != none; i = anchors[i].previous) {
        row.push_back(anchors[i]);
    }
    std::reverse(row.begin(), row.end());
    return row;
}

// Lines that both texts have once, such as the heads of sections, are taken for the same. So a header of any length
// falls into parts, each of which takes little time.
std::vector<Anchor> FindAnchors(const LineNumbers& before, const LineNumbers& after, std::size_t count)
{
    const std::vector<std::size_t> places = OnlyPlaces(after, count);
    const std::vector<std::size_t> ownPlaces = OnlyPlaces(before, count);
    std::vector<Anchor> anchors;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (ownPlaces[before[i]] == i && places[before[i]] < several) {
            anchors.push_back({i, places[before[i]], none});
        }
    }
    return LongestRow(std::move(anchors));
}

} // namespace

LineMarks CompareLines(const Lines& before, const Lines& after)
{
    const Lines distinct = DistinctLines(before, after);
    const LineNumbers a = NumberLines(before, distinct);
    const LineNumbers b = NumberLines(after, distinct);
    LineMarks difference{std::vector<bool>(a.size()), std::vector<bool>(b.size())};
    ShortestEdit edit(a, b, difference);
    Box part;
    for (const Anchor& anchor : FindAnchors(a, b, distinct.size())) {
        part.endBefore = anchor.before;
        part.endAfter = anchor.after;
        edit.Mark(part);
        part.beginBefore = anchor.before + 1;
        part.beginAfter = anchor.after + 1;
    }
    part.endBefore = a.size();
    part.endAfter = b.size();
    edit.Mark(part);
    return difference;
}

} // namespace oxd
