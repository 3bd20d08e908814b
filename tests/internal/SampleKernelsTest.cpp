// Loops over samples in every width of instructions that the machine has.
#include "velflexlib/dataset/SampleKernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

using Line = std::vector<std::int32_t>;

constexpr std::int32_t lowest = -536870912;
constexpr std::int32_t highest = 536870911;

Line Random(std::mt19937& random, std::size_t length)
{
    Line line(length);
    for (auto& sample : line) {
        sample = static_cast<std::int32_t>(random() << 2) >> 2;
        if (random() % 16 == 0)
            sample = random() % 2 == 0 ? lowest : highest;
    }
    return line;
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

TEST(SampleKernelsTest, EveryWidthOfInstructionsGivesTheSame)
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
        const Line line = Random(random, length);
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
