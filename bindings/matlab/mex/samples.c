#include "commands.h"
#include "failures.h"

#include <VELOxdDll.h>
#include <stdbool.h>
#include <veloxd_blocks.h>

static mxArray* Read(Arguments arguments, mxClassID type)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const int32_t lineOp = (int32_t)Number(arguments[3]);
    uint64_t lines = 0;
    uint64_t points = 0;
    RequireBlock(VELBlockShape(file, group, channel, &lines, &points));
    mxArray* const samples = mxCreateNumericMatrix((mwSize)points, (mwSize)lines, type, mxREAL);
    const int64_t pitch = (int64_t)points;
    if (mxIsEmpty(samples))
        return samples;
    RequireBlock(type == mxINT32_CLASS
                     ? VELBlockReadRaw(file, group, channel, lineOp, 0, NULL, lines, mxGetData(samples), pitch)
                     : VELBlockReadReal(file, group, channel, lineOp, 0, NULL, lines, mxGetData(samples), pitch));
    return samples;
}

mxArray* ReadRaw(Arguments arguments)
{
    return Read(arguments, mxINT32_CLASS);
}

mxArray* ReadReal(Arguments arguments)
{
    return Read(arguments, mxDOUBLE_CLASS);
}

static bool IsMissing(const mxArray* samples, uint64_t at)
{
    return mxIsInt32(samples) ? ((const int32_t*)mxGetData(samples))[at] == INT32_MIN
                              : mxIsNaN(((const double*)mxGetData(samples))[at]);
}

/* How many points of a line are to be written. Those behind them are missing, and were never measured: a point that is
 * measured cannot become one that is not. */
static uint64_t PointsToWrite(const mxArray* samples, uint64_t line, uint64_t points, uint64_t acquired)
{
    uint64_t present = points;
    while (present > 0 && IsMissing(samples, line * points + present - 1))
        --present;
    bool isWhole = present == points || present >= acquired;
    for (uint64_t point = 0; point < present; ++point)
        isWhole = isWhole && !IsMissing(samples, line * points + point);
    if (!isWhole)
        mexErrMsgIdAndTxt("veloxd:argument", "Line %u lacks a sample (NaN or intmin) where there is one in the file.",
                          (unsigned)line + 1);
    return present;
}

static void WriteLine(uint64_t file, uint64_t group, uint64_t channel, const mxArray* samples, uint64_t line,
                      uint64_t count)
{
    const uint64_t begin = line * (uint64_t)mxGetM(samples);
    for (uint64_t point = 0; point < count; ++point) {
        if (mxIsInt32(samples))
            SetChannelData_PixelRaw(file, group, channel, point, line,
                                    ((const int32_t*)mxGetData(samples))[begin + point]);
        else
            SetChannelData_PixelReal(file, group, channel, point, line,
                                     ((const double*)mxGetData(samples))[begin + point]);
    }
    FailIfAsked();
}

static void RequireSamples(const mxArray* samples, uint64_t lines, uint64_t points)
{
    const bool fits = (uint64_t)mxGetM(samples) == points && (uint64_t)mxGetN(samples) == lines;
    if (!fits || mxIsComplex(samples) || mxIsSparse(samples) || !(mxIsInt32(samples) || mxIsDouble(samples)))
        mexErrMsgIdAndTxt("veloxd:argument", "The samples are to be a full real matrix of %u x %u (lines x points).",
                          (unsigned)lines, (unsigned)points);
}

mxArray* Write(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const mxArray* const samples = arguments[3];
    uint64_t lines = 0;
    uint64_t points = 0;
    RequireBlock(VELBlockShape(file, group, channel, &lines, &points));
    RequireSamples(samples, lines, points);
    if (mxIsEmpty(samples))
        return NULL;
    uint64_t* const counts = mxMalloc(lines * sizeof(uint64_t));
    RequireBlock(VELBlockAcquired(file, group, channel, 0, NULL, lines, counts));
    for (uint64_t line = 0; line < lines; ++line) /* all of them before any is written */
        counts[line] = PointsToWrite(samples, line, points, counts[line]);
    const size_t size = mxGetElementSize(samples);
    for (uint64_t line = 0; line < lines; ++line) {
        const void* const row = (const char*)mxGetData(samples) + line * points * size;
        if (counts[line] < points)
            WriteLine(file, group, channel, samples, line, counts[line]);
        else
            RequireBlock(mxIsInt32(samples)
                             ? VELBlockWriteRaw(file, group, channel, line, NULL, 1, row, (int64_t)points)
                             : VELBlockWriteReal(file, group, channel, line, NULL, 1, row, (int64_t)points));
    }
    return NULL;
}
