// Bias and spread of what was found, over some of the trials.
#pragma once

#include "truth/Trials.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace truth {

struct CStatistics
{
    double given = 0;  // share of curves that have a value
    double bias = 0;   // mean error
    double spread = 0; // standard deviation of the errors
    double stated = 0; // median of the stated errors
};

// Of those trials for which belongs(trial) holds.
template <class Belongs>
CStatistics StatisticsOf(Quantity quantity, const std::vector<CTrial>& trials, Belongs belongs)
{
    std::vector<double> errors, stated;
    std::size_t count = 0;
    for (const CTrial& trial : trials) {
        const CDeviation& deviation = trial.deviations[quantity];
        count += belongs(trial) ? 1U : 0U;
        if (belongs(trial) && deviation.isGiven) {
            errors.push_back(deviation.error);
            stated.push_back(deviation.stated);
        }
    }
    if (errors.empty())
        return {};
    const auto n = static_cast<double>(errors.size());
    CStatistics statistics{n / static_cast<double>(count)};
    for (const double error : errors)
        statistics.bias += error / n;
    for (const double error : errors)
        statistics.spread += (error - statistics.bias) * (error - statistics.bias) / n;
    statistics.spread = std::sqrt(statistics.spread);
    const auto middle = stated.begin() + static_cast<std::ptrdiff_t>(stated.size() / 2);
    std::nth_element(stated.begin(), middle, stated.end());
    statistics.stated = *middle;
    return statistics;
}

} // namespace truth
