// What a save loses is said before it happens, and --strict does not let it happen.
#include "tool/ToolTest.h"

namespace {

constexpr const char* header = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=Scan\nGr0-Count=1\nGr0-Ch0=C\nSetInfos="
                               "I\n[I]\n-- Scan --=--------\nLines=1\n"
                               "[C]\nVersion=2\nPoints=2\nLines=1\nDim2Range=1\nSaveBits=";
constexpr const char* lossy = "16\nDim0Min=0\nDim1Min=0\nDim2Min=0\nOperator=Jane\nDim0Range=1.23456789e-07\nDim1Range="
                              "2.3456789\n[SetView]\nViewCount=2"
                              "\nView0=V\nView1=W\n[V]\n[W]\n[Calibration]\nX=1\n[Notes]\nY=2\n";

const std::vector<std::string> losing{"set in.oxd Scan/Lines 2", "correct in.oxd -g Scan -c 0 --op mean"};

} // namespace

using SaveLossTest = ToolTest;

TEST_F(SaveLossTest, IsSaidInALineForEachKind)
{
    WriteOxd(std::string(header) + lossy, std::string("\0\1\0\2", 4));
    for (const std::string& command : losing) {
        const Outcome outcome = Run(command + " -o out.oxd");
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.diagnostics, "oxd: in.oxd: a save drops 1 unknown key: \"Operator\" [OXD604]\n"
                                       "oxd: in.oxd: a save rounds 2 numbers: \"Dim0Range\", \"Dim1Range\" [OXD607]\n");
        std::filesystem::rename("out.oxd", "saved.oxd");
        ResultsOf("set saved.oxd Scan/Lines 3 -o out.oxd --strict");
    }
}

TEST_F(SaveLossTest, IsRefusedWhenItMayNotBe)
{
    WriteOxd(std::string(header) + lossy, std::string("\0\1\0\2", 4));
    const std::string bytes = ReadBytes("in.oxd");
    WriteBytes("old.oxd", "old");
    for (const std::string& command : losing) {
        for (const std::string destination : {" -o old.oxd", " -o new.oxd", " --dry-run"}) {
            const Outcome outcome = ExpectMessage(command + destination + " --strict", 4, "oxd: in.oxd: not saved");
            EXPECT_NE(outcome.diagnostics.find("[OXD604]"), std::string::npos);
            EXPECT_EQ(outcome.results, "");
        }
    }
    EXPECT_EQ(Run(losing[0] + " --in-place --strict").exitCode, 4);
    EXPECT_EQ(ReadBytes("in.oxd"), bytes);
    EXPECT_EQ(ReadBytes("old.oxd"), "old");
    EXPECT_FALSE(std::filesystem::exists("new.oxd"));
}

TEST_F(SaveLossTest, IsNoneWhereAFileIsOnlyWrittenOtherwise)
{
    WriteOxd(std::string(header) + "8\n", std::string("\1\2", 2));
    for (const std::string& command : losing)
        ExpectMessage(command + " -o out.oxd --strict", 0,
                      "oxd: in.oxd: a save writes 16 bits instead of 8 for 1 channel: \"C\" [OXD608]\n");
    ResultsOf("set sample.oxd Scan/Lines 2 -o out.oxd --strict");
}

TEST_F(SaveLossTest, IsCountedAsFarAsItIsListed)
{
    WriteOxd(std::string(header) + "16\n" + Lines(1200, "Unknown#=1\n"), std::string(4, '\0'));
    ExpectMessage(losing[0] + " -o out.oxd", 0,
                  "drops more than 1000 unknown keys: \"Unknown0\", \"Unknown1\", \"Unknown2\" and others [OXD604]\n");
}
