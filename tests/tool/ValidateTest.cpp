// What is found in files: by oxd validate, and by the commands that read them.
#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <regex>
#include <sstream>

class ValidateTest : public ToolTest
{
protected:
    ValidateTest() { DropSettings(); }

    using json = nlohmann::json;

    // A copy of the sample in which the first `before` is `after`.
    static void Damage(const std::string& before, const std::string& after, const std::string& file,
                       const std::string& behind = "")
    {
        std::string bytes = ReadBytes("sample.oxd");
        const auto place = bytes.find(before, bytes.find(behind));
        ASSERT_NE(place, std::string::npos);
        WriteBytes(file, bytes.replace(place, before.size(), after));
    }

    // Every channel behind the damaged one gets samples of others.
    static void DamageSize(const std::string& file) { Damage("Points=256", "Points=2S6", file, "[DataSet-0:0]"); }

    static std::vector<json> Lines(const std::string& text)
    {
        std::vector<json> documents;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
            documents.push_back(json::parse(line));
        return documents;
    }
};

TEST_F(ValidateTest, NamesThePlaceOfEachFinding)
{
    EXPECT_EQ(ResultsOf("validate sample.oxd"), "sample.oxd: 0 errors, 0 warnings, 0 notes\n");
    ResultsOf("make-sample whole.oxd");
    EXPECT_NE(ResultsOf("validate --strict whole.oxd").find("whole.oxd: 0 errors, 0 warnings, 11 notes\n"),
              std::string::npos);
    DamageSize("size.oxd");
    const std::string text = Run("validate size.oxd").results;
    EXPECT_TRUE(std::regex_search(text, std::regex(R"(size\.oxd:\d+: error: .*"2S6".* \[OXD205\]\n)"))) << text;
    EXPECT_TRUE(std::regex_search(text, std::regex(R"(size\.oxd: byte \d+: error: 131072 bytes .* \[OXD404\]\n)")))
        << text;

    const auto report = json::parse(Run("validate --json size.oxd").results);
    const std::string bytes = ReadBytes("size.oxd");
    for (const json& finding : report["findings"]) {
        const bool isSize = finding["rule"] == "OXD205";
        EXPECT_EQ(bytes.compare(finding["offset"], 10, "Points=2S6") == 0, isSize) << finding;
    }
    EXPECT_EQ(report["channels"][0]["certain"], false);
    EXPECT_EQ(report["channels"][1]["name"], "Deflection");
}

TEST_F(ValidateTest, EndsWithTheCodeOfTheWorstFile)
{
    DamageSize("size.oxd");
    Damage("CurLine=", "Kurline=", "warned.oxd");
    WriteBytes("foreign.oxd", "no header");
    WriteBytes("short.oxd", ReadBytes("sample.oxd").substr(0, 20000));
    struct
    {
        const char* arguments;
        int exitCode;
    } const cases[] = {
        {"sample.oxd", 0},          {"warned.oxd", 0},           {"--strict sample.oxd", 0},
        {"--strict warned.oxd", 1}, {"size.oxd sample.oxd", 1},  {"foreign.oxd", 1},
        {"short.oxd", 1},           {"missing.oxd size.oxd", 3}, {".", 3},
    };
    for (const auto& [arguments, exitCode] : cases)
        EXPECT_EQ(Run("validate " + std::string(arguments)).exitCode, exitCode) << arguments;
    const auto documents = Lines(Run("validate --jsonl missing.oxd short.oxd sample.oxd foreign.oxd").results);
    ASSERT_EQ(documents.size(), 4);
    EXPECT_EQ(documents[3]["findings"][0]["offset"], 0);
    EXPECT_EQ(documents[0]["error"], "No such file or directory");
    EXPECT_EQ(documents[1]["opens"], false);
    EXPECT_EQ(documents[2]["findings"], json::array());
    ExpectFailure("validate --json sample.oxd size.oxd", 2, "--json");
    ExpectFailure("validate --json --sarif sample.oxd", 2, "--sarif");
}

