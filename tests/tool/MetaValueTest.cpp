#include "tool/ToolTest.h"

using MetaValueTest = ToolTest;

TEST_F(MetaValueTest, IsFoundByItsPath)
{
    EXPECT_EQ(ResultsOf("get sample.oxd 'Instrument/Scanner/Calibration/XY angle'"), "90.2 \xC2\xB0\n");
    EXPECT_EQ(ResultsOf(R"(get sample.oxd 'Instrument\Scanner\Type' --separator '\')"), "Tube\n");
    EXPECT_EQ(ResultsOf("get sample.oxd 'Scan::Time/Line' --separator ::"), "0.5 s\n");

    ResultsOf("set sample.oxd '[A,B]/[C]' 1 --create -o out.oxd");
    EXPECT_EQ(ResultsOf("get out.oxd '[A,B]/[C]'"), "1\n");
}

TEST_F(MetaValueTest, IsPrintedForEachFileThatHasIt)
{
    ResultsOf("set sample.oxd Scan/Comment 'a \\ b' --create -o other.oxd");
    EXPECT_EQ(ResultsOf("get --path Scan/Comment other.oxd"), "a \\ b\n");
    EXPECT_EQ(ResultsOf("get other.oxd sample.oxd -p Scan/Lines"), "other.oxd: 256\nsample.oxd: 256\n");

    const std::string ofAll = "get --path Scan/Comment sample.oxd other.oxd ";
    const Outcome some = ExpectMessage(ofAll, 1, "oxd: sample.oxd: no information named \"Scan/Comment\"\n");
    EXPECT_EQ(some.results, "other.oxd: a \\ b\n");
    EXPECT_EQ(Run(ofAll + "missing.oxd sample.oxd").exitCode, 3);
    EXPECT_EQ(Run(ofAll + "--jsonl").results,
              "{\"file\":\"sample.oxd\",\"error\":\"no information named \\\"Scan/Comment\\\"\"}\n"
              "{\"file\":\"other.oxd\",\"path\":\"Scan/Comment\",\"value\":\"a \\\\ b\"}\n");
}

TEST_F(MetaValueTest, ChangesInAnotherFileOnly)
{
    const std::string bytes = ReadBytes("sample.oxd");
    EXPECT_EQ(ResultsOf("set sample.oxd Scan/X-Pos -5e-6 -o out.oxd"), "");
    std::string changed = ReadBytes("out.oxd");
    changed.replace(changed.find("X-Pos=-5e-6"), 11, "X-Pos=12.4 \xC2\xB5m");
    EXPECT_EQ(changed, bytes);
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
}

TEST_F(MetaValueTest, IsKeptWithCharactersOfAnyLength)
{
    for (const std::string value : {"5 \xC2\xB5m", "3 \xE2\x84\xA6", "\xF0\x9F\x94\xAC 7"}) {
        ResultsOf("set sample.oxd Scan/X-Pos '" + value + "' -o out.oxd");
        EXPECT_EQ(ResultsOf("get out.oxd Scan/X-Pos"), value + "\n");
    }
#ifndef _WIN32 // where arguments are converted before the tool sees them
    for (const std::string value : {"5 \xB5m", "5 \xC2", "5 \xE2\x84", "\xED\xA0\x80", "\xC0\xAF"})
        ExpectMessage("set sample.oxd Scan/X-Pos '" + value + "' -o out.oxd", 2, "value");
#endif
}

TEST_F(MetaValueTest, CreatesWhatIsMissing)
{
    for (const std::string path :
         {"Scan/X-Pos", "Scan/Comment", "Scan/Head/Gain", "Lab/Room/Number", "Instrument/Scanner/Head/Gain"}) {
        ResultsOf("set sample.oxd " + path + " 'a = b' --create -o out.oxd");
        EXPECT_EQ(ResultsOf("get out.oxd " + path), "a = b\n") << path;
        EXPECT_EQ(ResultsOf("get out.oxd Scan/Lines"), "256\n") << path;
    }
    for (const std::string clash : {"Scan/rotation", "instrument/Gain", "Instrument/SubSection0"})
        ExpectMessage("set sample.oxd " + clash + " 5 --create -o out.oxd", 2, "another name or value");
}
