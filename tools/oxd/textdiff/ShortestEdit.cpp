#include "oxd/textdiff/ShortestEdit.h"

#include <algorithm>
#include <cstdlib>

namespace oxd {

namespace {

constexpr std::ptrdiff_t mostSteps = 100'000'000;

} // namespace

ShortestEdit::ShortestEdit(const LineNumbers& before, const LineNumbers& after, LineMarks& difference)
    : m_before(before), m_after(after), m_difference(difference), m_stepsLeft(mostSteps)
{
}

void ShortestEdit::Mark(const Box& part)
{
    m_waiting.push_back(part);
    while (!m_waiting.empty()) {
        const Box box = Trimmed(m_waiting.back());
        m_waiting.pop_back();
        if (box.beginBefore == box.endBefore || box.beginAfter == box.endAfter) {
            MarkAll(box);
        } else {
            Split(box);
        }
    }
}

// Without the lines that are the same at both ends.
Box ShortestEdit::Trimmed(Box box) const
{
    const auto isEmpty = [&] { return box.beginBefore == box.endBefore || box.beginAfter == box.endAfter; };
    while (!isEmpty() && m_before[box.beginBefore] == m_after[box.beginAfter]) {
        ++box.beginBefore;
        ++box.beginAfter;
    }
    while (!isEmpty() && m_before[box.endBefore - 1] == m_after[box.endAfter - 1]) {
        --box.endBefore;
        --box.endAfter;
    }
    return box;
}

void ShortestEdit::MarkAll(const Box& box)
{
    const auto at = [](std::size_t i) { return static_cast<Index>(i); };
    std::fill(m_difference.removed.begin() + at(box.beginBefore), m_difference.removed.begin() + at(box.endBefore),
              true);
    std::fill(m_difference.added.begin() + at(box.beginAfter), m_difference.added.begin() + at(box.endAfter), true);
}

void ShortestEdit::Split(const Box& box)
{
    const auto middle = FindMiddle(box);
    if (!middle) {
        MarkAll(box);
        return;
    }
    const auto before = [&](Index x) { return box.beginBefore + static_cast<std::size_t>(x); };
    const auto after = [&](Index y) { return box.beginAfter + static_cast<std::size_t>(y); };
    m_waiting.push_back({box.beginBefore, before(middle->fromX), box.beginAfter, after(middle->fromY)});
    m_waiting.push_back({before(middle->toX), box.endBefore, after(middle->toY), box.endAfter});
}

// Where a shortest path from the begin and one from the end meet, each of half of the cost. Nothing if that takes too
// many steps.
std::optional<ShortestEdit::Run> ShortestEdit::FindMiddle(const Box& box)
{
    const auto width = static_cast<Index>(box.endBefore - box.beginBefore);
    const auto height = static_cast<Index>(box.endAfter - box.beginAfter);
    m_offset = height + 1;
    for (auto& reach : m_reach) {
        reach.resize(std::max(reach.size(), static_cast<std::size_t>(width + height + 3)));
    }
    for (const bool fromEnd : {false, true}) {
        Reach(fromEnd, 1) = 0;
    }
    for (Index cost = 0; cost <= (width + height + 1) / 2 && m_stepsLeft > 0; ++cost) {
        for (const bool fromEnd : {false, true}) {
            if (const auto run = Advance(box, cost, fromEnd)) {
                return run;
            }
        }
    }
    return std::nullopt;
}

// Extends the paths of the cost before by one line, and then along lines that are the same. Diagonals that leave the
// box are skipped. Gives the run with which a path meets one from the other end.
std::optional<ShortestEdit::Run> ShortestEdit::Advance(const Box& box, Index cost, bool fromEnd)
{
    const auto width = static_cast<Index>(box.endBefore - box.beginBefore);
    const auto height = static_cast<Index>(box.endAfter - box.beginAfter);
    const Index lowest = -(cost - 2 * std::max<Index>(0, cost - height));
    const Index highest = cost - 2 * std::max<Index>(0, cost - width);
    const bool mayMeet = ((width + height) % 2 != 0) != fromEnd;
    const Index othersCost = fromEnd ? cost : cost - 1;
    for (Index diagonal = lowest; diagonal <= highest; diagonal += 2) {
        const Index below = diagonal == cost && cost > 0 ? -1 : Reach(fromEnd, diagonal + 1);
        const Index above = diagonal == -cost ? -1 : Reach(fromEnd, diagonal - 1);
        const Index fromX = above < below || diagonal == -cost ? below : above + 1;
        Index x = fromX;
        while (x < width && x - diagonal < height && IsSame(box, x, x - diagonal, fromEnd)) {
            ++x;
        }
        Reach(fromEnd, diagonal) = x;
        m_stepsLeft -= 1 + x - fromX;
        const Index others = width - height - diagonal;
        if (mayMeet && std::abs(others) <= othersCost && x + Reach(!fromEnd, others) >= width) {
            const Run run{fromX, fromX - diagonal, x, x - diagonal};
            return fromEnd ? Run{width - run.toX, height - run.toY, width - run.fromX, height - run.fromY} : run;
        }
    }
    return std::nullopt;
}

bool ShortestEdit::IsSame(const Box& box, Index x, Index y, bool fromEnd) const
{
    const auto distanceX = static_cast<std::size_t>(x);
    const auto distanceY = static_cast<std::size_t>(y);
    return fromEnd ? m_before[box.endBefore - 1 - distanceX] == m_after[box.endAfter - 1 - distanceY]
                   : m_before[box.beginBefore + distanceX] == m_after[box.beginAfter + distanceY];
}

} // namespace oxd
