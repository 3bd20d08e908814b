// How the functions for force curves are called: blocks of curves, arrays, options, and what they refuse.
#include "curves/CurveRecipe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <set>
#include <string>

using namespace recipe;

namespace {

constexpr std::size_t rows = 7;
constexpr std::size_t curvePoints = 130;
constexpr std::size_t pitch = 133;

// Rows of different noise, with NaN between them, and one of nothing else.
std::vector<double> Block()
{
    std::vector<double> block(rows * pitch, notAcquired);
    for (std::size_t row = 0; row + 1 < rows; ++row) {
        CNoise noise(static_cast<std::uint32_t>(row));
        const auto signal = Make({.points = curvePoints, .contact = 80e-9, .noise = 0.1e-9}, Way::Approach, noise);
        std::copy(signal.begin(), signal.end(), block.begin() + static_cast<std::ptrdiff_t>(row * pitch));
    }
    return block;
}

template <class Number>
bool AreSameBytes(const std::vector<Number>& a, const std::vector<Number>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Number)) == 0;
}

TEST(CurveCallTest, ABlockGivesWhatItsRowsGiveAlone)
{
    const auto block = Block();
    const VELCurves curves{rows, curvePoints, pitch, 0, 1e-9, block.data()};
    const VELCurveOptions options = Defaults();
    const auto expectSame = [&](auto result, auto call) {
        std::vector<decltype(result)> together(rows), alone(rows);
        EXPECT_EQ(call(&curves, &options, together.data()), VEL_CURVE_OK);
        for (std::size_t row = 0; row < rows; ++row) {
            const VELCurves one{1, curvePoints, curvePoints, 0, 1e-9, block.data() + row * pitch};
            EXPECT_EQ(call(&one, &options, &alone[row]), VEL_CURVE_OK);
        }
        EXPECT_TRUE(AreSameBytes(together, alone));
        EXPECT_EQ(together[0].reason, VEL_CURVE_OK);
        EXPECT_EQ(together[rows - 1].reason, VEL_CURVE_NOTHING_ACQUIRED);
    };
    expectSame(VELSlope{}, VELCurveSlopes);
    expectSame(VELBaseline{}, VELCurveBaselines);
    expectSame(VELContact{}, VELCurveContacts);
    expectSame(VELIndentation{},
               [](const auto* c, const auto* o, auto* r) { return VELCurveIndentations(c, o, r, nullptr, 0); });
}

TEST(CurveCallTest, CurvesOfIndentationAndForceMayReplaceTheSignal)
{
    const auto block = Block();
    const VELCurveOptions options = Defaults();
    const auto make = [&](auto compute) {
        std::vector<double> apart(rows * pitch, 7.0), inPlace = block;
        const VELCurves from{rows, curvePoints, pitch, 0, 1e-9, block.data()};
        VELCurves same = from;
        same.signal = inPlace.data();
        EXPECT_EQ(compute(from, apart.data()), VEL_CURVE_OK);
        EXPECT_EQ(compute(same, inPlace.data()), VEL_CURVE_OK);
        for (std::size_t i = 0; i < apart.size(); ++i) {
            if (i % pitch >= curvePoints)
                EXPECT_EQ(apart[i], 7) << "between rows";
            else
                EXPECT_TRUE(apart[i] == inPlace[i] || (std::isnan(apart[i]) && std::isnan(inPlace[i]))) << i;
        }
        return apart;
    };
    std::vector<VELIndentation> found(rows);
    const auto indentation = make([&](const VELCurves& from, double* to) {
        return VELCurveIndentations(&from, &options, found.data(), to, pitch);
    });
    const auto force =
        make([&](const VELCurves& from, double* to) { return VELCurveForces(&from, &options, nullptr, to, pitch); });
    EXPECT_TRUE(std::isnan(indentation[79]) && std::isnan(indentation[(rows - 1) * pitch + 100]));
    EXPECT_EQ(indentation[found[0].index], found[0].largest);
    EXPECT_EQ(*std::max_element(&indentation[85], &indentation[curvePoints]), found[0].largest);
    // What is not indentation is deflection.
    const double travel = 120e-9 - found[0].contact;
    EXPECT_NEAR(indentation[120] + force[120] / options.spring_constant, travel, 1e-20);
}

