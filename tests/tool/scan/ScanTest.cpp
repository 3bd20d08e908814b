// oxd scan: what it tells of the files in folders, and in which order.
#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <sstream>
#include <vector>

using nlohmann::json;

// A tree with names in several scripts, a damaged file, a foreign one and files that are passed over.
class ScanTest : public ToolTest
{
protected:
    using Texts = std::vector<std::string>;

    ScanTest()
    {
        std::filesystem::create_directories("tree/b/deep");
        const std::string sample = ReadBytes("sample.oxd");
        for (const char* const name : {"tree/c.oxd", "tree/b/deep/1.OXD", "tree/b/x.oxd", "tree/B.oxd", "tree/e.txt"})
            WriteBytes(name, sample);
        std::filesystem::rename("tree/B.oxd", u8"tree/\u00B5m \u6E2C.oxd");
        WriteBytes("tree/a.oxd", "no header");
        WriteBytes("tree/d.oxd", sample.substr(0, sample.size() / 2));
    }

    static std::vector<json> Records(const std::string& arguments)
    {
        std::vector<json> records;
        std::istringstream lines(ResultsOf("scan " + arguments));
        for (std::string line; std::getline(lines, line);)
            records.push_back(json::parse(line));
        return records;
    }

    static Texts Names(const std::string& arguments)
    {
        Texts names;
        for (const json& record : Records(arguments)) {
            const auto text = record.at("path").get<std::string>();
            names.push_back(text.substr(text.find_last_of("/\\") + 1));
        }
        return names;
    }
};

TEST_F(ScanTest, FindsFilesInOneOrderWhateverTheNumberOfThreads)
{
    const Texts byName{"a.oxd", "1.OXD", "x.oxd", "c.oxd", "d.oxd", "\xC2\xB5m \xE6\xB8\xAC.oxd"};
    EXPECT_EQ(Names("tree"), byName);
    EXPECT_EQ(ResultsOf("scan tree --jobs 1"), ResultsOf("scan tree --jobs 7"));
    EXPECT_EQ(Names("tree --all").size(), byName.size() + 1);
    EXPECT_EQ(Names("tree/e.txt tree/b"), (Texts{"e.txt", "1.OXD", "x.oxd"}));

    for (int i = 0; i < 200; ++i) // more than are read at a time
        std::filesystem::copy_file("tree/a.oxd", "tree/b/" + std::to_string(1000 + i) + ".oxd");
    const Texts many = Names("tree/b");
    EXPECT_EQ(many.size(), 202);
    EXPECT_TRUE(std::ranges::is_sorted(many.begin(), many.end() - 2));

    WriteBytes("list.txt", "tree/c.oxd\r\n\ntree/missing.oxd\n");
    EXPECT_EQ(Names("--files-from list.txt"), (Texts{"c.oxd", "missing.oxd"}));
}

TEST_F(ScanTest, TellsWhatTheHeaderHolds)
{
    const json record = Records("tree/c.oxd").at(0);
    const json info = json::parse(ResultsOf("info --json sample.oxd"));
    EXPECT_EQ(record.at("size"), ReadBytes("sample.oxd").size());
    EXPECT_EQ(record.at("version"), info.at("version"));
    ASSERT_EQ(record.at("groups").size(), info.at("groups").size());
    std::size_t channels = 0;
    for (std::size_t group = 0; group < info["groups"].size(); ++group) {
        for (const json& channel : record["groups"][group].at("channels")) {
            json known = info["groups"][group]["channels"].at(channel.at("slot").get<std::size_t>());
            for (const char* const key : {"name", "points", "lines", "certain", "signalAxis", "pointAxis", "lineAxis"})
                EXPECT_EQ(channel.at(key), known.at(key)) << key;
            ++channels;
        }
    }
    EXPECT_GT(channels, 3);
    for (const json& item : record.at("info")) {
        std::string path;
        for (const json& name : item.at("path"))
            path += (path.empty() ? "" : "|") + name.get<std::string>();
        EXPECT_EQ(ResultsOf("get sample.oxd '" + path + "' --separator '|'"),
                  item.at("value").get<std::string>() + "\n");
    }
    EXPECT_GT(record["info"].size(), 3);
    const json validated = json::parse(ResultsOf("validate --json sample.oxd"));
    std::size_t counted = 0;
    for (const json& count : record.at("findings"))
        counted += count.get<std::size_t>();
    EXPECT_EQ(counted, validated.at("findings").size());
    EXPECT_EQ(record.at("notes"), validated.at("notes"));
}

