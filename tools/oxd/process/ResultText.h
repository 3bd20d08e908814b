// What processors could not derive or put where it belongs, in sentences.
#pragma once

#include "oxd/process/ResultTable.h"

#include <string>
#include <vector>

namespace oxd {

// One for each input that nothing was derived from, each note of the report, and for each quantity with lines that have
// no value, how many there are for each reason. A quantity that lacks the same values as the one before it is not told.
std::vector<std::string> ToSentences(const ResultSource& source);

} // namespace oxd
