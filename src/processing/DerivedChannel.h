// A channel that a processor derives, before it has its place in a data set.
#pragma once

#include "curves/Curve.h"
#include "curves/Reason.h"
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velflexlib/dataset/samples/SignalScale.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace veltaris::processing {

// One value for each line of the input. A plain value.
struct CDerivedValues
{
    std::string name, unit;
    std::vector<double> values;               // NaN where there is none
    std::vector<curves::Reason> reasons = {}; // why there is none

    void Add(double value, curves::Reason reason)
    {
        values.push_back(value);
        reasons.push_back(reason);
    }
};

// One curve for each line, made of a stretch of the input's line. Samples are kept as a file keeps them, since there
// may be as many as the input has.
struct CDerivedCurves
{
    struct Line
    {
        std::uint64_t count = 0; // 0 where there is no curve
        double start = 0;        // the position of its first point
        double step = 0;
    };

    std::string name, unit;
    velflexlib::dataset::CSignalScale scale; // fixed beforehand, wide enough for all values
    std::vector<std::int32_t> samples = {};  // of all lines, one behind the other
    std::vector<Line> lines = {};
    std::vector<curves::Reason> reasons = {};

    // Takes the acquired stretch of `values`, from its first number to the last one before a NaN.
    void Add(std::span<const double> values, const curves::CAxis& axis, curves::Reason reason);
};

// A signal axis around all numbers from `low` to `high`, with ends that a file keeps exactly: it has 6 digits for them.
// Of some extent also where these are equal or not finite.
velflexlib::dataset::CSignalScale ScaleAround(double low, double high);

// Makes `channel` a channel of 32 bits that holds these, one line for each line of the input, whose line axis it gets.
// A line without a value or a curve has no valid points. Values get a signal axis that spans them closely. Whatever
// the channel held is gone. Throws std::bad_alloc.
void Store(const CDerivedValues& values, const velflexlib::dataset::CDataBuffer& input,
           velflexlib::dataset::CDataBuffer& channel);
void Store(const CDerivedCurves& derived, const velflexlib::dataset::CDataBuffer& input,
           velflexlib::dataset::CDataBuffer& channel);

} // namespace veltaris::processing
