// The fewest lines to remove from one text, and to add to it, that make it another: Myers' algorithm in linear space.
#pragma once

#include "oxd/textdiff/LineMarks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace oxd {

using LineNumbers = std::vector<std::uint32_t>; // the same for lines that are the same

// A part of the text before, and one of the text after.
struct Box
{
    std::size_t beginBefore = 0;
    std::size_t endBefore = 0;
    std::size_t beginAfter = 0;
    std::size_t endAfter = 0;
};

// Marks differences of parts of two texts. The arguments must outlive it. All parts together take no more than about a
// second: where there is no time left, all lines are marked.
class ShortestEdit
{
public:
    ShortestEdit(const LineNumbers& before, const LineNumbers& after, LineMarks& difference);

    void Mark(const Box& part);

private:
    using Index = std::ptrdiff_t;

    // A path through the grid of a box goes right for a line that is removed, down for one that is added, and along a
    // diagonal for one that is the same. These are places on a diagonal: the numbers of lines of both texts passed.
    struct Run
    {
        Index fromX, fromY, toX, toY;
    };

    Box Trimmed(Box box) const;
    void Split(const Box& box);
    void MarkAll(const Box& box);
    std::optional<Run> FindMiddle(const Box& box);
    std::optional<Run> Advance(const Box& box, Index cost, bool fromEnd);
    bool IsSame(const Box& box, Index x, Index y, bool fromEnd) const;

    // How far paths from one end of a box get on a diagonal.
    Index& Reach(bool fromEnd, Index diagonal)
    {
        return m_reach.at(fromEnd ? 1 : 0)[static_cast<std::size_t>(diagonal + m_offset)];
    }

    const LineNumbers& m_before;
    const LineNumbers& m_after;
    LineMarks& m_difference;
    std::vector<Box> m_waiting;
    std::array<std::vector<Index>, 2> m_reach;
    Index m_offset = 0;
    Index m_stepsLeft;
};

} // namespace oxd
