// Raw and real values, line by line and pixel by pixel.
#include "support/OxdTest.h"

#include <array>
#include <cmath>
#include <limits>
#include <tuple>

namespace {

class SampleTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();
    const std::uint64_t group = CreateChannel(handle, 32, 4, 3);

    void SetSignalAxis(double min, double range) const
    {
        SetChannelData_SignalAxisMin(handle, group, 0, min);
        SetChannelData_SignalAxisRange(handle, group, 0, range);
    }
};

TEST_F(SampleTest, RawSamplesComeBackAsTheyWereClampedToTheRawRange)
{
    const std::vector<std::int32_t> line{lowest - 1, std::numeric_limits<std::int32_t>::max(), -1, highest};
    SetChannelData_LineRaw(handle, group, 0, 1, line.data());
    EXPECT_EQ(LineRaw(handle, group, 0, 1), (std::vector{lowest, highest, -1, highest}));
    EXPECT_EQ(LineRaw(handle, group, 0, 0), (std::vector{0, 0, 0, 0})) << "a line never written is zeros";
    SetChannelData_PixelRaw(handle, group, 0, 2, 1, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, 2, 1, 0), lowest);
    SetChannelData_PixelRaw(handle, group, 0, 3, 0, 42);
    EXPECT_EQ(LineRaw(handle, group, 0, 0), (std::vector{0, 0, 0, 42}));
}

TEST_F(SampleTest, TheSignalAxisSpansTheRawRange)
{
    SetSignalAxis(-2, 6);
    const std::int32_t line[] = {lowest, highest, 0, -1};
    SetChannelData_LineRaw(handle, group, 0, 0, line);
    double real[4];
    GetChannelData_LineReal(handle, group, 0, 0, 0, real);
    EXPECT_EQ(real[0], -2);
    EXPECT_EQ(real[1], 4);
    EXPECT_DOUBLE_EQ(real[2], -2 + 6 * 536870912.0 / 1073741823);
    EXPECT_DOUBLE_EQ(GetChannelData_PixelReal(handle, group, 0, 3, 0, 0), -2 + 6 * 536870911.0 / 1073741823);

    const std::int32_t bent[] = {1000, 1000, 1000, 5000};
    SetChannelData_LineRaw(handle, group, 0, 0, bent);
    GetChannelData_LineReal(handle, group, 0, 0, 1, real);
    EXPECT_DOUBLE_EQ(real[0], -2 + 6 * (536870912.0 - 1000) / 1073741823) << "that of the corrected sample";
    EXPECT_DOUBLE_EQ(GetChannelData_PixelReal(handle, group, 0, 3, 0, 1), -2 + 6 * (536870912.0 + 3000) / 1073741823);
}

TEST_F(SampleTest, RealValuesBecomeRawOnesByTruncationAndBothEndsAreExact)
{
    // Minimum and range of the axis, real value, raw value. The formula alone would miss the top of the axes of -1e-9
    // and 0.1 by one; -0.5 and 0.5 are both cut to 0; of the last, an intermediate product overflows.
    for (const auto& [min, range, real, expected] : {std::array<double, 4>{0, 1, 0, lowest},
                                                     {0, 1, 1, highest},
                                                     {0, 1, -5, lowest},
                                                     {0, 1, HUGE_VAL, highest},
                                                     {4, -6, 4, lowest},
                                                     {4, -6, -2, highest},
                                                     {0, 1, NAN, lowest},
                                                     {0, NAN, 0, lowest},
                                                     {0, 0, -1, lowest},
                                                     {0, HUGE_VAL, HUGE_VAL, lowest},
                                                     {-1e-9, 3e-9, 2e-9, highest},
                                                     {0.1, 0.7, 0.1 + 0.7, highest},
                                                     {0, 1073741823, 536870911.5, 0},
                                                     {0, 1073741823, 536870912.5, 0},
                                                     {0, 1073741823, 536870910.5, -1},
                                                     {0, 1e300, 0.5e300, -1}}) {
        SetSignalAxis(min, range);
        const double line[] = {real, min, real, real};
        SetChannelData_LineReal(handle, group, 0, 0, line);
        SetChannelData_PixelReal(handle, group, 0, 1, 0, real);
        for (const std::int32_t raw : LineRaw(handle, group, 0, 0))
            EXPECT_NEAR(raw, expected, range == 1e300 ? 1 : 0) << min << ' ' << range << ' ' << real;
    }
    for (int i = 1; i < 500; ++i) { // where the formula misses an end of some
        SetSignalAxis(0.1 * i, -0.7 / i);
        SetChannelData_PixelReal(handle, group, 0, 0, 0, 0.1 * i - 0.7 / i);
        SetChannelData_PixelReal(handle, group, 0, 1, 0, 0.1 * i);
        EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, 0, 0, 0), highest) << i;
        EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, 1, 0, 0), lowest) << i;
    }
    SetSignalAxis(0, 1e308);
    SetChannelData_PixelReal(handle, group, 0, 0, 0, 5e307);
    EXPECT_NEAR(GetChannelData_PixelReal(handle, group, 0, 0, 0, 0) / 5e307, 1, 1e-8) << "huge, but finite";
}

TEST_F(SampleTest, LongLinesOfRealValuesAreThoseOfTheirPixelsAndWrittenBackStayTheSame)
{
    constexpr std::uint64_t points = 5001;
    SetChannelXYDimension(handle, group, 0, points, 2);
    SetSignalAxis(-3.25e-7, 1.7e-6);
    std::vector<std::int32_t> raw(points);
    std::vector<double> real(points);
    for (std::size_t x = 0; x < points; ++x)
        raw[x] = lowest + static_cast<std::int32_t>(x * 214'567);
    SetChannelData_LineRaw(handle, group, 0, 0, raw.data());
    GetChannelData_LineReal(handle, group, 0, 0, 0, real.data());
    SetChannelData_LineReal(handle, group, 0, 0, real.data());
    for (std::uint64_t x = 0; x < points; ++x) {
        EXPECT_NEAR(GetChannelData_PixelRaw(handle, group, 0, x, 0, 0), raw[x], 1);
        SetChannelData_PixelReal(handle, group, 0, x, 1, real[x]);
    }
    EXPECT_EQ(LineRaw(handle, group, 0, 0), LineRaw(handle, group, 0, 1));
}

TEST_F(SampleTest, ASampleTooFineForTheFileChangesNoOther)
{
    using Bytes = std::string;
    // What was loaded from 8 bits is saved with 16.
    for (const auto& [bits, shift, stored, saved] :
         {std::tuple("8\n", 22, Bytes{1, 2, 3, '\x80'}, Bytes{0, 1, 0, 2, 0, 0, 0, '\x80'}),
          {"16\n", 14, {1, 0, 2, 0, 3, 0, 0, '\x80'}, {1, 0, 2, 0, 0, 0, 0, '\x80'}}}) {
        const auto file = Open(WriteOxd(oneChannel + "Version=2\nPoints=2\nLines=2\nSaveBits=" + bits, stored));
        EXPECT_EQ(LineRaw(file, 0, 0, 1, 3).front(), lowest - (3 << shift));
        SetChannelData_PixelRaw(file, 0, 0, 0, 1, 5);
        EXPECT_EQ(LineRaw(file, 0, 0, 0), (std::vector{1 << shift, 2 << shift}));
        EXPECT_EQ(LineRaw(file, 0, 0, 1), (std::vector{5, lowest}));
        EXPECT_TRUE(Saved(file).ends_with("#!" + saved)) << bits;
    }
}

} // namespace
