// The loops over samples give the same results in every width of instructions that this machine has.
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"
#include "velflexlib/dataset/samples/kernels/RawRange.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

using namespace veltaris::velflexlib::dataset;

namespace {

using Line = std::vector<std::int32_t>;

Line Random(std::mt19937& random, std::size_t length)
{
    Line line(length);
    for (auto& sample : line) {
        sample = static_cast<std::int32_t>(random() << 2) >> 2;
        if (random() % 16 == 0)
            sample = random() % 2 == 0 ? lowestRaw : highestRaw;
    }
    return line;
}

// Expects that apply(kernels) returns the same for the baseline and for every wider set.
template <class Apply>
void ExpectSame(Apply apply)
{
    const auto expected = apply(baselineKernels);
    EXPECT_EQ(apply(Kernels()), expected) << expected.size();
#if defined(__linux__) && defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) {
        EXPECT_EQ(apply(avx2Kernels), expected) << expected.size();
    }
#endif
}

TEST(SampleKernelsTest, EveryWidthOfInstructionsGivesTheSameOfStoredSamples)
{
    constexpr CStoredKernels CSampleKernels::*widths[] = {&CSampleKernels::stored8, &CSampleKernels::stored16,
                                                          &CSampleKernels::stored32};
    const double tame[] = {1e3, -20, 0.3, -1e-3, 1e-6};
    const double wild[] = {-3e8, 4e6, -7e5, 123, -0.5};
    std::mt19937 random(6);
    for (std::size_t length = 2; length < 70; ++length) {
        const Line raw = Random(random, length);
        for (const auto width : widths) {
            std::vector<std::byte> stored(4 * length);
            (baselineKernels.*width).narrow(raw.data(), length, stored.data());
            ExpectSame([&](const CSampleKernels& set) {
                std::vector<std::byte> narrowed(stored.size());
                (set.*width).narrow(raw.data(), length, narrowed.data());
                return narrowed;
            });
            const auto expectSame = [&](auto apply) {
                ExpectSame([&](const CSampleKernels& set) {
                    Line result(length);
                    apply(set.*width, result.data());
                    return result;
                });
            };
            expectSame([&](const auto& k, auto* to) { k.widen(stored.data(), length, to); });
            expectSame([&](const auto& k, auto* to) { k.differences(stored.data(), length - 1, to); });
            for (const int degree : {0, 1, 2, 4}) {
                for (const double* c : {tame, wild})
                    expectSame([&](const auto& k, auto* to) { k.subtract[degree](stored.data(), length, 3, c, to); });
                if (degree == 0)
                    continue;
                ExpectSame([&](const CSampleKernels& set) {
                    std::vector<double> moments(10);
                    (set.*width).momentsInOrder[degree](stored.data(), length, moments.data());
                    (set.*width).momentsInAnyOrder[degree](stored.data(), length, moments.data() + 5);
                    return moments;
                });
            }
        }
    }
}

TEST(SampleKernelsTest, FittedValuesFarBeyondTheRawRangeTakeSamplesToItsEnds)
{
    for (const auto& [fitted, end] : {std::pair(1e12, lowestRaw), {-1e12, highestRaw}}) {
        const double coefficients[5] = {fitted};
        for (const std::size_t length : {2U, 69U}) {
            std::vector<std::byte> stored(length);
            for (const int degree : {0, 1, 2, 4}) {
                Line corrected(length);
                Kernels().stored8.subtract[degree](stored.data(), length, 3, coefficients, corrected.data());
                EXPECT_EQ(corrected, Line(length, end)) << degree;
            }
        }
    }
}

TEST(SampleKernelsTest, EveryWidthOfInstructionsGivesTheSameOfRealValues)
{
    std::mt19937 random(7);
    for (std::size_t length = 2; length < 200; ++length) {
        std::uniform_real_distribution<double> ends(-1, 1);
        for (const CSignalAxis axis :
             {CSignalAxis{-0.1, 0.7}, {2e-9, -1e-9}, {0, 0x1p-899}, {ends(random), ends(random)}}) {
            const Line raw = Random(random, length);
            ExpectSame([&](const CSampleKernels& set) {
                Line line(length);
                std::vector<double> real(length);
                set.toReal(raw.data(), length, axis, real.data());
                real[0] = std::nan("");
                real[1] *= 1.5;
                set.toRaw(real.data(), length, axis, line.data());
                return line;
            });
        }
    }
}

} // namespace
