// Conversion between raw samples and real values, which are in the unit of the channel's signal axis.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace veltaris::velflexlib::dataset {

// How a real value becomes a raw sample.
enum class RealToRawMode
{
    SignalAxis = 1, // by its position on the signal axis
    FullScale = 2,  // the value is a 32-bit integer, of which the spare bits are dropped
};

// The scale of a signal axis: `min` is the real value of the lowest raw sample, `min + range` that of the highest. The
// range may be negative, in which case higher raw samples stand for lower values. Conversions are rounded, except that
// the ends of the axis always become the very ends of the raw range.
//
// A plain value: any number of threads can convert with the same scale as long as none of them changes it.
struct CSignalScale
{
    double min = 0;
    double range = 0;

    double ToReal(std::int32_t raw) const;
    // The same for several samples; `real` has room for as many values.
    void ToReal(std::span<const std::int32_t> raw, double* real) const;

    // Fractions are cut towards raw zero. A value at or beyond an end of the axis gives the raw sample of that end. A
    // NaN gives the lowest raw sample, as does any value on an axis that has no extent or is not finite. Returns
    // nothing when `mode` is not one of the modes.
    std::optional<std::int32_t> ToRaw(double real, RealToRawMode mode) const;
    // The same for several values; `mode` must be one of the modes.
    void ToRaw(std::span<const double> real, RealToRawMode mode, std::int32_t* raw) const;

private:
    std::int32_t OnSignalAxis(double real) const;
    bool IsOrdinary() const;
};

} // namespace veltaris::velflexlib::dataset
