// Which lines of two texts are not the same, as few of them as can be found in reasonable time.
#pragma once

#include "oxd/textdiff/LineMarks.h"

#include <string_view>
#include <vector>

namespace oxd {

using Lines = std::vector<std::string_view>;

// Takes memory in proportion to the lines. Time is limited: of texts that have little in common and many lines, more
// lines are marked than need be.
LineMarks CompareLines(const Lines& before, const Lines& after);

} // namespace oxd
