#include "tool/ToolTest.h"

using MetaValueTest = ToolTest;

TEST_F(MetaValueTest, IsFoundByItsPath)
{
    EXPECT_EQ(ResultsOf("get sample.oxd 'Instrument/Scanner/Calibration/XY angle'"), "90.2 \xC2\xB0\n");
    EXPECT_EQ(ResultsOf(R"(get sample.oxd 'Instrument\Scanner\Type' --separator '\')"), "Tube\n");
    EXPECT_EQ(ResultsOf("get sample.oxd 'Scan::Time/Line' --separator ::"), "0.5 s\n");
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
