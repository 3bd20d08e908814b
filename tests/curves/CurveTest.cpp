// What the analysis of force curves finds in curves that are known.
#include "curves/CurveRecipe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace recipe;

namespace {

struct CPair
{
    std::vector<double> approach, retract;
};

CPair MakePair(const CRecipe& recipe, std::uint32_t seed = 1)
{
    CNoise noise(seed);
    auto approach = Make(recipe, Way::Approach, noise);
    return {std::move(approach), Make(recipe, Way::Retract, noise)};
}

CResults AnalysePair(const CRecipe& recipe, const CPair& pair, const VELCurveOptions& options)
{
    return recipe::Analyse(BlockOf(recipe, pair.approach), BlockOf(recipe, pair.retract), options);
}

void ExpectNear(double value, double expected, double tolerance, const char* what)
{
    EXPECT_LE(std::abs(value - expected), tolerance) << what << ": " << value << ", not " << expected;
}

// Two analyses of the same curve in other units: position' = scale position + shift, signal' = gain signal + offset.
struct CUnits
{
    double scale, shift, gain, offset;
};

void ExpectSame(const CResults& other, const CResults& of, const CUnits& u, double tolerance)
{
    const double length = tolerance * 500e-9 * std::abs(u.scale);
    const double height = tolerance * 100e-9 * std::abs(u.gain);
    const double incline = tolerance * std::abs(u.gain / u.scale);
    ExpectNear(other.slope.slope, of.slope.slope * u.gain / u.scale, incline, "slope");
    ExpectNear(other.slope.error, of.slope.error * std::abs(u.gain / u.scale), incline, "its error");
    ExpectNear(other.baseline.tilt, of.baseline.tilt * u.gain / u.scale, incline, "tilt");
    ExpectNear(other.baseline.noise, of.baseline.noise * std::abs(u.gain), height, "noise");
    ExpectNear(other.contact.position, of.contact.position * u.scale + u.shift, length, "contact");
    ExpectNear(other.contact.error, of.contact.error * std::abs(u.scale), length, "its error");
    ExpectNear(other.contact.crossing, of.contact.crossing * u.scale + u.shift, length, "crossing");
    ExpectNear(other.adhesion.signal, of.adhesion.signal * std::abs(u.gain), height, "adhesion");
    ExpectNear(other.adhesion.position, of.adhesion.position * u.scale + u.shift, length, "its place");
}

TEST(CurveTest, CurvesWithoutNoiseAreExact)
{
    for (const std::size_t points : {41U, 64U, 100U, 511U, 512U, 1000U, 4096U}) {
        for (const double tilt : {0.0, 0.02, -0.04}) {
            for (const double stiffness : {0.1, 0.5, 1.0}) {
                CRecipe recipe{.points = points, .stiffness = stiffness, .tilt = tilt, .snapIn = 4e-9};
                recipe.step = 512e-9 / static_cast<double>(points);
                const std::size_t lowest = points * 55 / 100; // the last point at which the tip sticks
                recipe.contact = 0.7003 * 512e-9;
                recipe.adhesion = stiffness * (recipe.contact - static_cast<double>(lowest) * recipe.step);
                VELCurveOptions options = Defaults();
                options.slope_from = 0.72 * 512e-9;
                options.slope_to = 1;
                const CResults results = AnalysePair(recipe, MakePair(recipe), options);
                const double end = static_cast<double>(points - 1) * recipe.step;
                const double travel = end - recipe.contact;
                ExpectNear(results.slope.slope, stiffness + tilt, 1e-12, "slope");
                ExpectNear(results.baseline.tilt, tilt, 1e-12, "tilt");
                ExpectNear(results.baseline.offset, recipe.offset, 1e-12 * 100e-9, "offset");
                ExpectNear(results.contact.position, recipe.contact, 1e-12 * recipe.contact, "contact");
                ExpectNear(results.contact.slope, stiffness, 1e-12, "slope behind it");
                ExpectNear(results.adhesion.signal, recipe.adhesion, 1e-12 * 100e-9, "adhesion");
                EXPECT_EQ(results.adhesion.index, lowest);
                EXPECT_DOUBLE_EQ(results.adhesion.force, 0.2 * results.adhesion.signal);
                ExpectNear(results.indentation.largest, (1 - stiffness) * travel, 1e-12 * travel, "indentation");
            }
        }
    }
}

TEST(CurveTest, UnitsAndDirectionsDoNotMatter)
{
    for (const double snapIn : {0.0, 6e-9}) {
        const CRecipe recipe{.noise = 0.4e-9, .snapIn = snapIn};
        const CPair pair = MakePair(recipe);
        VELCurveOptions options = Defaults();
        options.slope_from = 380e-9;
        options.slope_to = 500e-9;
        const CResults of = AnalysePair(recipe, pair, options);
        ASSERT_EQ(of.contact.reason + of.adhesion.reason, 0);
        for (const CUnits& u : {CUnits{1, 0, 1e9, 0}, CUnits{1e9, 0, 1, 0}, CUnits{1, 3e-6, 2, 0}, CUnits{-1, 0, 1, 0},
                                CUnits{1, 0, -5, 0}, CUnits{-2, 1e-6, -0.3, 1e-7}, CUnits{1, 0, 1, -5e-8}}) {
            CRecipe scaled = recipe;
            scaled.start = recipe.start * u.scale + u.shift;
            scaled.step = recipe.step * u.scale;
            CPair signals = pair;
            for (auto* signal : {&signals.approach, &signals.retract})
                std::ranges::transform(*signal, signal->begin(), [&](double y) { return u.gain * y + u.offset; });
            VELCurveOptions other = options;
            other.slope_from = options.slope_to * u.scale + u.shift; // in the other order
            other.slope_to = options.slope_from * u.scale + u.shift;
            other.repulsion = u.gain > 0 ? VEL_REPULSION_RAISES_SIGNAL : VEL_REPULSION_LOWERS_SIGNAL;
            for (const auto surface :
                 {VEL_SURFACE_FROM_DATA, u.scale > 0 ? VEL_SURFACE_AT_HIGH_POSITIONS : VEL_SURFACE_AT_LOW_POSITIONS}) {
                other.surface = surface;
                ExpectSame(AnalysePair(scaled, signals, other), of, u, 1e-9);
            }
            // Recorded from the surface outwards.
            scaled.start += scaled.step * static_cast<double>(scaled.points - 1);
            scaled.step = -scaled.step;
            std::ranges::reverse(signals.approach);
            std::ranges::reverse(signals.retract);
            ExpectSame(AnalysePair(scaled, signals, other), of, u, 1e-9);
        }
    }
}

// Least squares by the normal equations, in more digits.
void ExpectLeastSquares(const VELSlope& slope, const CRecipe& recipe, const std::vector<double>& signal)
{
    long double n = 0, x = 0, y = 0, xx = 0, xy = 0, squares = 0;
    const auto each = [&](auto add) {
        for (std::size_t i = 0; i < signal.size(); ++i) {
            if (std::isfinite(signal[i]))
                add(1e9L * (recipe.start + static_cast<long double>(i) * recipe.step), 1e9L * signal[i]);
        }
    };
    each([&](long double px, long double py) { n += 1, x += px, y += py; });
    x /= n, y /= n;
    each([&](long double px, long double py) { xx += (px - x) * (px - x), xy += (px - x) * (py - y); });
    each([&](long double px, long double py) { squares += std::pow(py - y - xy / xx * (px - x), 2.0L); });
    EXPECT_EQ(slope.points, static_cast<std::uint64_t>(n));
    ExpectNear(slope.slope, static_cast<double>(xy / xx), 1e-12, "slope");
    ExpectNear(slope.intercept, static_cast<double>((y - xy / xx * x) * 1e-9L), 1e-19, "intercept");
    ExpectNear(slope.residual, static_cast<double>(std::sqrt(squares / (n - 2)) * 1e-9L), 1e-19, "residual");
    ExpectNear(slope.error, static_cast<double>(std::sqrt(squares / (n - 2) / xx)), 1e-12, "error");
}

TEST(CurveTest, PointsThatWereNotAcquiredAreLeftOut)
{
    const CRecipe recipe{.points = 203, .contact = 140e-9, .noise = 0.3e-9};
    const CPair whole = MakePair(recipe);
    CNoise choice(9);
    const CResults of = AnalysePair(recipe, whole, Defaults());
    for (const double share : {0.0, 0.01, 0.1, 0.3}) {
        CPair pair = whole;
        for (auto* signal : {&pair.approach, &pair.retract}) {
            for (double& value : *signal)
                value = choice.Uniform(0, 1) < share
                            ? (choice.Uniform(0, 1) < 0.5 ? notAcquired : -std::numeric_limits<double>::infinity())
                            : value;
        }
        const CResults results = AnalysePair(recipe, pair, Defaults());
        ExpectLeastSquares(results.slope, recipe, pair.approach);
        ExpectNear(results.contact.position, of.contact.position, 6 * of.contact.error, "contact");
        ExpectNear(results.adhesion.signal, of.adhesion.signal, 5e-9, "adhesion");
    }
    // At the ends it is as if the curve were shorter.
    CPair padded = whole;
    for (auto* signal : {&padded.approach, &padded.retract}) {
        signal->insert(signal->begin(), 5, notAcquired);
        signal->insert(signal->end(), 11, notAcquired);
    }
    CRecipe longer = recipe;
    longer.start -= 5 * recipe.step;
    ExpectSame(AnalysePair(longer, padded, Defaults()), of, {1, 0, 1, 0}, 1e-12);
}

// Deflection of a tip that indents by ((z - contact - d) of a law d = stiffness indentation^power.
std::vector<double> Elastic(const CRecipe& recipe, double power, double stiffness)
{
    std::vector<double> signal(recipe.points, 0.0);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double travel = recipe.start + static_cast<double>(i) * recipe.step - recipe.contact;
        double low = 0, high = std::max(travel, 0.0); // of the indentation
        for (int halving = 0; halving < 200; ++halving) {
            const double middle = 0.5 * (low + high);
            (stiffness * std::pow(middle, power) + middle < travel ? low : high) = middle;
        }
        signal[i] = std::max(travel, 0.0) - low;
    }
    return signal;
}

