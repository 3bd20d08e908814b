// Line operators in every width of instructions, against the plain formulas: all builds give the same integers.
#include "velflexlib/dataset/LineOperator.h"
#include "velflexlib/dataset/NormalEquations.h"
#include "velflexlib/dataset/SampleKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

using Line = std::vector<std::int32_t>;

constexpr std::int32_t lowest = -536870912;
constexpr std::int32_t highest = 536870911;

using Matrix = std::vector<std::vector<double>>;

Matrix Without(const Matrix& matrix, std::size_t row, std::size_t column)
{
    Matrix minor = matrix;
    minor.erase(minor.begin() + static_cast<std::ptrdiff_t>(row));
    for (auto& cells : minor)
        cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(column));
    return minor;
}

// NOLINTNEXTLINE(misc-no-recursion): three deep
double Determinant(Matrix matrix)
{
    if (matrix.size() == 1)
        return matrix[0][0];
    double determinant = matrix.size() > 3 ? 1 : 0;
    if (matrix.size() <= 3) {
        for (std::size_t k = 0; k < matrix.size(); ++k)
            determinant += (k % 2 == 0 ? 1 : -1) * (matrix[0][k] * Determinant(Without(matrix, 0, k)));
        return determinant;
    }
    for (std::size_t c = 0; c < matrix.size(); ++c) {
        std::size_t pivot = c;
        for (std::size_t r = c; r < matrix.size(); ++r)
            pivot = std::abs(matrix[r][c]) > std::abs(matrix[pivot][c]) ? r : pivot;
        std::swap(matrix[c], matrix[pivot]);
        determinant *= (pivot == c ? 1 : -1) * matrix[c][c];
        for (std::size_t r = c + 1; r < matrix.size(); ++r) {
            const double factor = matrix[r][c] / matrix[c][c];
            for (std::size_t k = c; k < matrix.size(); ++k)
                matrix[r][k] -= factor * matrix[c][k];
        }
    }
    return determinant;
}

// Sample after sample, in one order, nothing kept from line to line.
std::vector<double> PlainFit(const Line& line, std::size_t degree)
{
    std::vector<double> sums(2 * degree + 1);
    std::vector<double> moments(degree + 1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto x = static_cast<double>(i);
        double power = 1;
        for (auto& sum : sums) {
            sum += power;
            power *= x;
        }
        double term = line[i];
        for (auto& moment : moments) {
            moment += term;
            term *= x;
        }
    }
    Matrix matrix(degree + 1, std::vector<double>(degree + 1));
    for (std::size_t r = 0; r <= degree; ++r)
        std::copy_n(sums.begin() + static_cast<std::ptrdiff_t>(r), degree + 1, matrix[r].begin());
    std::vector<double> coefficients;
    for (std::size_t c = 0; c <= degree; ++c) {
        double numerator = 0;
        for (std::size_t r = 0; r <= degree; ++r)
            numerator += ((r + c) % 2 == 0 ? 1 : -1) * Determinant(Without(matrix, r, c)) * moments[r];
        coefficients.push_back(numerator * (1 / Determinant(matrix)));
    }
    return coefficients;
}

double Value(LineOpID id, const std::vector<double>& c, double x)
{
    const double square = x * x;
    if (id == LineOpID::LineFit)
        return c[0] + c[1] * x;
    if (id == LineOpID::ParabolaFit)
        return c[0] + c[1] * x + c[2] * square;
    return std::trunc(c[0]) + std::trunc(c[1]) * x + c[2] * square + c[3] * square * x + c[4] * square * square;
}

Line Plain(LineOpID id, const Line& line)
{
    std::int64_t sum = 0;
    for (const auto sample : line)
        sum += sample;
    const std::size_t degree = id == LineOpID::LineFit ? 1 : id == LineOpID::ParabolaFit ? 2 : 4;
    const auto c = id == LineOpID::MeanFit ? std::vector<double>() : PlainFit(line, degree);
    Line corrected = line;
    for (std::size_t x = 0; x < line.size(); ++x) {
        const std::int64_t fitted = id == LineOpID::MeanFit
                                        ? sum / static_cast<std::int64_t>(line.size())
                                        : static_cast<std::int64_t>(Value(id, c, static_cast<double>(x)));
        if (line[x] > lowest && line[x] < highest)
            corrected[x] = static_cast<std::int32_t>(std::clamp<std::int64_t>(line[x] - fitted, lowest, highest));
    }
    return corrected;
}

Line Random(std::mt19937& random, std::size_t length, int bits, int shift)
{
    Line line(length);
    for (auto& sample : line) {
        sample = static_cast<std::int32_t>(random() << (32 - bits)) >> (32 - bits) << shift;
        if (random() % 16 == 0)
            sample = random() % 2 == 0 ? lowest : highest;
    }
    return line;
}

