#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <tuple>

namespace {

using Json = nlohmann::json;

// A signal axis, and the samples of a line of one or more points on it.
struct Signal
{
    std::string min = "0";
    std::string range = "1";
    std::string bits = "16";
    std::string samples;
};

std::string Stored(std::int16_t sample)
{
    return {static_cast<char>(sample & 0xFF), static_cast<char>(sample >> 8)};
}

} // namespace

class DiffTest : public ToolTest
{
protected:
    ~DiffTest() override
    {
#ifdef OXD_SCHEMA_CHECK
        // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
        EXPECT_EQ(std::system((OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/diff.schema.json'" + m_documents).c_str()), 0);
#endif
    }

    // What the tool tells of two files in JSON, with the exit code.
    Json Compare(const std::string& arguments)
    {
        const Outcome outcome = Run("diff --json " + arguments);
        const std::string name = "document" + std::to_string(m_documents.size()) + ".json";
        WriteBytes(name, outcome.results);
        m_documents += " " + name;
        auto told = Json::parse(outcome.results);
        EXPECT_EQ(told["same"], told["differences"].empty());
        told["exitCode"] = outcome.exitCode;
        return told;
    }

    // Whether the two are the same with these options.
    bool AreSame(const Signal& a, const Signal& b, const std::string& options)
    {
        Write(a, "a.oxd");
        Write(b, "b.oxd");
        const auto told = Compare("a.oxd b.oxd --only samples " + options);
        EXPECT_EQ(told["exitCode"], told["same"] ? 0 : 1);
        return told["same"];
    }

private:
    void Write(const Signal& signal, const std::string& name) const
    {
        WriteOxd(oneChannel + "Version=2\nPoints=1\nLines=1\nDim2Min=" + signal.min + "\nDim2Range=" + signal.range +
                     "\nSaveBits=" + signal.bits + "\n",
                 signal.samples, name);
    }

    std::string m_documents; // names of files, each behind a blank
};

TEST_F(DiffTest, FindsNothingBetweenEqualFiles)
{
    EXPECT_EQ(ResultsOf("diff sample.oxd sample.oxd"), "");
    std::filesystem::copy_file("sample.oxd", "copy.oxd");
    const auto told = Compare("sample.oxd copy.oxd --steps 1");
    EXPECT_EQ(told["exitCode"], 0);
    EXPECT_EQ(told["compared"].size(), 6);
    EXPECT_EQ(told["tolerance"]["steps"], 1);
}

TEST_F(DiffTest, NamesEachDifferenceByItsPlace)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=5\nGr0-Name=Scan\nGr0-Count=2\nGr0-Ch0=C\nGr0-Ch1=D\nGr1-Name=Left\n"
             "Gr2-Name=P\nGr3-Name=Q\nGr4-Name=Old\n"
             "InfoSetCount=2\nInfoSet0=I\nInfoSet1=J\n"
             "[C]\nVersion=3\nPoints=3\nLines=2\nSaveBits=8\nDim0Unit=m\nDim2Name=Height\nDim2Unit=m\nDim2Min=0\n"
             "Dim2Range=255\n[D]\nVersion=2\nPoints=1\nLines=0\nDim2Name=Phase\n"
             "[DataSet\\I]\nGain=2\nNote=\x1B[31m\n[DataSet\\J]\nX=1\n",
             "\x01\x02\x03\x04\x05\x06", "a.oxd");
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=5\nGr0-Name=New\nGr1-Name=Scan\nGr1-Count=2\nGr1-Ch0=C\n"
             "Gr2-Name=Q\nGr3-Name=P\nGr4-Name=Renamed\n"
             "Gr1-ID=7\nInfoSetCount=1\nInfoSet0=I\n"
             "[C]\nVersion=3\nPoints=3\nLines=2\nSaveBits=16\nDim0Unit=V\nDim2Name=Height\nDim2Unit=m\nDim2Min=0\n"
             "Dim2Range=255\nLineDim0Points=2\nLineDim1Min=4\n"
             "[DataSet\\I]\nGain=1\nNote=a\nRate=9\n",
             std::string("\0\1\0\4\0\0\0\4\0\4\0\6", 12), "b.oxd");
    const Outcome outcome = Run("diff a.oxd b.oxd");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.results, R"(A: a.oxd
B: b.oxd
group 0 "Scan": logical id: 256 | 7
group 0 "Scan", channel 0 "Height": bits as stored: 8 | 16
group 0 "Scan", channel 0 "Height": unit of the point axis: "m" | "V"
group 0 "Scan", channel 0 "Height", line 1: min of the point axis: 0 | 4
group 0 "Scan", channel 0 "Height", line 0: valid samples: 3 | 2
group 0 "Scan", channel 0 "Height": value: differs in 2 samples, most in line 0, point 1: 129.492 | 131.484 m
  line 0, point 1: 129.492 | 131.484 m
  line 1, point 1: 132.48 | 131.484 m
group 0 "Scan", channel 1 "Phase": channel only in A
group 1 "Left": group only in A
group 3 "Q": position: 3 | 2
group 3 "Q": logical id: 259 | 257
group 4 "Old": name: "Old" | "Renamed"
group 4 "Old": logical id: 260 | 259
group 0 "New": group only in B
information J: group only in A
information I/Gain: value: "2" | "1"
information I/Note: value: "?[31m" | "a"
information I/Rate: item only in B: "9"
)");
    const auto differences = Compare("a.oxd b.oxd --show 1")["differences"];
    const auto samples = std::ranges::find_if(differences, [](const Json& one) { return one["what"] == "value"; });
    ASSERT_NE(samples, differences.end());
    EXPECT_EQ((*samples)["count"], 2);
    EXPECT_EQ((*samples)["shown"].size(), 1);
    EXPECT_EQ((*samples)["largest"]["rawA"], 2 << 22);
}

