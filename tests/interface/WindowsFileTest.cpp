// Files that other programs have open.
#include "interface/FileTest.h"

#include <windows.h>

namespace {

using WindowsFileTest = FileTest;

TEST_F(WindowsFileTest, AFileThatOthersHaveOpenIsWrittenOrLeftWhole)
{
    const auto handle = Create();
    const fs::path path = Path("out.oxd");
    for (DWORD sharing = 0; sharing < 8; ++sharing) {
        WriteBytes(path.string(), "precious");
        HANDLE other = CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        const bool saved = ReasonOf([&] { SaveOxdFile(handle); }).empty();
        CloseHandle(other);
        EXPECT_EQ(saved, (sharing & FILE_SHARE_WRITE) != 0) << sharing;
        EXPECT_EQ(ReadBytes(path.string()), saved ? emptyFile : "precious") << sharing;
    }
}

} // namespace
