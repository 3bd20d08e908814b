// A dry run writes nothing and shows what would be written.
#include "tool/ToolTest.h"

#include <algorithm>
#include <sstream>

namespace {

// The lines of a header, without their ends.
std::vector<std::string> HeaderLines(const std::string& file)
{
    std::string bytes = ReadBytes(file);
    std::istringstream header(bytes.substr(0, bytes.find("#!") + 2));
    std::vector<std::string> lines;
    for (std::string line; std::getline(header, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// Does with the lines what unified text says.
std::vector<std::string> Patched(const std::vector<std::string>& lines, const std::string& unified)
{
    std::vector<std::string> patched;
    std::size_t next = 0;
    std::istringstream hunks(unified.substr(unified.find("@@ -")));
    for (std::string line; std::getline(hunks, line);) {
        if (line.starts_with("@@ -")) {
            const bool takesNone = line.find(",0 +") != std::string::npos; // and comes behind the line that it names
            for (const std::size_t end = std::stoul(line.substr(4)) - (takesNone ? 0 : 1); next < end; ++next)
                patched.push_back(lines.at(next));
        } else if (line.starts_with('+')) {
            patched.push_back(line.substr(1));
        } else if (line.starts_with('-') || line.starts_with(' ')) {
            EXPECT_EQ(lines.at(next++), line.substr(1));
            if (line.starts_with(' '))
                patched.push_back(line.substr(1));
        }
    }
    patched.insert(patched.end(), lines.begin() + static_cast<std::ptrdiff_t>(next), lines.end());
    return patched;
}

} // namespace

using DryRunTest = ToolTest;

TEST_F(DryRunTest, ShowsWhatWouldChange)
{
    const auto size = std::to_string(std::filesystem::file_size("sample.oxd") - 1);
    EXPECT_EQ(ResultsOf("set sample.oxd Scan/Lines 64 --dry-run"),
              "--- sample.oxd\n+++ OUT\n@@ -26,7 +26,7 @@\n Image size=5 \xC2\xB5m\n Scan mode=Forward and backward\n"
              " Points=256\n-Lines=256\n+Lines=64\n Time/Line=0.5 s\n Rotation=0 \xC2\xB0\n X-Pos=12.4 \xC2\xB5m\n"
              "no samples change\nOUT: " +
                  size + " bytes would be written\n");
    const std::string correction = "correct sample.oxd -g ForwardScan -c 0 --op mean --dry-run --no-provenance";
    const auto changed = ResultsOf(correction);
    EXPECT_TRUE(changed.starts_with("group \"ForwardScan\", channel \"Topography\": ")) << changed;
    EXPECT_NE(changed.find(" of 65536 samples change\nOUT: "), std::string::npos) << changed;
}

TEST_F(DryRunTest, CountsTheSamplesThatASaveWouldHold)
{
    WriteOxd(oneChannel + "Version=3\nPoints=2\nLines=3\nSaveBits=16\nDim2Name=Z\nDim2Range=1\n"
                          "LineDim0Points=2\nLineDim1Points=2\nLineDim2Points=0\n",
             std::string("\1\0\3\0\2\0\2\0", 8));
    for (const auto& [operation, told] : {std::pair("mean", "group \"Scan\", channel \"Z\": 4 of 6 samples change\n"),
                                          {"line", "\nno samples change\n"}}) // lines are too short for it
        EXPECT_NE(Run(std::string("correct in.oxd -g Scan -c 0 --dry-run --op ") + operation).results.find(told),
                  std::string::npos)
            << operation;
}

TEST_F(DryRunTest, WritesNothing)
{
    const std::string bytes = ReadBytes("sample.oxd");
    WriteBytes("old.oxd", "old");
    for (const std::string destination : {"", " --in-place", " -o old.oxd", " -o new.oxd"})
        EXPECT_NE(ResultsOf("set sample.oxd Scan/Lines 1 --dry-run" + destination).find("+Lines=1\n"),
                  std::string::npos);
    ResultsOf("correct sample.oxd -g ForwardScan -c 0 --op mean --dry-run -o old.oxd");
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
    EXPECT_EQ(ReadBytes("old.oxd"), "old");
    EXPECT_FALSE(std::filesystem::exists("new.oxd"));
    EXPECT_FALSE(std::filesystem::exists("OUT"));
    for (const auto& [arguments, code, part] :
         {std::tuple("set sample.oxd Scan/Lines 1 --dry-run -o nowhere/out.oxd", 5, "oxd: nowhere/out.oxd: "),
          {"set sample.oxd Scan/Lines 1 --dry-run --no-clobber -o old.oxd", 5, "File exists"},
          {"set sample.oxd Scan/rotation 5 --create --dry-run", 2, "another name or value"},
          {"correct sample.oxd -g ForwardScan -c 0 --op mean --dry-run -o ./sample.oxd", 2, "is the file to read"}})
        ExpectMessage(arguments, code, part);
}

TEST_F(DryRunTest, GivesAPatchOfTheHeader)
{
    const std::string channel = "[C]\nSaveBits=16\nLines=1\nPoints=1\nVersion=2\nDim2Range=5e-324\n";
    const std::string files[] = {
        "[DataSet]\nVersion=2\nGroupCount=1\nGr0-Count=1\nGr0-Ch0=C\nSetInfos=I\n[I]\n-- A --=x\nb=1\n" + channel,
        "[DataSet]\nVersion=1\nChannelCount=1\nFrameCount=1\nCh0-Fr0=C\nSetInfos=I\n[I]\n-- A --=x\nb=1\nc=d\n" +
            channel,
        "[X]\ny=1\n[DataSet]\nVersion=2\nInfoSetCount=900\n" + Lines(900, "InfoSet#=A#\n") +
            "InfoSetCount=901\nInfoSet900=A\n" + Lines(900, "[DataSet\\A#]\nq=1\nq#=2\nw\n") + "[DataSet\\A]\nb=1\n",
    };
    for (const std::string& header : files) {
        WriteOxd(header, std::string(2, '\0'));
        const std::string unified = Run("set in.oxd A/b 2 --dry-run").results;
        EXPECT_EQ(Run("set in.oxd A/b 2 -o out.oxd").exitCode, 0);
        EXPECT_EQ(Patched(HeaderLines("in.oxd"), unified), HeaderLines("out.oxd")) << unified.substr(0, 500);
    }

    std::string lineFeeds = ReadBytes("sample.oxd");
    const auto end = lineFeeds.begin() + static_cast<std::ptrdiff_t>(lineFeeds.find("#!"));
    lineFeeds.erase(std::remove(lineFeeds.begin(), end, '\r'), end);
    WriteBytes("lf.oxd", lineFeeds);
    EXPECT_NE(ResultsOf("set lf.oxd Scan/Lines 64 --dry-run").find("@@ -26,7 +26,7 @@"), std::string::npos);
}