#ifdef OXD_SCHEMA_CHECK
TEST_F(ValidateTest, ReportsFitTheirSchema)
{
    DamageSize("size.oxd");
    WriteBytes("foreign.oxd", "no header");
    WriteBytes("latin.oxd", "[DataSet]\nGroupCount=1\nGr0-Name=\xB5\n[A]\n=\nx\n#!");
    std::string files;
    for (std::size_t n = 0;
         const json& document : Lines(Run("validate --jsonl size.oxd foreign.oxd latin.oxd missing.oxd").results)) {
        const std::string file = std::to_string(n++) + ".json";
        WriteBytes(file, document.dump());
        files += " " + file;
    }
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
    EXPECT_EQ(std::system((OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/validate.schema.json'" + files).c_str()), 0);

    WriteBytes("log.json", Run("validate --sarif size.oxd foreign.oxd latin.oxd missing.oxd").results);
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): as above
    EXPECT_EQ(std::system(OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/sarif.schema.json' log.json"), 0);
}
#endif

// That the references inside a log hold.
TEST_F(ValidateTest, WritesOneLogForCodeReview)
{
    DamageSize("box.oxd");
    std::filesystem::rename("box.oxd", u8"size of a b\u00F6x.oxd");
    const Outcome outcome = Run("validate --sarif 'size of a b\xC3\xB6x.oxd' missing.oxd sample.oxd");
    EXPECT_EQ(outcome.exitCode, 3);
    const auto log = json::parse(outcome.results);
    EXPECT_EQ(log.at("version"), "2.1.0");
    ASSERT_EQ(log.at("runs").size(), 1);
    const json& run = log["runs"][0];
    const json& driver = run.at("tool").at("driver");
    EXPECT_TRUE(driver.at("name").is_string());
    ASSERT_FALSE(run.at("results").empty());
    for (const json& result : run["results"]) {
        const json& rule = driver.at("rules").at(result.at("ruleIndex").get<std::size_t>());
        EXPECT_EQ(result.at("ruleId"), rule.at("id"));
        EXPECT_EQ(result.at("level"), rule.at("defaultConfiguration").at("level"));
        EXPECT_FALSE(result.at("message").at("text").get<std::string>().empty());
        const json& place = result.at("locations").at(0).at("physicalLocation");
        EXPECT_EQ(place.at("artifactLocation").at("uri"), "size%20of%20a%20b%C3%B6x.oxd");
        const json& region = place.at("region");
        EXPECT_TRUE(region.contains("startLine") ? region["startLine"] > 0 : region.at("byteOffset") >= 0);
    }
    const json& invocation = run.at("invocations").at(0);
    EXPECT_EQ(invocation.at("executionSuccessful"), false);
    ASSERT_EQ(invocation.at("toolExecutionNotifications").size(), 1);
    EXPECT_EQ(invocation["toolExecutionNotifications"][0].at("message").at("text"),
              "missing.oxd: No such file or directory");

    const std::string absolute = std::filesystem::absolute("sample.oxd").string();
    WriteBytes("sample.oxd", "");
    const auto moved = json::parse(Run("validate --sarif '" + absolute + "'").results);
    const json& uri = moved["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"];
    EXPECT_TRUE(uri.get<std::string>().starts_with("file:///")) << uri;
}

TEST_F(ValidateTest, ExplainsEachFinding)
{
    std::istringstream list(ResultsOf("explain"));
    const auto rules = json::parse(ResultsOf("explain --json"));
    std::size_t count = 0;
    for (std::string line; std::getline(list, line); ++count)
        EXPECT_TRUE(line.starts_with(rules.at(count)["id"].get<std::string>())) << line;
    EXPECT_EQ(count, rules.size());
    EXPECT_EQ(json::parse(ResultsOf("explain --json oxd205"))["id"], "OXD205");
    const std::string text = ResultsOf("explain OXD205");
    for (const char* const part : {"\nSeverity  error\n", "\nCause     ", "\nExample   `Points=2S6`\n", "\nRemedy    "})
        EXPECT_NE(text.find(part), std::string::npos) << text;
    std::istringstream lines(text);
    std::string above;
    for (std::string line; std::getline(lines, line); above = line) { // only words that do not fit go on a line below
        EXPECT_LE(line.size(), 80U);
        if (line.starts_with("          ")) {
            EXPECT_GT(above.size() + std::min(line.find(' ', 10), line.size()) - 9, 80U) << line;
        }
    }
    ExpectFailure("explain OXD295", 2, "did you mean OXD20");
    ExpectFailure("explain 205", 2, "did you mean OXD205?");
}

TEST_F(ValidateTest, NoCommandTakesSamplesForThoseOfAnotherChannel)
{
    DamageSize("size.oxd");
    const std::string deflection = " size.oxd -g ForwardScan -c Deflection ";
    struct
    {
        std::string arguments;
        const char* output;
    } const refused[] = {
        {"export" + deflection + "-o d.png", "d.png"},
        {"correct" + deflection + "--op line -o c.oxd", "c.oxd"},
        {"set size.oxd Scan/Lines 1 -o s.oxd", "s.oxd"},
    };
    for (const auto& [arguments, output] : refused) {
        const Outcome outcome = ExpectMessage(arguments, 4, "may not be");
        EXPECT_NE(outcome.diagnostics.find("[OXD205]"), std::string::npos) << outcome.diagnostics;
        EXPECT_FALSE(std::filesystem::exists(output)) << arguments;
        ExpectMessage(arguments + " --trust", 0, "[OXD205]");
        EXPECT_TRUE(std::filesystem::exists(output)) << arguments;
    }
    EXPECT_NE(ExpectMessage("info size.oxd", 4, "[OXD205]").results.find("Deflection (?)"), std::string::npos);
    ExpectMessage("info --trust size.oxd", 0, "[OXD205]");
    EXPECT_EQ(ExpectMessage("get size.oxd Scan/Lines", 0, "[OXD205]").results, ResultsOf("get sample.oxd Scan/Lines"));

    Damage("Points=256", "Points=2S6", "late.oxd", "[DataSet-1:0]"); // of the backward scan
    ExpectMessage("export late.oxd -g ForwardScan -c Deflection -o forward.raw", 0, "[OXD205]");
    ResultsOf("export sample.oxd -g ForwardScan -c Deflection -o original.raw");
    EXPECT_EQ(ReadBytes("forward.raw"), ReadBytes("original.raw"));
    ExpectMessage("export late.oxd -g BackwardScan -c Phase -o backward.raw", 4, "Phase");
    ExpectMessage("correct late.oxd -g ForwardScan -c 0 --op line -o all.oxd", 4, "samples of 5 channels may not be");
}

TEST_F(ValidateTest, NoCommandTakesValuesForRightThatTheHeaderGivesWrongly)
{
    Damage("SaveOrder=Intel", "SaveOrder=Motorola", "wrong.oxd", "[DataSet-0:1]");
    Damage("Dim2Range=", "Dim2Range=1,5;", "comma.oxd", "[DataSet-0:1]");
    Damage("Dim1Range=", "Dim1Range=1,5;", "position.oxd", "[DataSet-0:1]");
    for (const std::string file : {"wrong.oxd", "comma.oxd"}) {
        for (const std::string& command : {"export " + file + " -g ForwardScan -c Deflection -o out.csv",
                                           "correct " + file + " -g ForwardScan -c 0 --op line -o out.csv",
                                           "set " + file + " Scan/Lines 1 -o out.csv", "diff " + file + " " + file}) {
            ExpectMessage(command, 4, "may be wrong");
            EXPECT_FALSE(std::filesystem::exists("out.csv")) << command;
            EXPECT_EQ(Run(command + " --trust").exitCode, 0) << command;
            std::filesystem::remove("out.csv");
        }
        EXPECT_EQ(Run("export " + file + " -g ForwardScan -c Phase -o out.raw").exitCode, 0);
    }
    ExpectMessage("export position.oxd -g ForwardScan -c Deflection -o out.csv", 0, "[OXD209]");
}

// The samples of a large file are not read unless they are asked for; the file is sparse, so that it takes no room.
TEST_F(ValidateTest, ReadsOnlyTheHeaderOfALargeFile)
{
    const std::string size = "Points=8192\nLines=2048\nSaveBits=16\nDim0Range=1\nDim0Min=0\nDim1Range=1\nDim1Min=0\n"
                             "Dim2Range=1\nDim2Min=0\n";
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=C\nInfoSetCount=1\nInfoSet0=A\n"
             "[DataSet\\A]\nB=c\n[C]\nVersion=2\n" +
                 size,
             "", "large.oxd");
    std::filesystem::resize_file("large.oxd",
                                 std::filesystem::file_size("large.oxd") + std::uintmax_t{2} * 8192 * 2048);
    const auto brief = json::parse(ResultsOf("info --json large.oxd"));
    EXPECT_EQ(brief["samplesRead"], false);
    const json& channel = brief["groups"][0]["channels"][0];
    EXPECT_EQ(channel["points"], 8192);
    for (const char* const member : {"validSamples", "unreadableLines", "significantBits", "values"})
        EXPECT_TRUE(channel.at(member).is_null()) << member;
    EXPECT_EQ(json::parse(ResultsOf("info --json --values large.oxd"))["groups"][0]["channels"][0]["validSamples"],
              8192 * 2048);
    EXPECT_EQ(json::parse(ResultsOf("info --json --no-values sample.oxd"))["samplesRead"], false);
    EXPECT_EQ(ResultsOf("get large.oxd A/B"), "c\n");
}
