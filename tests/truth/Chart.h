// The chart of accuracy: spread and bias of each quantity over the ratio of signal to noise, both logarithmic.
#pragma once

#include "truth/Trials.h"

#include <string>
#include <vector>

namespace truth {

// An SVG document.
std::string Chart(const std::vector<CTrial>& trials);

} // namespace truth
