#include "oxd/compare/Pairs.h"

#include <algorithm>
#include <queue>
#include <unordered_map>

namespace oxd {

std::vector<Pair> PairByName(const std::vector<std::string>& a, const std::vector<std::string>& b)
{
    std::unordered_map<std::string, std::queue<std::size_t>> left;
    for (std::size_t i = 0; i < b.size(); ++i) {
        left[b[i]].push(i);
    }
    std::vector<Pair> pairs;
    std::vector<bool> isPaired(b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        Pair& pair = pairs.emplace_back(Pair{i});
        const auto found = left.find(a[i]);
        if (found != left.end() && !found->second.empty()) {
            pair.b = found->second.front();
            found->second.pop();
            isPaired[*pair.b] = true;
        }
    }
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (!isPaired[i]) {
            pairs.push_back({{}, i});
        }
    }
    return pairs;
}

std::vector<Pair> PairByNameOrPosition(const std::vector<std::string>& a, const std::vector<std::string>& b)
{
    std::vector<Pair> pairs = PairByName(a, b);
    const auto isOnlyInB = [](const Pair& pair) { return !pair.a; };
    const auto onlyInB = std::find_if(pairs.begin(), pairs.end(), isOnlyInB);
    const std::vector<Pair> others(onlyInB, pairs.end());
    pairs.erase(onlyInB, pairs.end());
    for (const Pair& other : others) {
        const bool isRenamed = *other.b < a.size() && !pairs[*other.b].b;
        if (isRenamed) {
            pairs[*other.b].b = other.b;
        } else {
            pairs.push_back(other);
        }
    }
    return pairs;
}

} // namespace oxd
