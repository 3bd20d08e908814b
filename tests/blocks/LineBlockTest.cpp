// Blocks of lines: they hold what the library gives line by line, and a failure ends them cleanly.
#include "support/OxdTest.h"

#include <veloxd_blocks.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr std::int32_t missing = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t untouched = 42;
constexpr std::uint64_t points = 6;
const std::vector<std::uint64_t> acquired = {6, 0, 3, 5, 6};

// All numbers differ, so that no argument can be taken for another.
constexpr std::uint64_t group = 1;
constexpr std::uint64_t channel = 2;
const std::string head =
    "[DataSet]\nVersion=2\nGroupCount=2\nGr0-Count=0\nGr1-Count=3\nGr1-Ch2=DataSet-1:2\n[DataSet-1:2]\n";

// A channel whose lines end early and have point axes of their own.
class LineBlockTest : public OxdTest
{
protected:
    LineBlockTest()
    {
        std::string keys = "Version=3\nPoints=6\nLines=5\nSaveBits=16\nDim2Range=1\n";
        for (std::size_t line = 0; line < acquired.size(); ++line) {
            const std::string prefix = "LineDim" + std::to_string(line);
            keys += prefix + "Points=" + std::to_string(acquired[line]) + "\n" + prefix +
                    "Min=" + std::to_string(line) + "\n" + prefix + "Range=" + std::to_string(line + 10) + "\n";
        }
        std::string samples;
        for (std::size_t line = 0; line < acquired.size(); ++line) {
            for (std::uint64_t point = 0; acquired[line] > 0 && point < points; ++point)
                samples.append({static_cast<char>(point * point + line), static_cast<char>(line + 1)});
        }
        file = Open(WriteOxd(head + keys, samples));
    }

    // What reading gives: the library's samples, and the missing one where there are none.
    std::vector<std::int32_t> Expected(const std::vector<std::uint64_t>& lines, std::int32_t operation) const
    {
        std::vector<std::int32_t> rows(lines.size() * points, missing);
        for (std::size_t row = 0; row < lines.size(); ++row)
            GetChannelData_LineRaw(file, group, channel, lines[row], operation, rows.data() + row * points);
        EXPECT_FALSE(VELHasLastError());
        return rows;
    }

    std::uint64_t file = 0;
};

TEST_F(LineBlockTest, RawSamplesAreThoseOfSingleLinesWhateverTheOperatorAndTheOrder)
{
    const std::vector<std::uint64_t> lines = {4, 0, 0, 2, 1, 3};
    for (std::int32_t operation = 0; operation <= 5; ++operation) {
        std::vector<std::int32_t> rows(lines.size() * points, untouched);
        ASSERT_EQ(VELBlockReadRaw(file, group, channel, operation, 99, lines.data(), lines.size(), rows.data(), points),
                  VEL_BLOCK_OK);
        EXPECT_EQ(rows, Expected(lines, operation)) << operation;
    }
}

TEST_F(LineBlockTest, RowsMayGoBackwardsAndHaveGapsBetweenThem)
{
    constexpr std::int64_t pitch = 8;
    std::vector<std::int32_t> rows(3 * pitch, untouched);
    ASSERT_EQ(VELBlockReadRaw(file, group, channel, 0, 2, nullptr, 3, rows.data() + 2 * pitch, -pitch), VEL_BLOCK_OK);
    const auto expected = Expected({4, 3, 2}, 0);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t point = 0; point < pitch; ++point)
            EXPECT_EQ(rows[row * pitch + point], point < points ? expected[row * points + point] : untouched);
    }
}

TEST_F(LineBlockTest, RealValuesAreThoseOfSingleLinesAlsoWithoutAFiniteAxis)
{
    for (const double range : {1.0, std::numeric_limits<double>::quiet_NaN()}) {
        SetChannelData_SignalAxisRange(file, group, channel, range);
        std::vector<double> rows(acquired.size() * points);
        ASSERT_EQ(VELBlockReadReal(file, group, channel, 0, 0, nullptr, acquired.size(), rows.data(), points),
                  VEL_BLOCK_OK);
        for (std::size_t line = 0; line < acquired.size(); ++line) {
            std::vector<double> alone(points, std::numeric_limits<double>::quiet_NaN());
            GetChannelData_LineReal(file, group, channel, line, 0, alone.data());
            for (std::size_t point = 0; point < points; ++point) {
                const double value = rows[line * points + point];
                EXPECT_TRUE(value == alone[point] || (std::isnan(value) && std::isnan(alone[point])));
            }
        }
    }
}

