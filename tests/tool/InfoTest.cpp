#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <iterator>
#include <sstream>

using InfoTest = ToolTest;

namespace {

// One group of slots: a channel of 4 x 3 whose lines claim 9, have 2 and have no samples, an empty slot, and a channel
// without a line. A width that is no number makes the library log to the standard output of its process.
constexpr const char* raggedHeader = "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Name=Rag\x1B[31mged\nGr0-Count=3\n"
                                     "InfoSetCount=1\nInfoSet0=A\n[DataSet\\A]\nSubSectionCount=1\nSubSection0=B\n"
                                     "Thirteen=\x1B[32m\xC2\x9B\n[DataSet]\n"
                                     "Gr0-Ch0=C0\nGr0-Ch2=C2\n"
                                     "[C0]\nVersion=3\nPoints=4\nLines=3\nSaveBits=8\n"
                                     "Dim2Name=Height\nDim2Unit=m\nDim2Range=1\nDim2Min=0\n"
                                     "LineDim0Points=9\nLineDim1Points=2\nLineDim2Points=0\n"
                                     "[C2]\nVersion=2\nPoints=5\nLines=0\n[SetView]\nViewWidth=wide\n";
constexpr std::string_view raggedSamples = "\x01\x02\x03\x04\x80\x7F\x01\x02";

} // namespace

// After a change that is meant to show, look at what the tool says now, and if it is right, make it the approved text:
// oxd make-sample sample.oxd; oxd info sample.oxd > sample.txt; oxd info --json sample.oxd > sample.json
TEST_F(InfoTest, OfTheSampleIsAsApproved)
{
    EXPECT_EQ(ResultsOf("info sample.oxd"), ReadBytes(OXD_APPROVED "/sample.txt"));
    EXPECT_EQ(ResultsOf("info --json sample.oxd"), ReadBytes(OXD_APPROVED "/sample.json"));
}

TEST_F(InfoTest, ShowsWhatCanBeReadAndLetsNoFileCommandTheTerminal)
{
    WriteOxd(raggedHeader, raggedSamples, "ragged.oxd");
    const Outcome table =
        ExpectMessage("info ragged.oxd", 4, "group 0, channel 0: 1 line cannot be read, the first is line 0");
    for (const char* const part :
         {"4 x 3, 2 valid", "1        (empty)", "Rag?[31mged", "\nInformation\n  A\n    B\n    Thirteen  ?[32m?\n"})
        EXPECT_NE(table.results.find(part), std::string::npos) << table.results;

    ExpectMessage("info --no-values ragged.oxd", 4, "[OXD407]");
    EXPECT_EQ(Run("validate ragged.oxd").exitCode, 1);

    const auto told = nlohmann::json::parse(Run("info --json ragged.oxd").results);
    const auto channels = told["groups"][0]["channels"];
    EXPECT_EQ(channels[0]["validSamples"], 2);
    EXPECT_EQ(channels[0]["unreadableLines"], 1);
    EXPECT_EQ(channels[0]["values"]["min"], 0); // the byte 80
    EXPECT_TRUE(channels[1].is_null() && channels[2]["significantBits"].is_null() && channels[2]["values"].is_null());
    EXPECT_EQ(told["info"][0]["items"][0]["value"], "\x1B[32m\xC2\x9B");
}

TEST_F(InfoTest, ShowsAndFindsNamesOfAnyLength)
{
    for (const std::size_t length : {1U, 255U, 256U, 1023U, 1024U, 5000U}) {
        const std::string name(length, 'n');
        WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=C\nGr0-Name=" + name +
                     "\n[C]\nVersion=3\nPoints=1\nLines=1\nSaveBits=8\n"
                     "Dim0Min=0\nDim1Min=0\nDim2Min=0\nDim0Range=1\nDim1Range=1\nDim2Range=1\n",
                 "\x01", "long.oxd");
        const auto told = nlohmann::json::parse(ResultsOf("info --json long.oxd"));
        EXPECT_EQ(told["groups"][0]["name"], name) << length;
        ResultsOf("export long.oxd --channel 0 -o out.csv --group " + name);
    }
}

TEST_F(InfoTest, ShowsTheNamesThatOtherCommandsFind)
{
    std::string bytes = ReadBytes("sample.oxd");
    for (const std::string_view name : {"Gr0-Name=ForwardScan", "Dim2Name=Topography"})
        bytes[bytes.find(name) + 13] = '\0';
    WriteBytes("names.oxd", bytes);
    const auto told = nlohmann::json::parse(ResultsOf("info --json names.oxd"))["groups"][0];
    EXPECT_EQ(told["name"], "Forw");
    ResultsOf("export names.oxd -g Forw -o out.raw -c " + told["channels"][0]["name"].get<std::string>());
}

TEST_F(InfoTest, ShowsEmptySlotsInARowAsOne)
{
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1000000\nGr0-Ch1=C\n[C]\nVersion=1\n", {}, "slots.oxd");
    const std::string table = ResultsOf("info slots.oxd");
    for (const char* const row : {"\n  0          (empty)\n", "\n  2..999999  (empty)\n"})
        EXPECT_NE(table.find(row), std::string::npos) << table.substr(0, 1000);
    EXPECT_LT(table.size(), 1000U);
}

