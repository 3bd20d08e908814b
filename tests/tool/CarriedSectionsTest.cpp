// Views, processors and unknown sections, which the library does not write, stay in files that the tool edits.
#include "tool/ToolTest.h"

namespace {

const std::string samples("\0\1\0\2", 4);
const std::string ofChannel = oneChannel + "Version=2\nPoints=2\nLines=1\nSaveBits=16\nDim0Min=0\nDim0Range=0\n"
                                           "Dim1Min=0\nDim1Range=0\nDim2Min=0\nDim2Range=1\n";
const std::string inDataSet = "[DataSet]\nInfoSetCount=1\nInfoSet0=Scan\n[DataSet\\Scan]\nLines=1\n";
// Blank lines, lines that say nothing, keys given twice and sections in two places stay what they are.
const std::string carried = "[SetView]\nViewCount=2\nView0=V\nView1=C2\n\n[v]\nChannel=0\nChannel=1\n no key\n"
                            "[Notes]\n\xC3\x84=\xC2\xB5\n[SETVIEW]\nView9=none\n[ProcessorSet]\nProcessorCount=1\n"
                            "Processor0=P\n[P]\nGUID={AB0B4062-81AF-464B-A7F7-75B11891ACF8}\nInstanceNo=3\n"
                            "[ProcessorSet-Slope:3]\nRangeMax=3 nm\n";

const std::vector<std::string> saving{"set in.oxd Scan/Lines 2 -o out.oxd", "set in.oxd Scan/Lines 2 --in-place",
                                      "correct in.oxd -g Scan -c 0 --op mean -o out.oxd"};

std::string HeaderOf(const std::string& file)
{
    const std::string bytes = ReadBytes(file);
    return bytes.substr(0, bytes.find("#!"));
}

} // namespace

using CarriedSectionsTest = ToolTest;

TEST_F(CarriedSectionsTest, StandInTheNewHeaderAsTheyStood)
{
    for (const std::string& command : saving) {
        WriteOxd(ofChannel + carried + inDataSet, samples);
        const std::string out = command.ends_with("in-place") ? "in.oxd" : "out.oxd";
        ResultsOf(command + " --strict");
        EXPECT_TRUE(HeaderOf(out).ends_with("\r\n" + WithCrLf(carried) + "\r\n")) << HeaderOf(out);
        const auto handle = Open(out);
        EXPECT_EQ(LineRaw(handle, 0, 0, 0).size(), 2U);
        CloseOxdFile(handle);
        std::filesystem::rename(out, "in.oxd");
        ResultsOf("set in.oxd Scan/Lines 3 -o out.oxd --strict");
        EXPECT_TRUE(HeaderOf("out.oxd").ends_with("\r\n" + WithCrLf(carried) + "\r\n")) << "again";
    }
}

TEST_F(CarriedSectionsTest, LeaveSamplesWhereTheyBelong)
{
    const std::string note = "[Notes]\n" + Lines(3000, "key#=value\n");
    const std::string bytes = ReadBytes("sample.oxd");
    const auto end = bytes.find("#!");
    WriteBytes("noted.oxd", std::string(bytes).insert(end, note));
    ResultsOf("set noted.oxd Scan/Lines 7 -o out.oxd");
    ResultsOf("set sample.oxd Scan/Lines 7 -o plain.oxd");
    const std::string plain = ReadBytes("plain.oxd");
    EXPECT_EQ(ReadBytes("out.oxd"), std::string(plain).insert(plain.find("\r\n#!"), "\r\n" + note));
    EXPECT_NE(ResultsOf("set noted.oxd Scan/Lines 7 --dry-run").find("\n-Lines=256\n+Lines=7\n"), std::string::npos);
}

TEST_F(CarriedSectionsTest, BecomeUtf8WithTheRestOfTheHeader)
{
    WriteOxd(ofChannel + "[Notes]\nUnit=\xB5m\n" + inDataSet, samples);
    ResultsOf(saving[0] + " --strict");
    EXPECT_NE(HeaderOf("out.oxd").find("[Notes]\r\nUnit=\xC2\xB5m\r\n"), std::string::npos);
}

TEST_F(CarriedSectionsTest, AreNoneThatWouldBecomeSomethingElse)
{
    for (const std::string section :
         {"[DataSet-Info]\n-- Junk --=-\n", "[DataSet-0:7]\nPoints=1\n", "[DataSet\\Lost]\na=b\n",
          "[DataSet-new]\nx=y\n", "[Spare]\nPoints=1\nLines=1\nSaveBits=8\n"}) {
        WriteOxd(ofChannel + inDataSet + section, samples);
        ExpectMessage(saving[0] + " --strict", 4, "oxd: in.oxd: a save drops 1 ");
        EXPECT_EQ(Run(saving[0]).exitCode, 0);
        EXPECT_EQ(HeaderOf("out.oxd").find(WithCrLf(section)), std::string::npos) << section;
    }
    WriteOxd(
        "[DataSet]\nVersion=1\nChannelCount=1\nFrameCount=1\nCh0-Fr0=C\nSetInfos=I\n[I]\n-- Scan --=-\nLines=1\n"
        "[C]\nVersion=2\nPoints=2\nLines=1\nSaveBits=16\nFrame=Scan\n[ProcessorSet]\nProcessorCount=1\nProcessor0=P\n"
        "[P]\nGUID=?\nInstanceNo=1\n",
        samples);
    ExpectMessage(saving[0], 0, "a save drops 1 unknown section: \"ProcessorSet\" [OXD603]\n");
    EXPECT_NE(HeaderOf("out.oxd").find("[P]\r\n"), std::string::npos);
    EXPECT_EQ(Run("validate out.oxd").exitCode, 0);
}

TEST_F(CarriedSectionsTest, AreRepeatedAsTheyWereCarried)
{
    WriteOxd(ofChannel + carried, samples);
    ResultsOf("correct in.oxd -g Scan -c 0 --op mean -o out.oxd");
    ResultsOf("replay out.oxd in.oxd");
    ResultsOf("correct out.oxd -g Scan -c 0 --op mean -o twice.oxd");
    ResultsOf("replay twice.oxd in.oxd");

    std::string old = ReadBytes("out.oxd"); // as it was made when nothing was carried
    const auto begin = old.find("[SetView]");
    old.erase(begin, old.find("\r\n#!") - begin);
    WriteBytes("old.oxd", old);
    ResultsOf("replay old.oxd in.oxd");
}