TEST_F(ScanTest, KeepsTheIdOfWhatIsMovedAndGivesAnotherToWhatIsChanged)
{
    const std::vector<json> records = Records("tree/c.oxd tree/b/x.oxd");
    EXPECT_EQ(records.at(0).at("id"), records.at(1).at("id"));
    ResultsOf("set --in-place tree/c.oxd Scan/Comment moved --create");
    EXPECT_NE(Records("tree/c.oxd").at(0).at("id"), records[0]["id"]);
}

TEST_F(ScanTest, HasARecordWithTheReasonForWhatCannotBeRead)
{
    const auto reason = [](const std::string& file) { return Records(file).at(0).at("error").get<std::string>(); };
    EXPECT_NE(reason("tree/a.oxd").find("no header"), std::string::npos);
    EXPECT_NE(reason("tree/d.oxd").find("[OXD402]"), std::string::npos);

    const std::string sample = ReadBytes("sample.oxd");
    for (std::size_t length = 0; length < 4000; length += 97) {
        WriteBytes("cut.oxd", sample.substr(0, length));
        EXPECT_TRUE(Records("cut.oxd").at(0).contains("error")) << length;
    }
    const Outcome outcome = ExpectMessage("scan missing tree/c.oxd", 3, "oxd: missing: ");
    EXPECT_EQ(std::ranges::count(outcome.results, '\n'), 2);
}

TEST_F(ScanTest, PassesOverWhatIsOlder)
{
    using namespace std::chrono;
    const auto set = [](const char* file, unsigned dayOfMay) {
        const sys_seconds time = sys_days(year(2026) / May / dayOfMay) + hours(13) + minutes(24) + seconds(35);
        std::filesystem::last_write_time(file, file_clock::from_sys(time));
    };
    set("tree/b/x.oxd", 2);
    set("tree/b/deep/1.OXD", 1);
    EXPECT_EQ(Records("tree/b/x.oxd").at(0).at("modified"), "2026-05-02T13:24:35.000000000Z");
    EXPECT_EQ(Names("tree/b --since 2026-05-01"), (Texts{"1.OXD", "x.oxd"}));
    EXPECT_EQ(Names("tree/b --since 2026-05-02"), (Texts{"x.oxd"}));
    for (const char* const text : {"2026-05-02T13:24:35", "2026-05-02T12:59:59", "2026-05-02T13:23:59Z"})
        EXPECT_EQ(Names("tree/b --since " + std::string(text)), (Texts{"x.oxd"})) << text;
    for (const char* const text : {"2026-05-02T13:24:36Z", "2026-05-02T14:00:00", "2026-05-02T13:25:00"})
        EXPECT_EQ(Names("tree/b --since " + std::string(text)), Texts{}) << text;
    for (const char* const text : {"2026-02-30", "2026-5-1", "2026-05-01T25:00:00", "yesterday", "0001-01-01", "Z"})
        ExpectFailure("scan tree --since " + std::string(text), 2, "is no time such as");
    ExpectFailure("scan", 2, "DIR is required");
    ExpectFailure("scan --files-from missing.txt", 3, "missing.txt");
}

#ifdef OXD_SCHEMA_CHECK
TEST_F(ScanTest, RecordsFitTheirSchema)
{
    std::string files;
    for (std::size_t n = 0; const json& record : Records("tree --all")) {
        const std::string file = std::to_string(n++) + ".json";
        WriteBytes(file, record.dump());
        files += " " + file;
    }
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what runs programs
    EXPECT_EQ(std::system((OXD_SCHEMA_CHECK " '" OXD_SCHEMAS "/scan.schema.json'" + files).c_str()), 0);
}
#endif