Line Applied(LineOpID id, const Line& line)
{
    std::vector<std::int32_t> stored(line.size());
    EncodeSamples(line, SampleWidth::Bits32, reinterpret_cast<std::byte*>(stored.data()));
    const CStoredSamples samples(reinterpret_cast<const std::byte*>(stored.data()), SampleWidth::Bits32, line.size());
    const CLineOperator& lineOperator = GetLineOperator(id);
    const CLineFit fit = lineOperator.Fit(samples);
    Line corrected(line.size());
    ForEachPiece(line.size(), [&](std::uint64_t first, std::uint64_t count) {
        lineOperator.Apply(fit, samples, first, std::span(corrected).subspan(first, count));
        std::int32_t alone = 0;
        lineOperator.Apply(fit, samples, first, {&alone, 1});
        EXPECT_EQ(alone, corrected[first]);
    });
    return corrected;
}

TEST(LineOperatorTest, FitsGiveTheIntegersOfThePlainFormulas)
{
    std::mt19937 random(5);
    const LineOpID ids[] = {LineOpID::MeanFit, LineOpID::LineFit, LineOpID::ParabolaFit, LineOpID::PolynomialFit};
    for (const std::size_t length : {5U, 6U, 7U, 17U, 64U, 255U, 1024U, 5000U}) {
        for (const auto& [bits, shift] : {std::pair(8, 22), {16, 14}, {30, 0}, {12, 0}}) {
            const Line line = Random(random, length, bits, shift);
            for (const auto id : ids)
                EXPECT_EQ(Applied(id, line), Plain(id, line)) << length << ' ' << bits << ' ' << static_cast<int>(id);
        }
    }
}

// Far from zero, sums are rounded so much that another order of additions shows.
TEST(LineOperatorTest, FitsOfRoundedSumsGiveThemToo)
{
    std::mt19937 random(8);
    for (const std::size_t length : {700U, 1024U, 4096U}) {
        for (int round = 0; round < 10; ++round) {
            Line line = Random(random, length, 27, 0);
            for (auto& sample : line)
                sample = std::clamp(sample, -100'000'000, 100'000'000) + 400'000'000;
            for (const auto id : {LineOpID::LineFit, LineOpID::ParabolaFit, LineOpID::PolynomialFit})
                EXPECT_EQ(Applied(id, line), Plain(id, line)) << length << ' ' << static_cast<int>(id);
        }
    }
}

std::vector<const CSampleKernels*> WiderKernels()
{
    std::vector<const CSampleKernels*> sets;
#if defined(__linux__) && defined(__x86_64__)
    if (__builtin_cpu_supports("avx2"))
        sets.push_back(&avx2Kernels);
    if (&Kernels() == &avx512Kernels)
        sets.push_back(&avx512Kernels);
#endif
    return sets;
}

TEST(LineOperatorTest, EveryWidthOfInstructionsGivesTheSame)
{
    std::mt19937 random(6);
    const auto same = [](const Line& line, auto apply) {
        Line expected = line;
        apply(baselineKernels, expected);
        for (const CSampleKernels* const set : WiderKernels()) {
            Line got = line;
            apply(*set, got);
            EXPECT_EQ(got, expected) << line.size();
        }
    };
    const double tame[] = {1e3, -20, 0.3, -1e-3, 1e-6};
    const double wild[] = {-3e8, 4e6, -7e5, 123, -0.5};
    for (std::size_t length = 2; length < 70; ++length) {
        const Line line = Random(random, length, 30, 0);
        for (const double* c : {tame, wild}) {
            same(line, [&](const auto& k, Line& l) { k.subtract1(l.data(), l.size(), 3, c); });
            same(line, [&](const auto& k, Line& l) { k.subtract2(l.data(), l.size(), 3, c); });
            same(line, [&](const auto& k, Line& l) { k.subtract4(l.data(), l.size(), 3, c); });
        }
        same(line, [&](const auto& k, Line& l) { k.differences(l.data(), l.size() - 1); });
        same(line, [&](const auto& k, Line& l) {
            std::vector<std::int16_t> stored(l.size());
            k.narrow16(l.data(), l.size(), stored.data());
            k.widen16(stored.data(), l.size(), l.data());
        });
        for (const CSignalAxis axis : {CSignalAxis{-0.1, 0.7}, {2e-9, -1e-9}}) {
            same(line, [&](const auto& k, Line& l) {
                std::vector<double> real(l.size());
                k.toReal(l.data(), l.size(), axis, real.data());
                real[0] = std::nan("");
                real[1] *= 1.5;
                k.toRaw(real.data(), l.size(), axis, l.data());
            });
        }
    }
}

} // namespace
