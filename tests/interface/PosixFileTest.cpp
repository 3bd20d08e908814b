// Devices and links, which other systems do not have, or have for their administrators.
#include "interface/FileTest.h"

namespace {

using PosixFileTest = FileTest;

TEST_F(PosixFileTest, ALinkIsWrittenThroughUnlessItLeadsToAProtectedFile)
{
    const auto handle = Create("link.oxd");
    WriteBytes(Path("target.oxd"), "old");
    fs::create_symlink(Path("target.oxd"), Path("link.oxd"));
    Save(handle);
    EXPECT_TRUE(fs::is_symlink(Path("link.oxd")));
    EXPECT_EQ(ReadBytes(Path("target.oxd")), emptyFile);

    fs::permissions(Path("target.oxd"), fs::perms::owner_read);
    CreateGroup(handle, 16);
    SaveOxdFile(handle);
    ExpectOpenFailure(Path("link.oxd"), EACCES, "void SaveOxdFile(uint64_t)");
    EXPECT_EQ(ReadBytes(Path("target.oxd")), emptyFile);
}

TEST_F(PosixFileTest, AFullDiskIsNoticedAndTheDataSetStaysWhole)
{
    const auto handle = Create();
    const auto group = CreateChannel(handle, 32, 300, 40);
    const std::vector<std::int32_t> line(300, 123456);
    SetChannelData_LineRaw(handle, group, 0, 39, line.data());
    for (const bool large : {true, false}) {
        ChangeOxdFilename(handle, "/dev/full");
        EXPECT_EQ(ReasonOf([&] { SaveOxdFile(handle); }), "basic_ios::clear: iostream error");
        EXPECT_TRUE(fs::exists("/dev/full"));
        ChangeOxdFilename(handle, Path("out.oxd").c_str());
        Save(handle);
        if (large) {
            EXPECT_EQ(LineRaw(Open(Path("out.oxd")), 0, 0, 39), line);
            DeleteAllGroups(handle); // so that the whole file fits into the stream's buffer: closing fails
        }
    }
}

} // namespace
