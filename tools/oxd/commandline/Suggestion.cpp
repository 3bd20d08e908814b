#include "oxd/commandline/Suggestion.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace oxd {

namespace {

// The number of letters to add, remove or replace, or of neighbours to swap, that make one word the other. Row i of the
// table holds the distances from the first i letters of `a`; the last three rows are enough.
std::size_t Distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last;
    std::vector<std::size_t> current(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        current[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast = std::exchange(last, current);
        current[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            current[j] = std::min({replaced, last[j] + 1, current[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return current.back();
}

} // namespace

std::string Suggestion(const std::string& word, const std::vector<std::string>& known)
{
    constexpr std::size_t lettersPerError = 3;
    const std::size_t tolerance = (word.size() + 1) / lettersPerError;
    std::string nearest;
    std::size_t smallest = tolerance + 1;
    for (const std::string& candidate : known) {
        const std::size_t distance = Distance(word, candidate);
        if (distance < smallest) {
            smallest = distance;
            nearest = candidate;
        }
    }
    return nearest.empty() ? nearest : ", did you mean " + nearest + "?";
}

} // namespace oxd
