// The point axes of a channel's lines: that of the channel, and those of the lines that differ from it.
#pragma once

#include "velflexlib/dataset/samples/HeldLines.h"

#include <cstdint>
#include <map>
#include <utility>

namespace veltaris::velflexlib::dataset {

// The point axis of one line.
struct CLineAxis
{
    std::uint64_t count = 0; // valid points of the line; a line without any holds no samples in the file
    double min = 0;          // physical value of the first point
    double range = 0;

    // Tells 0 from -0, and a NaN from all but the same NaN: axes are equal when they are written alike.
    friend bool operator==(const CLineAxis& a, const CLineAxis& b);
};

// A line has the common axis unless it has one of its own. Lines that a file promised and did not hold are missing:
// they are always the last ones, and have no valid points. When one of them is written, all become ordinary lines of
// zeros, except those whose own axis says 0 points. Memory goes by the lines that have an axis of their own.
// Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CLineAxes
{
public:
    // `common.count` is the number of points that every line has. No line is missing.
    CLineAxes(const CLineAxis& common, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> own = {})
        : m_common(common), m_lines(lines), m_missingFrom(lines), m_own(std::move(own))
    {
    }

    std::uint64_t Points() const { return m_common.count; }
    std::uint64_t Lines() const { return m_lines; }
    const CLineAxis& Common() const { return m_common; }

    // The axis of a line that there is.
    CLineAxis At(std::uint64_t line) const;
    std::uint64_t CountAt(std::uint64_t line) const { return AreAllCommon() ? m_common.count : At(line).count; }

    // Whether some line's axis fulfils a condition, tested as differs(axis), that the common one does not.
    template <class Differs>
    bool IsAny(Differs differs) const
    {
        if (m_missingFrom < m_lines && differs(At(m_missingFrom)))
            return true;
        for (const auto& [line, axis] : m_own) {
            if (differs(At(line)))
                return true;
        }
        return false;
    }

    // The largest number of valid points of all lines, as if none were missing, but no more than Points(): lines that
    // a file did not hold keep their length, so that they can be written.
    std::uint64_t LongestLine() const;

    // The lines below `end` with valid points, as if none were missing.
    CHeldLines LinesWithSamples(std::uint64_t end) const;

    // The first missing line, or the number of lines.
    std::uint64_t MissingFrom() const { return m_missingFrom; }
    void SetMissingFrom(std::uint64_t line) { m_missingFrom = line; }

    // Notes that the first `count` points of a line were written.
    void RaiseCount(std::uint64_t line, std::uint64_t count)
    {
        if (!AreAllCommon() && count > 0)
            RaiseUncommonCount(line, count);
    }

    void SetPoints(std::uint64_t points) { m_common.count = points; }
    // Changes the common axis alone.
    void SetCommon(double min, double range)
    {
        m_common.min = min;
        m_common.range = range;
    }
    // These also change every own axis that still has the old value.
    void MoveMin(double min) { Move(&CLineAxis::min, min); }
    void MoveRange(double range) { Move(&CLineAxis::range, range); }

private:
    bool AreAllCommon() const { return m_own.empty() && m_missingFrom == m_lines; }
    void RaiseUncommonCount(std::uint64_t line, std::uint64_t count);
    void Move(double CLineAxis::*field, double value);

    CLineAxis m_common;
    std::uint64_t m_lines;
    std::uint64_t m_missingFrom;
    std::map<std::uint64_t, CLineAxis> m_own;
};

} // namespace veltaris::velflexlib::dataset
