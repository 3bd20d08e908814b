// Line operators against results that can be worked out by hand, and fits against an independent least-squares
// solution.
#include "support/OxdTest.h"

#include <cmath>
#include <cstdint>
#include <random>

namespace {

using Line = std::vector<std::int32_t>;

constexpr std::int32_t lowest = -536870912;
constexpr std::int32_t highest = 536870911;

class LineOperatorTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();
    const std::uint64_t group = CreateChannel(handle, 32, 0, 0);

    // What the operator makes of the line. `untouched` stands where it gave no sample.
    static constexpr std::int32_t untouched = 99'999;

    Line Apply(int lineOp, const Line& line) const
    {
        SetChannelXYDimension(handle, group, 0, line.size(), 1);
        SetChannelData_LineRaw(handle, group, 0, 0, line.data());
        Line output(line.size(), untouched);
        EXPECT_EQ(ReasonOf([&] { GetChannelData_LineRaw(handle, group, 0, 0, lineOp, output.data()); }), "");
        return output;
    }
};

TEST_F(LineOperatorTest, SmallLinesGiveWhatOnePenAndPaperGives)
{
    constexpr std::int32_t none = untouched;
    struct Case
    {
        int lineOp;
        Line input, output;
    };
    const Case cases[] = {
        {0, {3, -4, highest}, {3, -4, highest}},
        {1, {1, 2}, {0, 1}},
        {1, {-1, -2}, {0, -1}},
        {1, {7}, {0}},
        {1, {0, highest, 0, 0}, {-134217727, highest, -134217727, -134217727}},
        {1, {highest - 1, lowest + 1, lowest + 1, lowest + 1}, {highest, -268435456, -268435456, -268435456}},
        {2, {1, 2, 3}, {none, none, none}},
        {2, {0, 0, 0, 0}, {0, 0, 0, 0}},
        {2, {100, 100, 100, 200}, {20, -10, -40, 30}}, // fit 80 + 30 x
        {3, {5, 7, 4}, {2, -3, -3}},
        {3, {9}, {none}},
        {3, {lowest, highest}, {1073741823, 1073741823}},
        {4, {1, 2, 3}, {none, none, none}},
        {4, {0, 100, 100, 0}, {0, 0, 0, 0}},
        {5, {1, 2, 3, 4}, {none, none, none, none}},
        {5, {7, 7, 7, 7, 7}, {0, 0, 0, 0, 0}},
    };
    for (const Case& c : cases) {
        const Line output = Apply(c.lineOp, c.input);
        ASSERT_EQ(output.size(), c.output.size());
        for (std::size_t x = 0; x < output.size(); ++x)
            EXPECT_NEAR(output[x], c.output[x], c.lineOp >= 2 && c.lineOp != 3 ? 1 : 0)
                << "operator " << c.lineOp << ", first sample " << c.input[0] << ", x " << x;
    }
}

// Least squares by orthogonal polynomials in extended precision: another method than the library's.
std::vector<long double> FittedValues(const Line& line, int degree)
{
    const std::size_t n = line.size();
    std::vector<long double> fitted(n, 0), previous(n, 0), current(n, 1);
    for (int d = 0; d <= degree; ++d) {
        long double norm = 0, projection = 0, centre = 0;
        for (std::size_t x = 0; x < n; ++x) {
            norm += current[x] * current[x];
            projection += current[x] * line[x];
            centre += static_cast<long double>(x) * current[x] * current[x];
        }
        long double overlap = 0, previousNorm = 0;
        for (std::size_t x = 0; x < n; ++x) {
            fitted[x] += projection / norm * current[x];
            overlap += static_cast<long double>(x) * current[x] * previous[x];
            previousNorm += previous[x] * previous[x];
        }
        const long double back = previousNorm > 0 ? overlap / previousNorm : 0;
        for (std::size_t x = 0; x < n; ++x) {
            const long double next = (static_cast<long double>(x) - centre / norm) * current[x] - back * previous[x];
            previous[x] = current[x];
            current[x] = next;
        }
    }
    return fitted;
}

TEST_F(LineOperatorTest, FitsAgreeWithAnIndependentSolution)
{
    std::mt19937 random(7);
    const std::pair<int, int> operators[] = {{2, 1}, {4, 2}, {5, 4}};
    for (const std::size_t length : {5U, 16U, 257U, 1024U}) {
        Line line(length);
        for (std::size_t x = 0; x < length; ++x)
            line[x] = static_cast<std::int32_t>(random() % 200'000'000) + static_cast<std::int32_t>(x) * 1000;
        for (const auto& [lineOp, degree] : operators) {
            const Line output = Apply(lineOp, line);
            const auto fitted = FittedValues(line, degree);
            // The polynomial fit cuts its two lowest coefficients to integers: up to 1 + x is lost.
            const double slack = lineOp == 5 ? 3 + static_cast<double>(length) : 2;
            for (std::size_t x = 0; x < length; ++x)
                EXPECT_NEAR(output[x], static_cast<double>(line[x] - fitted[x]), slack) << lineOp << ' ' << length;
        }
    }
}

TEST_F(LineOperatorTest, PolynomialCoefficientsOfLowOrderAreCutToIntegers)
{
    // 0.5 + 0.5 x, times two and halved by truncation of samples: 0, 1, 1, 2, 2, ... fits about 0.25 + 0.5 x.
    Line line(64);
    for (std::size_t x = 0; x < line.size(); ++x)
        line[x] = static_cast<std::int32_t>((x + 1) / 2);
    const Line output = Apply(5, line);
    EXPECT_NEAR(output[60], line[60], 2) << "both low coefficients are cut to 0, so next to nothing is subtracted";
    EXPECT_NEAR(Apply(2, line)[60], 0, 1) << "the line fit cuts nothing";
}

TEST_F(LineOperatorTest, MarkersTakePartInTheFitAndPassUnchanged)
{
    for (const int lineOp : {1, 2, 4, 5}) {
        const Line output = Apply(lineOp, {lowest, 0, 0, highest, 0, 0, highest, 0});
        EXPECT_EQ(output[0], lowest);
        EXPECT_EQ(output[3], highest);
        EXPECT_EQ(output[6], highest);
        EXPECT_NE(output[1], 0);
    }
}

TEST_F(LineOperatorTest, PixelsAreThoseOfTheLineAsItIsNow)
{
    Apply(0, {0, 3, -8, highest, 70, 6});
    for (int round = 0; round < 2; ++round) {
        for (int lineOp = 0; lineOp < 6; ++lineOp) {
            const Line line = LineRaw(handle, group, 0, 0, lineOp);
            for (std::size_t x = 0; x < line.size(); ++x)
                EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, x, 0, lineOp), line[x]) << lineOp << ' ' << x;
            SetChannelData_PixelRaw(handle, group, 0, 2, 0, 900 * lineOp);
            EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, 4, 0, lineOp), LineRaw(handle, group, 0, 0, lineOp)[4]);
        }
        const Line shorter{5, 5, 7, 1, 0};
        Apply(0, shorter);
    }
}

TEST_F(LineOperatorTest, APointBeyondAnEmptyResultIsAnError)
{
    Apply(0, {1, 2, 3});
    EXPECT_EQ(ReasonOf([&] { GetChannelData_PixelRaw(handle, group, 0, 0, 0, 2); }),
              "Unable to get channel pixel. Unknown error");
}

} // namespace