TEST_F(InfoTest, CountsTheBitsThatHoldEverySample)
{
    for (const auto& [sample, bits] : {std::pair(0, 8),
                                       {-536870912, 8},
                                       {1 << 22, 8},
                                       {1 << 21, 16},
                                       {-(1 << 14), 16},
                                       {1 << 13, 32},
                                       {1, 32},
                                       {-1, 32}}) {
        const auto handle = Create("one.oxd");
        SetChannelData_PixelRaw(handle, CreateChannel(handle, 32, 2, 2), 0, 1, 1, sample);
        Save(handle);
        const auto info = nlohmann::json::parse(ResultsOf("info --json one.oxd"));
        EXPECT_EQ(info["groups"][0]["channels"][0]["significantBits"], bits) << sample;
    }
}

TEST_F(InfoTest, CutsATreeThatIsTooDeep)
{
    const auto handle = Create("deep.oxd");
    std::uint64_t node = root;
    for (int level = 0; level < 1500; ++level)
        node = AddMetaInfoItemGroup(handle, node, "G");
    Save(handle);

    const Outcome table = ExpectMessage("info deep.oxd", 0, "information below level 200 is not shown");
    EXPECT_NE(table.results.find("G (what is inside is not shown)\n"), std::string::npos);

    auto group = nlohmann::json::parse(Run("info --json deep.oxd").results)["info"][0];
    for (int level = 1; level < 200; ++level)
        group = nlohmann::json(group.at("groups").at(0));
    EXPECT_EQ(group["cut"], true);
    EXPECT_TRUE(group["groups"].empty());

    const auto shallow = Create("shallow.oxd");
    node = root;
    for (int level = 0; level < 200; ++level)
        node = AddMetaInfoItemGroup(shallow, node, "G");
    Save(shallow);
    EXPECT_EQ(Run("info shallow.oxd").diagnostics, "") << "nothing is inside the last of them";
}

TEST_F(InfoTest, TakesUnitsThatSuitTheNumbersInTablesOnly)
{
    struct
    {
        const char* unit;
        double min, range;
        const char* shown;
    } const axes[] = {
        {"m", -6.7e-9, 5.3e-9, "-6.7 .. -1.4 nm"}, {"m", 0, 5e-6, "0 .. 5 \xC2\xB5m"},
        {"Hz", 1e5, -2e5, "100 .. -100 kHz"},      {"V", 0, 0, "0 .. 0 V"},
        {"V", 0, 1e-20, "0 .. 0.01 aV"},           {"A", 0, 1e20, "0 .. 1e+11 GA"},
        {"nm", 0, 1500, "0 .. 1500 nm"}, // has a prefix
        {"m^2", 0, 1e-12, "0 .. 1e-12 m^2"},       {"", 0, 1e-5, "0 .. 1e-05"},
    };
    const auto handle = Create("axes.oxd");
    CreateGroup(handle, 32);
    SetChannelCount(handle, 0, std::size(axes));
    for (std::uint64_t slot = 0; const auto& axis : axes) {
        SetChannelXYDimension(handle, 0, slot, 1, 1);
        SetChannelData_PointAxisName(handle, 0, slot, "X");
        SetChannelData_PointAxisUnit(handle, 0, slot, axis.unit);
        SetChannelData_PointAxisMin(handle, 0, slot, axis.min);
        SetChannelData_PointAxisRange(handle, 0, slot++, axis.range);
    }
    Save(handle);
    const std::string table = ResultsOf("info axes.oxd");
    const auto told = nlohmann::json::parse(ResultsOf("info --json axes.oxd"));
    for (std::size_t slot = 0; const auto& axis : axes) {
        EXPECT_NE(table.find(std::string("  X: ") + axis.shown + " "), std::string::npos) << table;
        EXPECT_EQ(told["groups"][0]["channels"][slot]["pointAxis"]["unit"], axis.unit);
        EXPECT_EQ(told["groups"][0]["channels"][slot++]["pointAxis"]["range"], axis.range);
    }
}

TEST_F(InfoTest, OfSeveralFilesGoesOnAfterOneThatFails)
{
    WriteOxd(raggedHeader, raggedSamples, "ragged.oxd");
    WriteBytes("foreign.oxd", "");
    const std::string files = " sample.oxd missing.oxd ragged.oxd foreign.oxd sample.oxd";
    const Outcome tables = ExpectMessage("info" + files, 4, "oxd: missing.oxd: No such file");
    const std::string sample = ResultsOf("info sample.oxd");
    EXPECT_EQ(tables.results, sample + "\n" + Run("info ragged.oxd").results + "\n" + sample);
    EXPECT_NE(tables.diagnostics.find("oxd: foreign.oxd: not an .oxd file"), std::string::npos);

    std::istringstream lines(ExpectMessage("info --jsonl" + files, 4, "oxd: missing.oxd: No such file").results);
    std::vector<nlohmann::json> documents;
    for (std::string line; std::getline(lines, line);)
        documents.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(documents.size(), 5);
    EXPECT_EQ(documents[0], nlohmann::json::parse(ResultsOf("info --json sample.oxd")));
    EXPECT_EQ(documents[1], (nlohmann::json{{"file", "missing.oxd"}, {"error", "No such file or directory"}}));
    EXPECT_EQ(documents[2], nlohmann::json::parse(Run("info --json ragged.oxd").results));
    EXPECT_EQ(documents[3]["error"], "not an .oxd file, it has no header");
    EXPECT_EQ(Run("info missing.oxd sample.oxd").exitCode, 3);
}