TEST_F(LineBlockTest, WhatIsWrittenIsReadAgain)
{
    std::vector<std::int32_t> rows(5 * points);
    std::iota(rows.begin(), rows.end(), -7);
    const std::vector<std::uint64_t> lines = {3, 1, 3};
    ASSERT_EQ(VELBlockWriteRaw(file, group, channel, 0, nullptr, 5, rows.data(), points), VEL_BLOCK_OK);
    EXPECT_EQ(Expected({0, 1, 2, 3, 4}, 0), rows);
    ASSERT_EQ(VELBlockWriteRaw(file, group, channel, 0, lines.data(), 3, rows.data() + points, points), VEL_BLOCK_OK);
    EXPECT_EQ(LineRaw(file, group, channel, 3), std::vector<std::int32_t>(rows.begin() + 18, rows.begin() + 24))
        << "the last";

    const std::vector<double> values(2 * points, 0.25);
    ASSERT_EQ(VELBlockWriteReal(file, group, channel, 1, nullptr, 2, values.data(), points), VEL_BLOCK_OK);
    EXPECT_EQ(LineRaw(file, group, channel, 2),
              std::vector<std::int32_t>(points, -268435456)); // a quarter of the range
}

TEST_F(LineBlockTest, ShapeAcquiredPointsAndAxesAreThoseOfTheLines)
{
    std::uint64_t shape[2] = {};
    ASSERT_EQ(VELBlockShape(file, group, channel, shape, shape + 1), VEL_BLOCK_OK);
    EXPECT_EQ(shape[0], acquired.size());
    EXPECT_EQ(shape[1], points);
    std::vector<std::uint64_t> counts(5);
    ASSERT_EQ(VELBlockAcquired(file, group, channel, 0, nullptr, 5, counts.data()), VEL_BLOCK_OK);
    EXPECT_EQ(counts, acquired);
    const std::uint64_t lines[] = {4, 2};
    std::vector<double> minimums(2), ranges(2);
    ASSERT_EQ(VELBlockPointAxes(file, group, channel, 0, lines, 2, minimums.data(), ranges.data()), VEL_BLOCK_OK);
    EXPECT_EQ(minimums, (std::vector<double>{4, 2}));
    EXPECT_EQ(ranges, (std::vector<double>{14, 12}));
}

TEST_F(LineBlockTest, AFailureEndsABlockBehindTheRowsThatAreDone)
{
    GetGroupCount(4711); // a failure of before
    const std::uint64_t lines[] = {0, 5, 4};
    std::vector<std::int32_t> rows(3 * points, untouched);
    EXPECT_EQ(VELBlockReadRaw(file, group, channel, 0, 0, lines, 3, rows.data(), points), VEL_BLOCK_FAILED);
    EXPECT_FALSE(VELHasLastError());
    EXPECT_EQ(ReasonIn(VELGetLastError()), "Unable to get channel line. Unknown error");
    const auto first = Expected({0}, 0);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), rows.begin()));
    EXPECT_EQ(std::vector<std::int32_t>(rows.begin() + 12, rows.end()), std::vector<std::int32_t>(points, untouched));
    EXPECT_EQ(VELBlockWriteRaw(file, group, channel, 0, lines, 3, rows.data(), points), VEL_BLOCK_FAILED);
    EXPECT_EQ(VELBlockReadRaw(file, group, channel, 6, 0, lines, 1, rows.data(), points), VEL_BLOCK_FAILED);
    EXPECT_EQ(ReasonIn(VELGetLastError()), "invalid map<K, T> key");
    std::uint64_t counts[3] = {untouched, untouched, untouched};
    EXPECT_EQ(VELBlockAcquired(file, group, channel, 0, lines, 3, counts), VEL_BLOCK_FAILED);
    EXPECT_EQ(counts[1], untouched);
}

