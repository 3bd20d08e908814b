// What a curve has no value for, it has a reason for, and no number.
#include "curves/CurveRecipe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <string>

using namespace recipe;

namespace {

using Signal = std::vector<double>;

Signal Filled(std::size_t points, const std::function<double(double)>& of)
{
    CNoise noise(3);
    Signal signal(points);
    for (std::size_t i = 0; i < points; ++i)
        signal[i] = of(static_cast<double>(i)) + 0.01 * noise.Normal();
    return signal;
}

double Contact(double i)
{
    return i > 300 ? 0.1 * (i - 300) : 0;
}

// Of the eight blocks of 20 points away from the surface, three are off the line and three vary too much.
double TwoGoodBlocks(double i)
{
    enum
    {
        Good,
        Off,
        Wide
    };
    constexpr int blocks[8] = {Wide, Off, Good, Wide, Off, Wide, Off, Good};
    const int kind = i < 160 ? blocks[static_cast<int>(i) / 20] : Good;
    const double alternating = std::fmod(i, 2) == 0 ? 0.3 : -0.3;
    return Contact(i) + (kind == Off ? 1 : kind == Wide ? alternating : 0);
}

Signal Damaged(Signal signal, const std::function<double(std::size_t, double)>& damage)
{
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] = damage(i, signal[i]);
    return signal;
}

struct CReasons
{
    int slope, baseline, contact, adhesion, indentation;
};

struct CCase
{
    std::string name;
    Signal signal;
    CReasons reasons;
    double highest = 100; // what is saturated; -15 is the lowest
};

std::vector<CCase> Cases()
{
    constexpr int few = VEL_CURVE_TOO_FEW_POINTS, empty = VEL_CURVE_NOTHING_ACQUIRED, none = VEL_CURVE_NO_BASELINE;
    constexpr int lost = VEL_CURVE_NO_CONTACT, light = VEL_CURVE_NO_ADHESION, cut = VEL_CURVE_SATURATED;
    const Signal good = Filled(400, Contact);
    return {
        {"a curve with contact alone", good, {0, 0, 0, light, 0}},
        {"no points", {}, {empty, empty, empty, empty, empty}},
        {"three points", {0, 1, 2}, {few, few, few, few, few}},
        {"four points", {0, 1, 2, 3}, {0, few, few, few, few}},
        {"all NaN", Signal(400, notAcquired), {empty, empty, empty, empty, empty}},
        {"one point",
         Damaged(good, [](auto i, double y) { return i == 7 ? y : notAcquired; }),
         {few, few, few, few, few}},
        {"no baseline points",
         Damaged(good, [](auto i, double y) { return i % 16 == 3 || i > 280 ? y : notAcquired; }),
         {0, few, few, few, few}},
        {"noise alone", Filled(400, [](double) { return 5; }), {0, 0, lost, lost, lost}},
        {"no noise at all", Signal(400, 5), {0, 0, lost, lost, lost}},
        {"in contact all along", Filled(400, [](double i) { return 0.1 * i; }), {0, 0, lost, lost, lost}},
        {"bent all along", Filled(400, [](double i) { return 2e-4 * i * i; }), {0, none, none, none, none}},
        {"two good blocks of eight", Filled(400, TwoGoodBlocks), {0, none, none, none, none}},
        {"a step at the end", Filled(400, [](double i) { return i > 396 ? 3 : 0; }), {0, 0, lost, light, lost}},
        {"saturated in contact",
         Damaged(good, [](auto, double y) { return std::min(y, 8.0); }),
         {cut, 0, 0, light, cut},
         8},
        {"saturated all along", Filled(400, [](double) { return 9; }), {cut, cut, cut, cut, cut}, 8},
        {"saturated while stuck",
         Filled(400, [](double i) { return i > 300   ? 0.1 * (i - 300)
                                           : i > 250 ? -20
                                                     : 0; }),
         {cut, 0, 0, cut, 0}},
    };
}

template <class Result>
void ExpectReason(const Result& result, int reason, const char* what)
{
    EXPECT_EQ(result.reason, reason) << what << ": " << VELCurveReasonText(result.reason);
    const auto* const words = reinterpret_cast<const std::uint64_t*>(&result);
    for (std::size_t i = 2; i < sizeof result / sizeof *words; ++i) {
        double number = 0;
        std::memcpy(&number, words + i, sizeof number);
        EXPECT_EQ(std::isfinite(number), reason == VEL_CURVE_OK) << what << ", number " << i;
    }
    if (reason != VEL_CURVE_OK) {
        EXPECT_EQ(words[1], 0U) << what;
    }
}

void ExpectReasons(const CResults& results, const CReasons& reasons)
{
    ExpectReason(results.slope, reasons.slope, "slope");
    ExpectReason(results.baseline, reasons.baseline, "baseline");
    ExpectReason(results.contact, reasons.contact, "contact");
    ExpectReason(results.adhesion, reasons.adhesion, "adhesion");
    ExpectReason(results.indentation, reasons.indentation, "indentation");
}

TEST(NoValueTest, EveryCurveHasAValueOrTheReasonWhyItHasNone)
{
    VELCurveOptions options = Defaults();
    options.lowest_signal = -15;
    for (const CCase& c : Cases()) {
        SCOPED_TRACE(c.name);
        options.highest_signal = c.highest;
        const VELCurves curves{1, c.signal.size(), c.signal.size(), 0, 1e-9, c.signal.data()};
        ExpectReasons(Analyse(curves, curves, options), c.reasons);
    }
}

} // namespace
