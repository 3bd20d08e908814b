#include "tool/ToolTest.h"

class MetaValueTest : public ToolTest
{
protected:
    MetaValueTest() { ResultsOf("make-sample sample.oxd"); }

    void ExpectValue(const std::string& where, const std::string& value) const
    {
        EXPECT_EQ(ResultsOf("get " + where), value + "\n") << where;
    }
};

TEST_F(MetaValueTest, IsFoundByItsPath)
{
    ExpectValue("sample.oxd Scan/Rotation", "0 \xC2\xB0");
    ExpectValue("sample.oxd 'Instrument/Scanner/Calibration/XY angle'", "90.2 \xC2\xB0");
    ExpectValue(R"(sample.oxd 'Instrument\Scanner\Type' --separator '\')", "Tube");
    ExpectValue("sample.oxd 'Scan::Time/Line' --separator ::", "0.5 s");
}

TEST_F(MetaValueTest, ChangesInAnotherFileOnly)
{
    const std::string bytes = ReadBytes("sample.oxd");
    EXPECT_EQ(ResultsOf("set sample.oxd Scan/X-Pos -5e-6 -o out.oxd"), "");
    ExpectValue("out.oxd Scan/X-Pos", "-5e-6");
    EXPECT_EQ(LineRaw(Open("out.oxd"), 0, 0, 100), LineRaw(Open("sample.oxd"), 0, 0, 100));
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
        ExpectValue("out.oxd " + path, "a = b");
        ExpectValue("out.oxd Scan/Lines", "256");
    }
}
