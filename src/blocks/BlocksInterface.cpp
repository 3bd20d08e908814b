// The exported functions: they check what they are given, and hand it to the functions in C++.
#include "blocks/NameList.h"
#include "blocks/Samples.h"

using namespace veltaris::blocks;

namespace {

// The handle that OpenOxdFile is going to use, also if it fails: the smallest that is free.
std::uint64_t NextHandle(const char* filename)
{
    const std::uint64_t next = CreateOxdFile(filename);
    CloseOxdFile(next);
    return next;
}

template <class Number>
bool IsArray(const Number* array, std::uint64_t count)
{
    return array != nullptr || count == 0;
}

} // namespace

const char* VELBlockVersion(void)
{
    return VELOXD_BLOCKS_VERSION;
}

int32_t VELBlockOpen(const char* filename, uint64_t* file)
{
    if (file == nullptr)
        return VEL_BLOCK_BAD_CALL;
    BeginCalls();
    *file = NextHandle(filename);
    // What the library says counts: meanwhile, another thread may have closed a file with a smaller handle.
    if (const std::uint64_t opened = OpenOxdFile(filename); opened != 0)
        *file = opened;
    if (const std::int32_t result = EndCalls(); result != VEL_BLOCK_OK)
        return result;
    GetOxdVersion(*file);
    return EndCalls() == VEL_BLOCK_OK ? VEL_BLOCK_OK : VEL_BLOCK_NO_HEADER;
}

int32_t VELBlockGroups(uint64_t file, VELBlockNames* names)
{
    return names == nullptr ? VEL_BLOCK_BAD_CALL : ListGroups(file, *names);
}

int32_t VELBlockChannels(uint64_t file, uint64_t group, VELBlockNames* names)
{
    return names == nullptr ? VEL_BLOCK_BAD_CALL : ListChannels(file, group, *names);
}

int32_t VELBlockShape(uint64_t file, uint64_t group, uint64_t channel, uint64_t* lines, uint64_t* points)
{
    if (lines == nullptr || points == nullptr)
        return VEL_BLOCK_BAD_CALL;
    BeginCalls();
    const std::uint64_t lineCount = GetChannelData_Lines(file, group, channel);
    const std::uint64_t pointCount = GetChannelData_Points(file, group, channel);
    const std::int32_t result = EndCalls();
    if (result == VEL_BLOCK_OK) {
        *lines = lineCount;
        *points = pointCount;
    }
    return result;
}

int32_t VELBlockAcquired(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines,
                         uint64_t count, uint64_t* acquired)
{
    if (!IsArray(acquired, count))
        return VEL_BLOCK_BAD_CALL;
    return ForEachLine({first, lines, count}, [=](std::uint64_t line, std::uint64_t row) {
        const std::uint64_t points = GetChannelData_PointsPerLine(file, group, channel, line);
        if (!VELHasLastError())
            acquired[row] = points;
    });
}

int32_t VELBlockPointAxes(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines,
                          uint64_t count, double* minimums, double* ranges)
{
    if (!IsArray(minimums, count) || !IsArray(ranges, count))
        return VEL_BLOCK_BAD_CALL;
    return ForEachLine({first, lines, count}, [=](std::uint64_t line, std::uint64_t row) {
        const double minimum = GetChannelData_PointAxisMinPerLine(file, group, channel, line);
        if (VELHasLastError())
            return;
        minimums[row] = minimum;
        ranges[row] = GetChannelData_PointAxisRangePerLine(file, group, channel, line);
    });
}

int32_t VELBlockReadRaw(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first,
                        const uint64_t* lines, uint64_t count, int32_t* rows, int64_t pitch)
{
    return ReadLines({file, group, channel}, operation, {first, lines, count}, CRows<std::int32_t>{rows, pitch});
}

int32_t VELBlockReadReal(uint64_t file, uint64_t group, uint64_t channel, int32_t operation, uint64_t first,
                         const uint64_t* lines, uint64_t count, double* rows, int64_t pitch)
{
    return ReadLines({file, group, channel}, operation, {first, lines, count}, CRows<double>{rows, pitch});
}

int32_t VELBlockWriteRaw(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines,
                         uint64_t count, const int32_t* rows, int64_t pitch)
{
    return WriteLines<std::int32_t>({file, group, channel}, {first, lines, count}, {rows, pitch});
}

int32_t VELBlockWriteReal(uint64_t file, uint64_t group, uint64_t channel, uint64_t first, const uint64_t* lines,
                          uint64_t count, const double* rows, int64_t pitch)
{
    return WriteLines<double>({file, group, channel}, {first, lines, count}, {rows, pitch});
}
