// Line operators: results that were calculated by hand, fits that were calculated by the plain formulas, and pixels
// against the lines that they are from.
#include "support/OxdTest.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <tuple>

namespace {

using Line = std::vector<std::int32_t>;

class LineOperatorTest : public OxdTest
{
protected:
    const std::uint64_t handle = Create();
    static constexpr std::uint64_t group = 0;
    static constexpr std::int32_t none = 99'999; // fills the output, so it stays where an operator writes no sample

    LineOperatorTest()
    {
        for (const int bits : {32, 16, 8})
            CreateChannel(handle, bits, 0, 0);
    }

    // Writes the line and reads it back through the operator.
    Line Apply(int lineOp, const Line& line, std::uint64_t inGroup = group) const
    {
        SetChannelXYDimension(handle, inGroup, 0, line.size(), 1);
        SetChannelData_LineRaw(handle, inGroup, 0, 0, line.data());
        Line output(line.size(), none);
        EXPECT_EQ(ReasonOf([&] { GetChannelData_LineRaw(handle, inGroup, 0, 0, lineOp, output.data()); }), "");
        return output;
    }

    // Expects the same from a line that was loaded from a file with 16 or 8 bits, if so few bits can hold it.
    void ExpectSameFromFile(int lineOp, Line line)
    {
        std::ranges::replace(line, highest, lowest);
        const Line expected = Apply(lineOp, line);
        for (const std::uint64_t narrower : {1U, 2U})
            Apply(lineOp, line, narrower);
        Save(handle);
        const auto opened = Open(Path("out.oxd"));
        for (const std::uint64_t narrower : {1U, 2U}) {
            if (LineRaw(opened, narrower, 0, 0) == line) {
                EXPECT_EQ(LineRaw(opened, narrower, 0, 0, lineOp), expected) << lineOp << ' ' << line.size();
            }
        }
        CloseOxdFile(opened);
    }
};

TEST_F(LineOperatorTest, ShortLinesGiveTheResultsOfCalculationsByHand)
{
    for (const auto& [lineOp, input, expected] :
         {std::tuple(0, Line{3, -4, highest}, Line{3, -4, highest}),
          {1, {1, 2}, {0, 1}},
          {1, {-1, -2}, {0, -1}},
          {1, {7}, {0}},
          {1, {0, highest, 0, 0}, {-134217727, highest, -134217727, -134217727}},
          {1, {highest - 1, lowest + 1, lowest + 1, lowest + 1}, {highest, -268435456, -268435456, -268435456}},
          {2, {1, 2, 3}, {none, none, none}},
          {2, {100, 100, 100, 200}, {20, -10, -40, 30}},
          {3, {5, 7, 4}, {2, -3, -3}},
          {3, {9}, {none}},
          {3, {lowest, highest}, {1073741823, 1073741823}},
          {4, {1, 2, 3}, {none, none, none}},
          {4, {0, 100, 100, 0}, {0, 0, 0, 0}},
          {5, {1, 2, 3, 4}, {none, none, none, none}}}) {
        const Line output = Apply(lineOp, input);
        ASSERT_EQ(output.size(), expected.size());
        for (std::size_t x = 0; x < output.size(); ++x)
            EXPECT_NEAR(output[x], expected[x], lineOp >= 2 && lineOp != 3 ? 1 : 0)
                << "operator " << lineOp << ", first sample " << input[0] << ", x " << x;
    }
}

// The checksums are of results that were calculated by the plain formulas, with sums in ascending order of samples.
// Sums are rounded most in lines far from zero, where any other order gives other checksums.
TEST_F(LineOperatorTest, FitsGiveTheSameIntegersInEveryBuild)
{
    for (const auto& [lineOp, checksum] :
         {std::pair(1, 1028517398U), {2, 1594282903U}, {4, 4279192859U}, {5, 1967277764U}}) {
        std::mt19937 random(5);
        std::uint32_t sum = 2'166'136'261;
        for (const std::size_t length : {5U, 6U, 7U, 17U, 64U, 255U, 700U, 1024U, 4096U, 5000U}) {
            for (const auto& [bits, shift, offset] :
                 {std::array{8, 22, 0}, {16, 14, 0}, {30, 0, 0}, {12, 0, 0}, {27, 0, 400'000'000}, {1, 29, 0}}) {
                Line line(length);
                for (auto& sample : line) {
                    sample = (static_cast<std::int32_t>(random() << (32 - bits)) >> (32 - bits) << shift) + offset;
                    if (random() % 16 == 0 && offset == 0)
                        sample = random() % 2 == 0 ? lowest : highest;
                }
                for (const auto corrected : Apply(lineOp, line))
                    sum = (sum ^ static_cast<std::uint32_t>(corrected)) * 16'777'619;
                ExpectSameFromFile(lineOp, line);
            }
        }
        EXPECT_EQ(sum, checksum) << lineOp;
    }
}

TEST_F(LineOperatorTest, PixelsAreThoseOfTheCorrectedLineAfterEveryChange)
{
    for (const Line& first : {Line{0, 3, -8, highest, 70, 6}, Line{5, 5, 7, 1, 0}}) {
        Apply(0, first);
        for (int lineOp = 0; lineOp < 6; ++lineOp) {
            const Line line = LineRaw(handle, group, 0, 0, lineOp);
            for (std::size_t x = 0; x < line.size(); ++x)
                EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, x, 0, lineOp), line[x]) << lineOp << ' ' << x;
            SetChannelData_PixelRaw(handle, group, 0, 2, 0, 900 * lineOp);
            EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, 4, 0, lineOp), LineRaw(handle, group, 0, 0, lineOp)[4]);
        }
    }
}

TEST_F(LineOperatorTest, AReshapedChannelForgetsTheFitsOfItsOldLines)
{
    for (int lineOp = 1; lineOp < 6; ++lineOp) {
        Apply(0, {900, -70, 8, 12, 5});
        GetChannelData_PixelRaw(handle, group, 0, 1, 0, lineOp);
        SetChannelData_Lines(handle, group, 0, 2);
        for (std::uint64_t x = 0; x < 5; ++x)
            EXPECT_EQ(GetChannelData_PixelRaw(handle, group, 0, x, 0, lineOp), 0) << lineOp << ' ' << x;
    }
}

} // namespace
