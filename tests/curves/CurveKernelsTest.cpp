// The loops over curves give the same bits in every width of instructions that this machine has.
#include "curves/kernels/CurveKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace veltaris::curves;

namespace {

std::vector<double> Random(std::mt19937& random, std::size_t points)
{
    std::vector<double> signal(points);
    for (double& value : signal) {
        value = static_cast<double>(random()) * 0x1p-32 - 0.5;
        if (random() % 40 == 0)
            value = random() % 2 == 0 ? std::numeric_limits<double>::quiet_NaN() : 1e200;
    }
    return signal;
}

// In steps of a quarter, so that many points are equal.
std::vector<double> Coarse(std::vector<double> signal)
{
    for (double& value : signal)
        value = std::floor(4 * value) / 4;
    return signal;
}

// Everything that a set makes of a curve.
std::vector<double> Results(const CCurveKernels& kernels, const std::vector<double>& signal)
{
    const CStretch stretch{signal.data(), signal.size()};
    const CTrend trend{0.3 * static_cast<double>(signal.size()), 0.1, 1e-3};
    const CDerivation derivation{trend.origin, -1.5, 0.2, 1e-2};
    std::vector<double> results(signal.size());
    const CHighest highest = kernels.derive(stretch, derivation, results.data());
    const CHighest unwritten = kernels.highest(stretch, derivation);
    EXPECT_EQ(highest.value, unwritten.value);
    EXPECT_EQ(highest.index, unwritten.index);
    std::vector<double> inPlace = signal;
    kernels.derive({inPlace.data(), inPlace.size()}, derivation, inPlace.data());
    results.insert(results.end(), inPlace.begin(), inPlace.end());
    const auto add = [&](const auto& numbers) {
        double all[sizeof numbers / sizeof(double)];
        std::memcpy(all, &numbers, sizeof numbers);
        results.insert(results.end(), std::begin(all), std::end(all));
    };
    add(kernels.sums(stretch, trend));
    add(kernels.range(stretch));
    std::vector<double> erased(signal.size() + 1, 1.5);
    kernels.erase(erased.data(), signal.size());
    results.insert(results.end(), erased.begin(), erased.end());
    add(highest);
    for (const double level : {-0.55, -0.4, 0.0, -2.0}) {
        for (const double gain : {1.0, -1.0}) {
            results.push_back(static_cast<double>(kernels.firstAtMost(stretch, trend, gain, level)));
            results.push_back(static_cast<double>(kernels.lastAtMost(stretch, trend, gain, level)));
        }
    }
    if (signal.size() >= 8)
        add(kernels.blocks({signal.data(), signal.size() / 8 * 8}, trend, 1e-3));
    return results;
}

void ExpectSame(const CCurveKernels& kernels, const std::vector<double>& signal)
{
    const auto expected = Results(baselineCurveKernels, signal);
    const auto results = Results(kernels, signal);
    ASSERT_EQ(results.size(), expected.size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        // The sign of a NaN is the processor's affair.
        if (results[i] == results[i] || expected[i] == expected[i]) {
            EXPECT_EQ(results[i], expected[i]) << signal.size() << " points, number " << i;
        }
    }
}

TEST(CurveKernelsTest, EveryWidthOfInstructionsGivesTheSame)
{
    std::mt19937 random(4);
    for (std::size_t points = 1; points < 150; ++points) {
        const auto signal = Random(random, points);
        ExpectSame(CurveKernels(), signal);
        ExpectSame(CurveKernels(), Coarse(signal));
#if defined(__linux__) && defined(__x86_64__)
        if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
            ExpectSame(avx2CurveKernels, signal);
            ExpectSame(avx2CurveKernels, Coarse(signal));
        }
#endif
    }
}

void ExpectWhatALoopFinds(const std::vector<double>& signal)
{
    const std::size_t points = signal.size();
    const CStretch stretch{signal.data(), points};
    for (const double level : {-0.49, -0.4, 0.0}) {
        std::size_t first = points, last = points;
        for (std::size_t i = 0; i < points; ++i) {
            if (signal[i] <= level) {
                first = first == points ? i : first;
                last = i;
            }
        }
        EXPECT_EQ(CurveKernels().firstAtMost(stretch, {0, 0, 0}, 1, level), first);
        EXPECT_EQ(CurveKernels().lastAtMost(stretch, {0, 0, 0}, 1, level), last);
    }
    const auto highest = std::ranges::max_element(
        signal, [](double a, double b) { return !(b <= largestSignal) ? false : !(a <= largestSignal) || a < b; });
    const CHighest found = CurveKernels().highest(stretch, {0, 1, 0, 0});
    const bool isThere = *highest <= largestSignal;
    EXPECT_EQ(found.index, isThere ? static_cast<std::size_t>(highest - signal.begin()) : points);
}

TEST(CurveKernelsTest, SearchesAndMaximaFindWhatALoopFinds)
{
    std::mt19937 random(5);
    for (std::size_t points = 1; points < 60; ++points) {
        const auto signal = Random(random, points);
        ExpectWhatALoopFinds(signal);
        ExpectWhatALoopFinds(Coarse(signal)); // of equals, the first is the highest
    }
}

} // namespace
