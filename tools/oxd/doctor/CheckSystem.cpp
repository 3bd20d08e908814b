#include "oxd/doctor/CheckSystem.h"

#include "oxd/system/Platform.h"
#include "oxd/system/Text.h"

#include <filesystem>

namespace oxd {

namespace {

constexpr std::uintmax_t bytesOfMegabyte = 1'000'000;
constexpr std::uintmax_t leastMegabytes = 100; // of free space: a large file of the format

const char* YesOrNo(bool yes)
{
    return yes ? "yes" : "no";
}

std::string NameOf(const std::filesystem::path& path)
{
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

Check CheckSpace(const std::filesystem::path& folder)
{
    std::error_code error;
    const std::filesystem::space_info space = std::filesystem::space(folder, error);
    if (error) {
        return {"free space", error.message(), "Set TMPDIR, or TEMP on Windows, to a folder on a disk that works."};
    }
    Check check{"free space", std::to_string(space.available / bytesOfMegabyte) + " MB in the temporary folder"};
    if (space.available / bytesOfMegabyte < leastMegabytes) {
        check.remedy = "Free at least " + std::to_string(leastMegabytes) + " MB there.";
    }
    return check;
}

} // namespace

void CheckTexts(Checks& checks)
{
    const platform::TextSettings settings = platform::GetTextSettings();
    checks.push_back({"locale", settings.locale});
    checks.push_back({"encoding", settings.encoding, settings.remedy});
}

void CheckTerminal(bool outputIsTerminal, Checks& checks)
{
    constexpr int standardError = 2;
    checks.push_back({"terminal", std::string("standard output ") + YesOrNo(outputIsTerminal) + ", standard error " +
                                      YesOrNo(platform::IsTerminal(standardError))});
}

void CheckTemporaryFolder(Checks& checks)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) {
        checks.push_back({"temporary folder", error.message(),
                          "Set TMPDIR, or TEMP on Windows, to a folder that exists and may be written."});
        return;
    }
    checks.push_back({"temporary folder", NameOf(folder)});
    checks.push_back(CheckSpace(folder));
}

} // namespace oxd
