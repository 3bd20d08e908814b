#include "tool/ToolTest.h"

#include <tuple>

using CorrectTest = ToolTest;

TEST_F(CorrectTest, RunsEachLineOfOneChannelThroughTheOperator)
{
    const std::string bytes = ReadBytes("sample.oxd");
    const auto before = Open("sample.oxd");
    for (const auto& [options, code] : {std::pair("--channel 1 --op mean", 1),
                                        {"--channel Deflection --op line", 2},
                                        {"--channel 1 --op derive", 3},
                                        {"--channel Deflection --op parabola", 4},
                                        {"--channel 1 --op polynomial", 5}}) {
        EXPECT_EQ(ResultsOf(std::string("correct sample.oxd -o out.oxd --group BackwardScan ") + options), "");
        const auto after = Open("out.oxd");
        for (std::uint64_t i = 0; i < 1536; ++i) { // 2 groups of 3 channels of 256 lines
            const std::uint64_t group = i / 256 / 3;
            const std::uint64_t channel = i / 256 % 3;
            auto expected = LineRaw(before, group, channel, i % 256, group == 1 && channel == 1 ? code : 0);
            for (std::int32_t& sample : expected)
                sample &= ~((1 << 14) - 1); // what is left in 16 bits, as scans are stored
            ASSERT_EQ(LineRaw(after, group, channel, i % 256), expected) << options << " " << group << channel;
        }
    }
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
}

TEST_F(CorrectTest, LeavesLinesThatAreTooShortOrDamaged)
{
    WriteOxd(oneChannel + "Version=3\nPoints=4\nLines=3\nSaveBits=32\nLineDim0Points=2\nLineDim1Points=9\n",
             std::string("\4\0\0\0\14\0\0\0\0\0\0\0\0\0\0\0", 16) + std::string(32, '\0'), "ragged.oxd");
    const std::string correct = "correct ragged.oxd --group Scan --channel 0 -o out.oxd --op ";
    for (const auto& [name, told, firstLine] :
         {std::tuple("mean", "1 line left as before, the first is line 1: ", std::vector{-1, 1}),
          {"parabola", "1 line left as before, the first is line 0: too few", {1, 3}}}) {
        ExpectMessage(correct + name, 4, told);
        EXPECT_EQ(LineRaw(Open("out.oxd"), 0, 0, 0), firstLine);
    }

    const auto handle = Create("short.oxd");
    CreateChannel(handle, 32, 3, 1);
    Save(handle);
    EXPECT_EQ(Run("correct short.oxd --group Group0 --channel 0 --op parabola -o out.oxd").exitCode, 0);
}
