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

    for (const char* const missing : {"Scan/rotation", "Scan/Time/Line", "Rotation", "/Scan/Rotation", "Scan/", "''"})
        ExpectFailure(std::string("get sample.oxd ") + missing, 1, "no information named");
    ExpectFailure("get sample.oxd Instrument/Scanner", 1, "\"Instrument/Scanner\" is a group");
    ExpectFailure("get sample.oxd Scan/Rotation --separator ''", 2, "--separator");
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

    ExpectFailure("set sample.oxd Scan/X-Pos 0 -o ./sample.oxd", 2, "./sample.oxd: ");
    ExpectFailure("set sample.oxd Scan/X-Position 0 -o other.oxd", 1, "no information named");
    ExpectFailure("set sample.oxd Scan 0 -o other.oxd", 1, "is a group");
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
    EXPECT_FALSE(std::filesystem::exists("other.oxd"));
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

TEST_F(MetaValueTest, RefusesWhatAFileWouldNotKeep)
{
    const struct
    {
        const char* arguments;
        int exitCode;
        const char* part;
    } cases[] = {
        {"Scan/Rotation ''", 2, "value"},
        {"Scan/Rotation '5 '", 2, "value"},
        {"Scan/Rotation '5\n6'", 2, "value"},
        {"Scan//Gain 5 --create", 2, "name"},
        {"Scan/a=b 5 --create", 2, "name"},
        {"Gain 5 --create", 2, "in a group"},
        {"Scan/Rotation/X 5 --create", 1, "no group"},
        {"Instrument/Scanner 5 --create", 1, "is a group"},
    };
    for (const auto& [arguments, exitCode, part] : cases)
        ExpectFailure(std::string("set sample.oxd -o out.oxd ") + arguments, exitCode, part);
    EXPECT_FALSE(std::filesystem::exists("out.oxd"));
}
