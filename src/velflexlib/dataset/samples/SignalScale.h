// Between raw samples and real values.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace veltaris::velflexlib::dataset {

// How a real value becomes a raw sample.
enum class RealToRawMode
{
    SignalAxis = 1, // position on the signal axis
    FullScale = 2,  // the value is a 32-bit integer, whose top 30 bits are kept
};

// The scale that a signal axis gives: min is the lowest raw sample, min + range the highest.
struct CSignalScale
{
    double min = 0;
    double range = 0;

    double ToReal(std::int32_t raw) const;
    void ToReal(std::span<const std::int32_t> raw, double* real) const;

    // Cut towards zero. A value at or beyond an end of the axis gives that end's raw sample; a NaN, and any value on
    // an axis without extent or one that is not finite, gives the lowest. Nothing for a mode that is none.
    std::optional<std::int32_t> ToRaw(double real, RealToRawMode mode) const;
    // The mode must be one.
    void ToRaw(std::span<const double> real, RealToRawMode mode, std::int32_t* raw) const;

private:
    std::int32_t OnSignalAxis(double real) const;
    bool IsOrdinary() const;
};

} // namespace veltaris::velflexlib::dataset
