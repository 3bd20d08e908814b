// Units with prefixes.
#pragma once

#include <string>
#include <string_view>

namespace veltaris::processing {

// A unit as a multiple of the one without SI prefixes: "nN/um" is 1e-3 "N/m". A plain value.
struct CUnit
{
    double factor = 1;
    std::string name;
};

// Takes the prefixes off the numerator and the denominator.
CUnit ReduceUnit(std::string_view unit);

} // namespace veltaris::processing