TEST_F(DiffTest, FindsWhatASaveLosesOrWritesAnew)
{
    DropSettings();
    const std::string sample = ReadBytes("sample.oxd");
    const auto write = [&](const std::string& before, const std::string& after) {
        WriteBytes("b.oxd", std::string(sample).replace(sample.find(before), before.size(), after));
    };
    struct
    {
        const char *before, *after, *told;
    } const edits[] = {
        {"\r\n#!", "\r\n[SetView]\r\nViewCount=1\r\nView0=V\r\n[V]\r\n#!", R"(section "SetView" only in B)"},
        {"\r\n#!", "\r\n[Vendor]\r\nx=y\r\n#!", R"(section "Vendor" only in B)"},
        {"\r\n[DataSet-0:0]\r\n", "\r\n[DataSet-0:0]\r\nx=y\r\n", R"(channel 0 "Topography": key "x" only in B)"},
        {"CurLine=255", "CurLine=100", R"(channel 0 "Topography": key "CurLine": "255" | "100")"},
        {"Frame=ForwardScan", "Frame=Other", R"(key "Frame": "ForwardScan" | "Other")"},
        {"SaveOrder=Intel", "SaveOrder=Motorola", R"(key "SaveOrder" only in B)"},
    };
    for (const auto& [before, after, told] : edits) {
        write(before, after);
        const Outcome outcome = Run("diff --trust sample.oxd b.oxd");
        EXPECT_EQ(outcome.exitCode, 1) << after;
        EXPECT_NE(outcome.results.find(told), std::string::npos) << outcome.results;
        EXPECT_EQ(Compare("--trust sample.oxd b.oxd")["differences"][0]["aspect"], "other");
        EXPECT_EQ(Run("diff --trust --ignore other sample.oxd b.oxd").results, "");
    }
    WriteBytes("b.oxd", sample + "left over");
    EXPECT_EQ(Compare("sample.oxd b.oxd --only other")["differences"][0]["b"], 9);

    write("\r\n#!", "\r\n[Vendor]\r\nx=y\r\nz=1\r\n#!");
    std::filesystem::rename("b.oxd", "a.oxd");
    write("\r\n#!", "\r\n[Vendor]\r\nx=z\r\nz=1\r\n#!");
    EXPECT_EQ(Run("diff a.oxd b.oxd").results, "A: a.oxd\nB: b.oxd\nkey \"x\" in section \"Vendor\": \"y\" | \"z\"\n");
}

TEST_F(DiffTest, ComparesOnlyWhatItIsAskedFor)
{
    ResultsOf("set sample.oxd Scan/Lines 512 -o noted.oxd");
    ResultsOf("correct sample.oxd --group ForwardScan --channel 0 --op mean --no-provenance -o flat.oxd");
    for (const auto& [options, exitCode] : {std::pair("noted.oxd", 1),
                                            {"noted.oxd --only samples,axes,structure,bits", 0},
                                            {"noted.oxd --ignore information", 0},
                                            {"--only information noted.oxd", 1},
                                            {"flat.oxd --only information", 0},
                                            {"flat.oxd --ignore samples --ignore axes", 0},
                                            {"flat.oxd --only samples", 1},
                                            {"flat.oxd --only colours", 2},
                                            {"flat.oxd --only samples --ignore axes", 2},
                                            {"flat.oxd --absolute -1", 2},
                                            {"flat.oxd --relative nan", 2},
                                            {"flat.oxd --steps 1.5", 2},
                                            {"flat.oxd --steps -1", 2},
                                            {"missing.oxd", 3}})
        EXPECT_EQ(Run(std::string("diff sample.oxd --quiet ") + options).exitCode, exitCode) << options;
}