TEST(CurveCallTest, RefusesCallsWithoutWritingAnything)
{
    const auto block = Block();
    const VELCurves good{rows, curvePoints, pitch, 0, 1e-9, block.data()};
    std::vector<VELIndentation> results(rows);
    const auto untouched = results;
    std::vector<double> forces(rows * pitch);
    const auto call = [&](const VELCurves* curves, const VELCurveOptions* options, VELIndentation* to) {
        return VELCurveIndentations(curves, options, to, nullptr, 0);
    };
    const auto with = [&](const std::function<void(VELCurves&, VELCurveOptions&)>& change) {
        VELCurves curves = good;
        VELCurveOptions options = Defaults();
        change(curves, options);
        return call(&curves, &options, results.data());
    };
    EXPECT_EQ(call(nullptr, nullptr, results.data()), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(call(&good, nullptr, nullptr), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(VELCurveIndentations(&good, nullptr, results.data(), forces.data(), curvePoints - 1), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(VELCurveForces(&good, nullptr, nullptr, nullptr, pitch), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(with([](auto& c, auto&) { c.signal = nullptr; }), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(with([](auto& c, auto&) { c.pitch = curvePoints - 1; }), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(with([](auto& c, auto&) { c.curves = SIZE_MAX / 8; }), VEL_CURVE_BAD_CALL);
    EXPECT_EQ(with([](auto&, auto& o) { o.size = 0; }), VEL_CURVE_BAD_CALL);
    const std::function<void(VELCurves&, VELCurveOptions&)> bad[] = {
        [](auto&, auto& o) { o.surface = 3; },
        [](auto&, auto& o) { o.repulsion = -1; },
        [](auto&, auto& o) { o.law = 3; },
        [](auto&, auto& o) { o.reserved = 1; },
        [](auto&, auto& o) { o.slope_to = INFINITY; },
        [](auto&, auto& o) { o.baseline_from = notAcquired; },
        [](auto&, auto& o) { o.baseline_share = 0; },
        [](auto&, auto& o) { o.baseline_share = 1.1; },
        [](auto&, auto& o) { o.threshold = -1; },
        [](auto&, auto& o) { o.threshold = INFINITY; },
        [](auto&, auto& o) { o.signal_step = notAcquired; },
        [](auto&, auto& o) { o.fit_share = notAcquired; },
        [](auto&, auto& o) { o.lowest_signal = 1e300, o.highest_signal = 1; },
        [](auto&, auto& o) { o.sensitivity = 0; },
        [](auto&, auto& o) { o.spring_constant = -1; }};
    for (const auto& change : bad)
        EXPECT_EQ(with(change), VEL_CURVE_BAD_OPTIONS) << &change - bad;
    EXPECT_TRUE(AreSameBytes(results, untouched));
    EXPECT_EQ(with([](auto& c, auto&) { c.curves = 0, c.signal = nullptr; }), VEL_CURVE_OK);
    EXPECT_TRUE(AreSameBytes(results, untouched));
}

TEST(CurveCallTest, AxesAndRangesThatLeadNowhereAreReasonsOfTheCurves)
{
    const auto block = Block();
    const auto reasons = [&](double start, double step, double from, double to) {
        const VELCurves curves{1, curvePoints, pitch, start, step, block.data()};
        VELCurveOptions options = Defaults();
        options.slope_from = options.baseline_from = from;
        options.slope_to = options.baseline_to = to;
        const CResults results = Analyse(curves, curves, options);
        EXPECT_EQ(results.slope.reason, results.baseline.reason);
        EXPECT_EQ(results.contact.reason, results.baseline.reason);
        EXPECT_EQ(results.indentation.reason, results.baseline.reason);
        return results.slope.reason;
    };
    EXPECT_EQ(reasons(0, 1e-9, 0, 0), VEL_CURVE_OK);
    for (const auto& [start, step] : {std::pair{0.0, 0.0}, {notAcquired, 1.0}, {0.0, INFINITY}, {0.0, 1e307}})
        EXPECT_EQ(reasons(start, step, 0, 0), VEL_CURVE_BAD_AXIS);
    EXPECT_EQ(reasons(0, 1e-9, 200e-9, 300e-9), VEL_CURVE_RANGE_OUTSIDE);
    EXPECT_EQ(reasons(0, 1e-9, 10.2e-9, 10.7e-9), VEL_CURVE_RANGE_OUTSIDE);
    EXPECT_EQ(reasons(0, 1e-9, 60e-9, -1), VEL_CURVE_OK);
    EXPECT_EQ(reasons(0, 1e-9, 20e-9, 22e-9), VEL_CURVE_TOO_FEW_POINTS);
    EXPECT_EQ(reasons(130e-9, -1e-9, 60.0000000001e-9, 129e-9), VEL_CURVE_OK);
}

TEST(CurveCallTest, EveryReasonHasATextOfItsOwn)
{
    std::set<std::string> texts;
    for (int reason = VEL_CURVE_OK; reason <= VEL_CURVE_UNREADABLE; ++reason)
        texts.insert(VELCurveReasonText(reason));
    EXPECT_EQ(texts.size(), 12U);
    for (const std::int64_t none : {INT64_MIN, std::int64_t{-1}, std::int64_t{12}, INT64_MAX})
        EXPECT_STREQ(VELCurveReasonText(none), "unknown reason");
    EXPECT_STREQ(VELCurveReasonText(VEL_CURVE_NOTHING_ACQUIRED), "no point was acquired");
}

} // namespace
