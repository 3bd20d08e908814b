// Guesses what was meant by a word that is not known.
#pragma once

#include <string>
#include <vector>

namespace oxd {

// For example ", did you mean info?", or nothing where no known word is near: a letter missing, added, replaced or
// swapped with its neighbour, once in a short word and a few times in a long one.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

} // namespace oxd