TEST_F(DiffTest, ToleratesWhatItIsAskedToInAxesOfAnySize)
{
    // Values at half of the range that differ by 3 of 65536 parts of it, which is 9.13e-5 of the larger one.
    for (const auto& [range, less, more] : {std::tuple("1e-300", "4.5e-305", "4.6e-305"),
                                            {"1e-20", "4.5e-25", "4.6e-25"},
                                            {"1e20", "4.5e15", "4.6e15"},
                                            {"1.7e308", "7.7e303", "7.8e303"}}) {
        const Signal a{.range = range, .samples = Stored(100)}, b{.range = range, .samples = Stored(103)};
        const std::pair<std::string, bool> cases[] = {
            {"", false},
            {"--steps 2", false},
            {"--steps 3", true},
            {"--relative 9.1e-5", false},
            {"--relative 9.2e-5", true},
            {std::string("--absolute ") + less, false},
            {std::string("--absolute ") + more, true},
            {std::string("--steps 1 --relative 9.2e-5 --absolute ") + less, true},
        };
        for (const auto& [options, same] : cases)
            EXPECT_EQ(AreSame(a, b, options), same) << range << options;
    }
    // The difference is beyond what a number can hold, and so is 1.5 times the larger one, but twice that is more.
    const Signal lowestOfAll{"-1.7e308", "1.7e308", "16", Stored(-32768)};
    const Signal highestOfAll{"1e308", "7e307", "16", Stored(32767)};
    EXPECT_FALSE(AreSame(lowestOfAll, highestOfAll, "--relative 1.5"));
    EXPECT_TRUE(AreSame(lowestOfAll, highestOfAll, "--relative 2"));
}

TEST_F(DiffTest, CountsStepsOfTheCoarserQuantisation)
{
    // A step is a 256th of the range in A, and twice as much in B.
    const Signal b{.range = "2", .bits = "8", .samples = std::string(1, '\xC0')};
    for (const auto& [sample, steps] : {std::pair('\x00', 0), {'\x01', 1}, {'\x02', 1}, {'\x03', 2}, {'\xFC', 2}}) {
        const Signal a{.bits = "8", .samples = std::string(1, sample)};
        EXPECT_TRUE(AreSame(a, b, "--steps " + std::to_string(steps))) << steps;
        EXPECT_TRUE(steps == 0 || !AreSame(a, b, "--steps " + std::to_string(steps - 1))) << steps;
    }
    const Signal fine{.bits = "16", .samples = Stored(0x0100)}, coarse{.bits = "8", .samples = std::string(1, '\0')};
    EXPECT_TRUE(AreSame(fine, coarse, "--steps 1"));
    EXPECT_FALSE(AreSame(fine, {.bits = "16", .samples = Stored(0)}, "--steps 255"));
}

TEST_F(DiffTest, TellsSamplesApartWhoseValuesAreEqualOrNoNumbers)
{
    const Signal flat{.range = "0", .samples = Stored(1)}, other{.range = "0", .samples = Stored(2)};
    EXPECT_FALSE(AreSame(flat, other, ""));
    EXPECT_NE(Run("diff a.oxd b.oxd").results.find("0 | 0 (raw samples 16384 | 32768)\n"), std::string::npos);
    EXPECT_TRUE(AreSame(flat, other, "--absolute 1e-300"));

    const Signal huge{.min = "-1.7976931348623157e308", .range = "0", .samples = Stored(1)};
    EXPECT_FALSE(AreSame(huge, {.samples = Stored(1)}, "--absolute 1e307"));

    const Signal nan{.min = "nan", .samples = Stored(1)};
    EXPECT_FALSE(AreSame(nan, nan, "--relative 1 --steps 100000"));
    EXPECT_TRUE(AreSame(nan, nan, "--nan-equal"));
    EXPECT_FALSE(AreSame(nan, {.samples = Stored(1)}, "--nan-equal --absolute 1e308 --steps 100000"));
}

TEST_F(DiffTest, SaysWhatCannotBeCompared)
{
    const std::string header = oneChannel + "Version=3\nPoints=2\nLines=2\nSaveBits=8\n";
    WriteOxd(header, "\1\2\3\4", "whole.oxd");
    WriteOxd(header, "\1\2\3", "cut.oxd");
    WriteOxd(header + "LineDim0Points=9\n", "\1\2\3\5", "claims.oxd");
    const Outcome outcome = ExpectMessage("diff whole.oxd claims.oxd", 4,
                                          "oxd: claims.oxd: group 0, channel 0: 1 line cannot be read, the first");
    EXPECT_NE(outcome.results.find("line 1, point 1"), std::string::npos) << outcome.results;
    EXPECT_EQ(Compare("whole.oxd claims.oxd")["problems"].size(), 1);
}

TEST_F(DiffTest, FollowsATreeDeeperThanCalls)
{
    for (const char* const name : {"a.oxd", "b.oxd"}) {
        const auto handle = Create(name);
        std::uint64_t node = root;
        for (int level = 0; level < 1500; ++level)
            node = AddMetaInfoItemGroup(handle, node, "G");
        AddMetaInfoItem(handle, node, "Name", name);
        Save(handle);
    }
    const auto told = Compare("a.oxd b.oxd");
    ASSERT_EQ(told["differences"].size(), 1);
    EXPECT_EQ(told["differences"][0]["path"].size(), 1501);
    EXPECT_EQ(told["differences"][0]["b"], "b.oxd");
}
