// The range of raw samples, and ranges observed within it.
#pragma once

#include <algorithm>

namespace veltaris::velflexlib::dataset {

// A range that begins inverted, hence empty, and widens with every value.
template <class Value, class Limit, Limit Lowest, Limit Highest>
struct CTDataRange
{
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

using CRawRange = CTDataRange<int, int, -536870912, 536870911>;

} // namespace veltaris::velflexlib::dataset