TEST_F(LineBlockTest, WrongHandlesGroupsAndChannelsAreFailuresAndChangeNothing)
{
    std::vector<double> rows(points, untouched);
    const std::vector<double> before = rows;
    std::uint64_t shape[2] = {untouched, untouched};
    const auto expectFailures = [&](std::uint64_t handle, std::uint64_t wrongGroup, std::uint64_t wrongChannel) {
        EXPECT_EQ(VELBlockReadReal(handle, wrongGroup, wrongChannel, 0, 0, nullptr, 1, rows.data(), 6),
                  VEL_BLOCK_FAILED);
        EXPECT_EQ(VELBlockWriteReal(handle, wrongGroup, wrongChannel, 0, nullptr, 1, rows.data(), 6), VEL_BLOCK_FAILED);
        EXPECT_EQ(VELBlockShape(handle, wrongGroup, wrongChannel, shape, shape + 1), VEL_BLOCK_FAILED);
        EXPECT_EQ(VELBlockAcquired(handle, wrongGroup, wrongChannel, 0, nullptr, 1, shape), VEL_BLOCK_FAILED);
        EXPECT_EQ(VELBlockPointAxes(handle, wrongGroup, wrongChannel, 0, nullptr, 1, rows.data(), rows.data() + 1),
                  VEL_BLOCK_FAILED);
        EXPECT_FALSE(VELHasLastError());
    };
    expectFailures(file + 1, 0, 0);
    expectFailures(file, 1, 0);
    expectFailures(file, 0, 1);
    CloseOxdFile(file);
    expectFailures(file, group, channel);
    EXPECT_EQ(ReasonIn(VELGetLastError()), "Handle does not exist");
    EXPECT_EQ(rows, before);
    EXPECT_EQ(shape[0], untouched);
}

TEST_F(LineBlockTest, CallsWithoutArraysOrWithRowsThatOverlapDoNothing)
{
    std::vector<double> rows(2 * points, untouched);
    std::uint64_t count = 0;
    EXPECT_EQ(VELBlockReadReal(file, group, channel, 0, 0, nullptr, 2, nullptr, 6), VEL_BLOCK_BAD_CALL);
    for (const std::int64_t pitch : {std::int64_t{0}, std::int64_t{5}, std::int64_t{-5}}) {
        EXPECT_EQ(VELBlockReadReal(file, group, channel, 0, 0, nullptr, 2, rows.data(), pitch), VEL_BLOCK_BAD_CALL);
        EXPECT_EQ(VELBlockWriteReal(file, group, channel, 0, nullptr, 2, rows.data(), pitch), VEL_BLOCK_BAD_CALL);
        EXPECT_EQ(VELBlockReadReal(file, group, channel, 0, 2, nullptr, 0, nullptr, pitch), VEL_BLOCK_OK)
            << "nothing is asked for";
    }
    EXPECT_EQ(VELBlockShape(file, group, channel, nullptr, &count), VEL_BLOCK_BAD_CALL);
    EXPECT_EQ(VELBlockAcquired(file, group, channel, 0, nullptr, 1, nullptr), VEL_BLOCK_BAD_CALL);
    EXPECT_EQ(VELBlockPointAxes(file, group, channel, 0, nullptr, 1, rows.data(), nullptr), VEL_BLOCK_BAD_CALL);
    EXPECT_EQ(rows, std::vector<double>(2 * points, untouched));
    EXPECT_EQ(VELBlockReadReal(file, group, channel, 0, 0, nullptr, 1, rows.data(), 0), VEL_BLOCK_OK)
        << "one row has no pitch";
}

TEST_F(LineBlockTest, ALineThatClaimsMoreThanThereIsIsRefused)
{
    std::vector<std::int32_t> rows(6, untouched);
    const auto claims =
        Open(WriteOxd(oneChannel + "Version=3\nPoints=2\nLines=2\nSaveBits=8\nLineDim1Points=3\n", "abcd"));
    EXPECT_EQ(VELBlockReadRaw(claims, 0, 0, 0, 0, nullptr, 2, rows.data(), 2), VEL_BLOCK_FAILED);
    EXPECT_EQ(rows[4], untouched);
}

} // namespace
