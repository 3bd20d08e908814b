#include "tool/ToolTest.h"

namespace {

constexpr std::uint64_t scanGroups = 2;
constexpr std::uint64_t scanChannels = 3;
constexpr std::uint64_t scanLines = 256;
constexpr const char* correctTopography = "correct sample.oxd --group BackwardScan --channel Topography ";

// What is left of a sample in 16 bits, as scans are stored.
std::int32_t Stored(std::int32_t sample)
{
    return sample & ~((1 << 14) - 1);
}

} // namespace

using CorrectTest = ToolTest;

TEST_F(CorrectTest, RunsEachLineOfOneChannelThroughTheOperator)
{
    const struct
    {
        const char* name;
        int code;
    } operators[] = {{"mean", 1}, {"line", 2}, {"derive", 3}, {"parabola", 4}, {"polynomial", 5}};
    ResultsOf("make-sample sample.oxd");
    const std::string bytes = ReadBytes("sample.oxd");
    const auto before = Open("sample.oxd");
    for (const auto& [name, code] : operators) {
        EXPECT_EQ(ResultsOf(correctTopography + std::string("-o out.oxd --op ") + name), "");
        const auto after = Open("out.oxd");
        for (std::uint64_t i = 0; i < scanGroups * scanChannels * scanLines; ++i) {
            const std::uint64_t group = i / scanLines / scanChannels;
            const std::uint64_t channel = i / scanLines % scanChannels;
            const bool corrected = group == 1 && channel == 0;
            auto expected = LineRaw(before, group, channel, i % scanLines, corrected ? code : 0);
            for (std::int32_t& sample : expected)
                sample = Stored(sample);
            ASSERT_EQ(LineRaw(after, group, channel, i % scanLines), expected) << name << " " << group << channel;
        }
    }
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
}

TEST_F(CorrectTest, FindsChannelsByIndexAndByName)
{
    ResultsOf("make-sample sample.oxd");
    ResultsOf("correct sample.oxd --group ForwardScan --channel 1 --op line -o index.oxd");
    ResultsOf("correct sample.oxd --group ForwardScan --channel Deflection --op line -o name.oxd");
    EXPECT_EQ(ReadBytes("index.oxd"), ReadBytes("name.oxd"));
}

TEST_F(CorrectTest, LeavesLinesThatAreTooShort)
{
    const auto handle = Create("short.oxd");
    const std::int32_t samples[] = {100, 200, 400};
    SetChannelData_LineRaw(handle, CreateChannel(handle, 32, 3, 1), 0, 0, samples);
    Save(handle);
    const Outcome outcome = Run("correct short.oxd --group Group0 --channel 0 --op parabola -o out.oxd");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.diagnostics.find("1 line left as before, the first is line 0: too few"), std::string::npos);
    EXPECT_EQ(LineRaw(Open("out.oxd"), 0, 0, 0), (std::vector<std::int32_t>{100, 200, 400}));
}

TEST_F(CorrectTest, KeepsLinesHalfFilledAndDamagedLinesAsTheyAre)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=Scan\nGr0-Count=1\nGr0-Ch0=C\n"
             "[C]\nVersion=3\nPoints=4\nLines=3\nSaveBits=32\nLineDim0Points=2\nLineDim1Points=9\n",
             std::string("\4\0\0\0\14\0\0\0\0\0\0\0\0\0\0\0", 16) + std::string(32, '\0'), "ragged.oxd");
    const Outcome outcome = Run("correct ragged.oxd --group Scan --channel 0 --op mean -o out.oxd");
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_NE(outcome.diagnostics.find("the first is line 1: "), std::string::npos) << outcome.diagnostics;
    EXPECT_EQ(LineRaw(Open("out.oxd"), 0, 0, 0), (std::vector<std::int32_t>{-1, 1}));
}
