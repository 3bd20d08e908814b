// Ranges of values that were observed within the range of possible values, such as that of raw samples.
#pragma once

#include "velflexlib/dataset/samples/kernels/RawRange.h"

#include <algorithm>

namespace veltaris::velflexlib::dataset {

// Starts inverted, hence empty: the first value sets both ends, and every further one can only widen it. Values must be
// within the limits. A plain value, to be guarded by whoever shares it between threads.
template <class Value, class Limit, Limit Lowest, Limit Highest>
struct CTDataRange
{
    // The limits, both of which are possible values.
    static constexpr Value lowestPossible = Lowest;
    static constexpr Value highestPossible = Highest;

    Value lowest = Highest;
    Value highest = Lowest;

    static constexpr Value Clamp(Value value) { return std::clamp(value, lowestPossible, highestPossible); }

    constexpr void Widen(Value value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }

    friend constexpr bool operator==(const CTDataRange&, const CTDataRange&) = default;
};

// The range of raw samples.
using CRawRange = CTDataRange<int, int, lowestRaw, highestRaw>;

} // namespace veltaris::velflexlib::dataset
