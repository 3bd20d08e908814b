// Pages that hold the viewer and a file. What a browser makes of them is tested in viewer/.
#include "tool/ToolTest.h"

#include <cstdint>
#include <filesystem>

namespace {

// The bytes that the element for the file holds, which begins with its name.
std::string FileIn(const std::string& page, const std::string& attributes)
{
    const std::string begin = R"(<script type="application/octet-stream" id="file")" + attributes + ">";
    const std::size_t at = page.find(begin);
    if (at == std::string::npos)
        return "no element with" + attributes;
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (std::size_t i = at + begin.size(); digits.find(page[i]) != std::string_view::npos; ++i) {
        bits = bits << 6U | static_cast<std::uint32_t>(digits.find(page[i]));
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 255U);
        }
    }
    return bytes;
}

} // namespace

class ViewTest : public ToolTest
{
protected:
    void SetUp() override
    {
        if (!OXD_HAS_VIEWER)
            GTEST_SKIP() << "this build has no viewer";
    }
};

TEST_F(ToolTest, SaysThatABuildHasNoViewer)
{
    if (OXD_HAS_VIEWER)
        GTEST_SKIP() << "this build has one";
    ExpectFailure("view sample.oxd --no-open -o page.html", 2, "this build of oxd has no viewer");
    EXPECT_FALSE(std::filesystem::exists("page.html"));
}

// Lengths of all remainders that base64 knows.
TEST_F(ViewTest, PutsAllBytesOfTheFileIntoThePage)
{
    const std::string sample = ReadBytes("sample.oxd");
    for (std::size_t more = 0; more < 3; ++more) {
        WriteBytes("longer.oxd", sample + std::string(more, '\xFF'));
        Run("export longer.oxd -o page.html");
        EXPECT_EQ(FileIn(ReadBytes("page.html"), " data-name=\"longer.oxd\""), ReadBytes("longer.oxd")) << more;
    }
    EXPECT_EQ(ResultsOf("view sample.oxd --no-open -o Seen.HTML"), "Seen.HTML\n");
    EXPECT_EQ(ResultsOf("export sample.oxd --format html -o other"), "");
    EXPECT_EQ(ReadBytes("Seen.HTML"), ReadBytes("other"));
}

TEST_F(ViewTest, TheNameOfTheFileCannotEndItsAttribute)
{
    std::filesystem::rename("sample.oxd", "a&b.oxd");
    ResultsOf("export 'a&b.oxd' -o page.html");
    EXPECT_EQ(FileIn(ReadBytes("page.html"), " data-name=\"a&amp;b.oxd\""), ReadBytes("a&b.oxd"));
}

TEST_F(ViewTest, WritesToTheFolderForTemporaryFiles)
{
    const std::string name = ResultsOf("view sample.oxd --no-open");
    const std::filesystem::path page = name.substr(0, name.size() - 1);
    EXPECT_EQ(FileIn(ReadBytes(page.string()), " data-name=\"sample.oxd\""), ReadBytes("sample.oxd"));
    EXPECT_EQ(page.filename(), "sample.oxd.html");
    std::filesystem::remove_all(page.parent_path());
}

TEST_F(ViewTest, WritesNothingOfWhatIsNoFileOrForAChannel)
{
    WriteBytes("page.html", "as before");
    WriteBytes("other.oxd", "something else");
    ExpectFailure("view missing.oxd --no-open -o page.html", 3, "missing.oxd");
    ExpectFailure("view other.oxd --no-open -o page.html", 4, "other.oxd");
    ExpectFailure("view sample.oxd --no-open -o sample.oxd", 2, "sample.oxd");
    ExpectFailure("view sample.oxd --no-open --no-clobber -o page.html", 5, "page.html");
    ExpectFailure("export sample.oxd -g ForwardScan -o page.html", 2, "a page holds the whole file");
    ExpectFailure("export sample.oxd --op mean -o page.html", 2, "a page holds the whole file");
    ExpectFailure("export sample.oxd --no-axes -o page.html", 2, "a page holds the whole file");
    ExpectFailure("export sample.oxd -g ForwardScan -o page.png", 2, "--channel");
    EXPECT_EQ(ReadBytes("page.html"), "as before");
}
