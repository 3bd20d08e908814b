#include "tool/ToolTest.h"

#include <nlohmann/json.hpp>

#include <cstdlib>

using DoctorTest = ToolTest;

namespace {

nlohmann::json FindCheck(const nlohmann::json& told, const std::string& name)
{
    for (const auto& check : told["checks"]) {
        if (check["name"] == name)
            return check;
    }
    return {};
}

void SetTemporaryFolder(const std::string& folder)
{
#ifdef _WIN32
    _putenv_s("TMP", folder.c_str());
#else
    setenv("TMPDIR", folder.c_str(), 1); // NOLINT(concurrency-mt-unsafe): there is one thread
#endif
}

// Not every system can tell whether two names stand for one file.
bool IsFile(const std::string& told, const std::string& file)
{
    std::error_code unknown;
    return std::filesystem::equivalent(told, file, unknown) ||
           std::filesystem::path(told).generic_string().ends_with(file);
}

} // namespace

TEST_F(DoctorTest, NamesTheFilesThatRunAndLeavesNone)
{
    const std::string before = std::filesystem::temp_directory_path().string();
    std::filesystem::create_directory("temporary");
    SetTemporaryFolder(Path("temporary"));
    const auto told = nlohmann::json::parse(ResultsOf("doctor --json"));
    const std::string table = ResultsOf("doctor");
    SetTemporaryFolder(before);
    const std::string tool = FindCheck(told, "tool")["found"];
    const std::string version = OXD_VERSION ", ";
    ASSERT_TRUE(tool.starts_with(version)) << tool;
    EXPECT_TRUE(IsFile(tool.substr(version.size()), OXD_TOOL)) << tool;
    const std::string library = FindCheck(told, "library")["found"];
    ASSERT_TRUE(library.starts_with(version)) << library;
    EXPECT_TRUE(IsFile(library.substr(version.size()), OXD_LIBRARY)) << library;
    for (const char* const name : {"write and read", "write and read Unicode"})
        EXPECT_EQ(FindCheck(told, name)["ok"], true) << told;
#ifdef OXD_HAS_TIFF
    EXPECT_GE(FindCheck(told, "libtiff")["found"], "4.5");
#else
    EXPECT_EQ(FindCheck(told, "libtiff")["found"], "none: this build cannot write .tif files");
#endif
    EXPECT_TRUE(std::filesystem::is_empty("temporary"));
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(table, '\n')), told["checks"].size());
}

TEST_F(DoctorTest, SaysWhatHelpsWhereFilesCannotBeWritten)
{
    const std::string before = std::filesystem::temp_directory_path().string();
    SetTemporaryFolder(Path("missing"));
    const Outcome outcome = Run("doctor --json");
    SetTemporaryFolder(before);
    EXPECT_EQ(outcome.exitCode, 5);
    const auto told = nlohmann::json::parse(outcome.results);
    EXPECT_EQ(told["ok"], false);
    for (const char* const name : {"temporary folder", "write and read"}) {
        EXPECT_EQ(FindCheck(told, name)["ok"], false);
        EXPECT_TRUE(FindCheck(told, name)["remedy"].is_string());
    }
}
