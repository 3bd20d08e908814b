// Finds out which parts of two lists belong together.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

// Positions in the lists; nothing where only the other list has the part.
struct Pair
{
    std::optional<std::size_t> a = {};
    std::optional<std::size_t> b = {};
};

// Pairs equal names, the first one of a name with the first of the other list and so on. The pairs are in the order of
// `a`; what only `b` has follows in the order of `b`.
std::vector<Pair> PairByName(const std::vector<std::string>& a, const std::vector<std::string>& b);

// The same, but names that found no partner are paired if they are at the same position: something was renamed.
std::vector<Pair> PairByNameOrPosition(const std::vector<std::string>& a, const std::vector<std::string>& b);

} // namespace oxd
