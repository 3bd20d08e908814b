// What the exported functions share: the arguments of a call, checked, and a loop over the curves of a block. Nothing
// here keeps state, takes memory or throws: any number of threads may call it.
#pragma once

#include "curves/CurveOptions.h"

#include <veloxd_curves.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace veltaris::curves {

// The options of a call, as the functions in C++ take them.
struct CAnalysis
{
    CCurveOptions options;
    CPositionRange slopeRange;
};

enum class ResultsAre
{
    Needed,
    Optional,
};

VELCurveOptions DefaultOptions();

// VEL_CURVE_OK, or what a call returns that does nothing. Null options stand for the defaults.
std::int32_t Read(const VELCurveOptions* options, CAnalysis& analysis);

// Whether the rows of a block can be where it says.
bool IsBlock(const VELCurves* curves);

// Whether an array can take a number for each point of a block. A null pointer can: it is not written to.
bool IsOutput(const VELCurves* curves, const double* array, std::size_t pitch);

// A row of an array, or nothing if the pointer is null.
template <class Number>
std::span<Number> RowOf(Number* array, std::size_t pitch, std::size_t row, std::size_t points)
{
    return array == nullptr ? std::span<Number>() : std::span<Number>(array + row * pitch, points);
}

constexpr std::int64_t CodeOf(Reason reason)
{
    return static_cast<std::int64_t>(reason);
}

// Stores compute(curve, analysis, row) for each curve. Gives what the call returns.
template <ResultsAre are = ResultsAre::Needed, class Result, class Compute>
std::int32_t ForEachCurve(const VELCurves* curves, const VELCurveOptions* options, Result* results, Compute compute)
{
    CAnalysis analysis;
    if (!IsBlock(curves) || (are == ResultsAre::Needed && results == nullptr && curves->curves > 0))
        return VEL_CURVE_BAD_CALL;
    if (const std::int32_t code = Read(options, analysis); code != VEL_CURVE_OK)
        return code;
    for (std::size_t row = 0; row < curves->curves; ++row) {
        const CCurve curve{RowOf(curves->signal, curves->pitch, row, curves->points), {curves->start, curves->step}};
        const Result result = compute(curve, analysis, row);
        if (results != nullptr)
            results[row] = result;
    }
    return VEL_CURVE_OK;
}

} // namespace veltaris::curves
