// Which values a picture's colours span.
#pragma once

#include "oxd/picture/Scale.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oxd {

// As the user chose it. By default the few values at both ends, which may be spikes, have the colours of the ends.
struct Contrast
{
    double lowestPercent = 1;
    double highestPercent = 99;
    std::optional<Scale> range = {}; // instead of percentiles: from one value to another, in `unit`
    std::string unit = {};           // has no prefix; if empty, that of the values
};

// "full", "percentile:LOW,HIGH" or "MIN:MAX", whose numbers may have a unit, such as -2nm:2nm. Throws a Failure for any
// other text.
Contrast ParseContrast(std::string_view text);

// The range of values in `unit`; Scale::Nothing() if there are no values. NaN is no value. Throws a Failure if the
// contrast is in another unit.
Scale RangeOf(const Contrast& contrast, std::vector<double> values, const std::string& unit);

// How many values of a range are beyond its ends.
struct Clipped
{
    double below = 0; // shares of all values
    double above = 0;
};
Clipped BeyondRange(const Scale& range, const std::vector<double>& values);

} // namespace oxd
