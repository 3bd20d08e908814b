// The lines that make the difference of two texts.
#pragma once

#include <vector>

namespace oxd {

// One mark for each line. The lines that have none are the same in both texts, in the same order.
struct LineMarks
{
    std::vector<bool> removed; // of the text before
    std::vector<bool> added;   // of the text after
};

} // namespace oxd
