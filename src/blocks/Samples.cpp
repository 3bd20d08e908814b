#include "blocks/Samples.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltaris::blocks {

namespace {

// No operator takes more samples than this. One that finds fewer than it takes gives nothing.
constexpr std::uint64_t mostTaken = 5;

// What the library has for one kind of samples, and what stands for a point that was not acquired.
template <class Sample>
struct CKind;

template <>
struct CKind<std::int32_t>
{
    static constexpr auto read = GetChannelData_LineRaw;
    static constexpr auto write = SetChannelData_LineRaw;
    static constexpr std::int32_t missing = std::numeric_limits<std::int32_t>::min();
};

template <>
struct CKind<double>
{
    static constexpr auto read = GetChannelData_LineReal;
    static constexpr auto write = SetChannelData_LineReal;
    static constexpr double missing = std::numeric_limits<double>::quiet_NaN();
};

bool IsMissing(std::int32_t sample)
{
    return sample == CKind<std::int32_t>::missing;
}

bool IsMissing(double sample)
{
    return std::isnan(sample);
}

// Marks what reading may leave as it is: the points behind those that were acquired, or all of the row.
template <class Sample>
void MarkMissing(Sample* row, std::uint64_t points, std::uint64_t acquired, std::int32_t operation)
{
    const bool mayGiveNothing = operation != 0 && acquired < mostTaken;
    std::fill(row + (mayGiveNothing ? 0 : std::min(acquired, points)), row + points, CKind<Sample>::missing);
}

// Reads one line. Almost all lines are whole, which their last sample shows: then it costs one call. No raw sample is
// the missing one; where a real value is NaN, the line is read again.
template <class Sample>
void ReadLine(const CChannel& channel, std::int32_t operation, std::uint64_t line, Sample* row, std::uint64_t points)
{
    const auto [file, group, slot] = channel;
    if (points > 0)
        row[points - 1] = CKind<Sample>::missing;
    CKind<Sample>::read(file, group, slot, line, operation, row);
    if (VELHasLastError() || points == 0 || !IsMissing(row[points - 1]))
        return;
    MarkMissing(row, points, GetChannelData_PointsPerLine(file, group, slot, line), operation);
    CKind<Sample>::read(file, group, slot, line, operation, row);
}

// Whether there can be rows of so many points where the caller says.
template <class Sample>
bool AreRows(const CRows<Sample>& rows, std::uint64_t count, std::uint64_t points)
{
    if (count == 0)
        return true;
    const auto length = static_cast<std::int64_t>(points); // at most 2^31
    return rows.begin != nullptr && (count == 1 || rows.pitch >= length || rows.pitch <= -length);
}

// Calls use(points) if there is such a channel and if there can be rows for its lines.
template <class Sample, class Use>
std::int32_t WithRows(const CChannel& channel, const CLines& lines, const CRows<Sample>& rows, Use use)
{
    BeginCalls();
    const std::uint64_t points = GetChannelData_Points(channel.file, channel.group, channel.channel);
    if (const std::int32_t result = EndCalls(); result != VEL_BLOCK_OK)
        return result;
    return AreRows(rows, lines.count, points) ? use(points) : VEL_BLOCK_BAD_CALL;
}

} // namespace

template <class Sample>
std::int32_t ReadLines(const CChannel& channel, std::int32_t operation, const CLines& lines, const CRows<Sample>& rows)
{
    return WithRows(channel, lines, rows, [&](std::uint64_t points) {
        return ForEachLine(lines, [&](std::uint64_t line, std::uint64_t row) {
            ReadLine(channel, operation, line, rows[row], points);
        });
    });
}

template <class Sample>
std::int32_t WriteLines(const CChannel& channel, const CLines& lines, const CRows<const Sample>& rows)
{
    return WithRows(channel, lines, rows, [&](std::uint64_t) {
        return ForEachLine(lines, [&](std::uint64_t line, std::uint64_t row) {
            CKind<Sample>::write(channel.file, channel.group, channel.channel, line, rows[row]);
        });
    });
}

template std::int32_t ReadLines(const CChannel&, std::int32_t, const CLines&, const CRows<std::int32_t>&);
template std::int32_t ReadLines(const CChannel&, std::int32_t, const CLines&, const CRows<double>&);
template std::int32_t WriteLines<std::int32_t>(const CChannel&, const CLines&, const CRows<const std::int32_t>&);
template std::int32_t WriteLines<double>(const CChannel&, const CLines&, const CRows<const double>&);

} // namespace veltaris::blocks