TEST(CurveTest, TheBaselineIsTheLineOfLeastSquaresThroughTheAcquiredPoints)
{
    const CRecipe recipe{.noise = 0.5e-9, .snapIn = 4e-9};
    int compared = 0;
    for (std::uint32_t seed = 1; seed < 20; ++seed) {
        auto signal = MakePair(recipe, seed).approach;
        for (std::size_t i = 0; i < signal.size(); ++i)
            signal[i] = (i + seed) * (i + seed) % 7 == 2 ? notAcquired : signal[i];
        const VELCurves curves = BlockOf(recipe, signal);
        VELBaseline found;
        const VELCurveOptions options = Defaults();
        VELCurveBaselines(&curves, &options, &found);
        double n = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
        for (std::size_t i = 0; i < signal.size(); ++i) {
            const double place = recipe.start + recipe.step * static_cast<double>(i);
            if (place < found.from - recipe.step / 2 || place > found.to + recipe.step / 2 || std::isnan(signal[i]))
                continue;
            n += 1;
            x += place;
            y += signal[i];
            xx += place * place;
            xy += place * signal[i];
            yy += signal[i] * signal[i];
        }
        if (found.points != static_cast<std::uint64_t>(n)) // a part was left out, as some by chance are
            continue;
        ++compared;
        const double tilt = (xy - x * y / n) / (xx - x * x / n);
        const double squares = yy - y * y / n - tilt * (xy - x * y / n);
        ExpectNear(found.tilt, tilt, 1e-12, "tilt");
        ExpectNear(found.offset, (y - tilt * x) / n, 1e-9 * 100e-9, "offset");
        ExpectNear(found.noise, std::sqrt(squares / (n - 2)), 1e-6 * recipe.noise, "noise");
    }
    EXPECT_GT(compared, 10);
}

TEST(CurveTest, ContactLawsFindTheirOwnContactPoint)
{
    const CRecipe recipe{.contact = 300.4e-9};
    const struct
    {
        VELCurveLaw law;
        double power, stiffness;
    } laws[] = {{VEL_LAW_SPHERE, 1.5, 600}, {VEL_LAW_CONE, 2, 4e6}};
    for (const auto& [law, power, stiffness] : laws) {
        const auto signal = Elastic(recipe, power, stiffness);
        const VELCurves curves = BlockOf(recipe, signal);
        VELCurveOptions options = Defaults();
        options.law = law;
        VELIndentation found;
        std::vector<double> curve(signal.size());
        VELCurveIndentations(&curves, &options, &found, curve.data(), curve.size());
        ExpectNear(found.contact, recipe.contact, 1e-12 * 512e-9, "contact");
        for (std::size_t i = 310; i < signal.size(); ++i)
            ExpectNear(signal[i], stiffness * std::pow(curve[i], power), 1e-9 * signal[i], "law");
        options.law = VEL_LAW_LINE;
        VELContact contact;
        VELCurveContacts(&curves, &options, &contact);
        EXPECT_GT(contact.position, recipe.contact + 5e-9);
        options.law = law;
        options.sensitivity = notAcquired;
        VELCurveContacts(&curves, &options, &contact);
        EXPECT_EQ(contact.reason, VEL_CURVE_NOT_CALIBRATED);
        for (const VELCurveLaw other : {law, VEL_LAW_LINE}) { // whose contact point needs no sensitivity
            options.law = other;
            VELCurveIndentations(&curves, &options, &found, curve.data(), curve.size());
            EXPECT_EQ(found.reason, VEL_CURVE_NOT_CALIBRATED);
        }
    }
}

TEST(CurveTest, StatedErrorsAreThoseThatOccur)
{
    CRecipe recipe{.noise = 0.5e-9, .snapIn = 5e-9};
    double contact = 0, slope = 0, noise = 0;
    constexpr std::uint32_t curves = 400;
    VELCurveOptions options = Defaults();
    options.slope_from = 370e-9;
    options.slope_to = 500e-9;
    for (std::uint32_t seed = 0; seed < curves; ++seed) {
        const CResults results = AnalysePair(recipe, MakePair(recipe, seed), options);
        contact += std::pow((results.contact.position - recipe.contact) / results.contact.error, 2);
        slope += std::pow((results.slope.slope - recipe.stiffness - recipe.tilt) / results.slope.error, 2);
        noise += results.baseline.noise / recipe.noise;
    }
    EXPECT_NEAR(std::sqrt(contact / curves), 1, 0.15);
    EXPECT_NEAR(std::sqrt(slope / curves), 1, 0.15);
    EXPECT_NEAR(noise / curves, 1, 0.02);
}

// Of all bytes of the results (Fowler, Noll and Vo).
template <class Result>
void Hash(std::uint64_t& hash, const Result& result)
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&result);
    for (std::size_t i = 0; i < sizeof result; ++i)
        hash = (hash ^ bytes[i]) * 0x100000001B3U;
}

TEST(CurveTest, ResultsHaveTheSameBytesOnEverySystem)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    VELCurveOptions options = Defaults();
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const CRecipe recipe{.points = 300 + 2 * seed, .contact = 220e-9, .noise = 0.3e-9, .snapIn = 2e-9};
        options.law = static_cast<VELCurveLaw>(seed % 3);
        const CResults results = AnalysePair(recipe, MakePair(recipe, seed), options);
        ASSERT_EQ(results.indentation.reason + results.adhesion.reason, VEL_CURVE_OK) << seed;
        Hash(hash, results.slope);
        Hash(hash, results.baseline);
        Hash(hash, results.contact);
        Hash(hash, results.adhesion);
        Hash(hash, results.indentation);
    }
    EXPECT_EQ(hash, 18209824268216343735U);
}

TEST(CurveTest, ASnapInWithinTheBaselineDoesNotMoveIt)
{
    const CRecipe clean{.noise = 0.3e-9, .adhesion = 0};
    CRecipe stuck = clean;
    stuck.adhesion = clean.stiffness * 120e-9; // to 230 nm, while the baseline is looked for up to 307 nm
    VELCurveOptions options = Defaults();
    options.baseline_share = 0.6;
    const CResults of = AnalysePair(clean, MakePair(clean), options);
    const CResults results = AnalysePair(stuck, MakePair(stuck), options);
    ExpectNear(results.adhesion.signal, stuck.adhesion, 2e-9, "adhesion");
    EXPECT_EQ(of.adhesion.reason, VEL_CURVE_NO_ADHESION);
}

} // namespace
