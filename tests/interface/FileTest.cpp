// Handles, and what opening and saving does to files.
#include "support/OxdTest.h"

#ifdef _WIN32
#include <windows.h>
constexpr const char* aDevice = "NUL";
#else
#include <sys/stat.h>
#include <unistd.h>
constexpr const char* aDevice = "/dev/zero";
#endif

namespace fs = std::filesystem;

namespace {

constexpr std::string_view emptyFile = "[DataSet]\r\nVersion=2\r\nGroupCount=0\r\nInfoSetCount=0\r\n\r\n#!";

class FileTest : public OxdTest
{
protected:
    // The diagnostic of a file-open failure.
    static void ExpectOpenFailure(const std::string& path, int error, const std::string& function)
    {
        std::string text = VELGetLastError();
        for (auto blank = text.find(" *]"); blank != std::string::npos; blank = text.find(" *]"))
            text.erase(blank, 1); // which clang puts ahead of the asterisks of pointers
        EXPECT_NE(text.substr(0, text.find('\n')).find(function), std::string::npos) << text;
        for (const std::string& part :
             {std::string("CVELFileOpenException"), "tag_filename*] = " + path + "\n",
              "errinfo_errno_*] = " + std::to_string(error) + ",", std::string("errinfo_api_function_*] = open")})
            EXPECT_NE(text.find(part), std::string::npos) << text;
    }
};

TEST_F(FileTest, TheSmallestFreeHandleIsTakenAndAFailedOpenKeepsOneUntilThatIsClosed)
{
    fs::create_directory(Path("folder"));
    for (const auto& [path, error] :
         {std::pair(Path("missing"), ENOENT), {Path("folder"), EISDIR}, {aDevice, EINVAL}}) {
        EXPECT_EQ(OpenOxdFile(path.c_str()), 0U);
        ExpectOpenFailure(path, error, " OpenOxdFile");
    }
    EXPECT_EQ(Create("a"), 4U);
    EXPECT_EQ(Create("b"), 5U);
    for (const std::uint64_t free : {4U, 1U}) {
        CloseOxdFile(free);
        EXPECT_EQ(Create("c"), free);
    }
}

TEST_F(FileTest, AnEmptyDataSetIsItsHeaderAndNothingElse)
{
    const auto handle = Create();
    EXPECT_FALSE(fs::exists(Path("out.oxd"))) << "creating touches no file";
    EXPECT_EQ(ReasonOf([&] { EXPECT_EQ(GetOxdVersion(handle), 0); }), "m_pActiveSection == nullptr");
    EXPECT_EQ(Saved(handle), emptyFile);
    WriteBytes(Path("out.oxd"), std::string(5000, 'x'));
    EXPECT_EQ(Saved(handle), emptyFile) << "what was there is replaced";
    EXPECT_EQ(GetOxdVersion(handle), 2);
}

TEST_F(FileTest, AChangedNameIsWhereTheNextSaveGoesIfThereCanBeAFile)
{
    const auto handle = Create("old.oxd");
    Save(handle);
    CreateGroup(handle, 16);
    ChangeOxdFilename(handle, Path("new.oxd").c_str());
    EXPECT_FALSE(fs::exists(Path("new.oxd")));
    Save(handle);
    EXPECT_EQ(ReadBytes(Path("old.oxd")), emptyFile);
    EXPECT_EQ(GroupName(Open(Path("new.oxd")), 0), "Group0");

    fs::create_directory(Path("folder"));
    const auto old = Open(WriteOxd("[DataSet]\nChannelCount=1\nFrameCount=1\nCh0-Fr0=A\n"));
    for (const auto& [path, error] : {std::pair(Path("folder"), EISDIR), {Path("nowhere/out.oxd"), ENOENT}}) {
        ChangeOxdFilename(old, path.c_str());
        SaveOxdFile(old);
        ExpectOpenFailure(path, error, " SaveOxdFile");
        EXPECT_EQ(GetOxdVersion(old), 1) << "that of the file which was read";
    }
    EXPECT_TRUE(fs::is_directory(Path("folder")));
}

TEST_F(FileTest, NamesAreInTheSystemsCodePageOrPlainBytesAndProtectedFilesStay)
{
    const std::string name = Path("") + "gr\xF6\xDF"
                                        "e.oxd";
#ifdef _WIN32
    const fs::path onDisk = fs::path(Path("")) / L"gr\u00F6\u00DFe.oxd";
#else
    const fs::path onDisk = name;
#endif
    const auto handle = CreateOxdFile(name.c_str());
    CreateGroup(handle, 16);
    for (int round = 0; round < 2; ++round) {
        Save(handle);
        EXPECT_TRUE(fs::exists(onDisk));
    }
    DeleteAllGroups(handle);
    fs::permissions(onDisk, fs::perms::owner_read);
    SaveOxdFile(handle);
    ExpectOpenFailure(name, EACCES, " SaveOxdFile");
    EXPECT_EQ(ReasonIn(VELGetLastError()), "The specified file is write protected. Filename: " + name);
    EXPECT_EQ(GetGroupCount(Open(name)), 1U);
    fs::permissions(onDisk, fs::perms::owner_all); // else Windows would keep it
}

TEST_F(FileTest, WhatNoFileMayAskForIsFoundBeforeTheOldFileIsTouched)
{
    const auto handle = Create();
    WriteBytes(Path("out.oxd"), "precious");
    for (const int bits : {0, 12, -1, 64}) {
        DeleteAllGroups(handle);
        CreateChannel(handle, bits, 2, 2);
        EXPECT_EQ(ReasonOf([&] { SaveOxdFile(handle); }), "Invalid bit count: " + std::to_string(bits));
    }
    DeleteAllGroups(handle);
    for (const std::uint64_t slots : {524'288U, 524'289U})
        SetChannelCount(handle, CreateGroup(handle, 16), slots);
    EXPECT_TRUE(ReasonOf([&] { SaveOxdFile(handle); }).starts_with("There are too many channel slots for one file."));
    DeleteAllGroups(handle);
    for (const std::uint64_t lines : {524'288U, 524'289U})
        CreateChannel(handle, 16, 0, lines);
    EXPECT_TRUE(ReasonOf([&] { SaveOxdFile(handle); }).starts_with("There are too many lines without samples"));
    EXPECT_EQ(ReadBytes(Path("out.oxd")), "precious");
}

#ifdef _WIN32
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
#else // links take a right there, and there are no disks that are always full
using PosixFileTest = FileTest;

TEST_F(PosixFileTest, ALinkIsWrittenThroughUnlessItLeadsToAProtectedFileOrAFullDisk)
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
    ExpectOpenFailure(Path("link.oxd"), EACCES, " SaveOxdFile");
    EXPECT_EQ(ReadBytes(Path("target.oxd")), emptyFile);

    fs::remove(Path("link.oxd"));
    fs::create_symlink("/dev/full", Path("link.oxd"));
    EXPECT_EQ(ReasonOf([&] { SaveOxdFile(handle); }), "basic_ios::clear: iostream error");
}

TEST_F(PosixFileTest, ASavedFileIsOpenToThoseWhoCouldOpenTheOldOne)
{
    const auto handle = Create();
    const auto permissionBits = [&] {
        struct stat status = {};
        stat(Path("out.oxd").c_str(), &status);
        return status.st_mode & 07777;
    };
    const mode_t maskOfProcess = umask(0);
    for (const mode_t mask : {0U, 022U, 077U}) {
        umask(mask);
        fs::remove(Path("out.oxd"));
        Save(handle);
        EXPECT_EQ(permissionBits(), 0666 & ~mask) << "a file that is new";
        for (const mode_t mode : {0600U, 0640U, 0664U, 0666U, 0200U, 0060U, 06755U}) {
            chmod(Path("out.oxd").c_str(), mode);
            Save(handle);
            EXPECT_EQ(permissionBits(), mode & 0777U) << std::oct << mask;
        }
    }
    umask(maskOfProcess);
}

TEST_F(PosixFileTest, ASavedFileKeepsItsOwnerAndGroupOrIsClosedToAnotherGroup)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only the administrator can give files away";
    const auto handle = Create();
    constexpr uid_t somebody = 12'345;
    constexpr gid_t theirs = 54'321;
    const auto savedAs = [&](mode_t mode, uid_t user, gid_t group) {
        WriteBytes(Path("out.oxd"), "old");
        EXPECT_EQ(chmod(Path("out.oxd").c_str(), mode), 0);
        EXPECT_EQ(chown(Path("out.oxd").c_str(), somebody, theirs), 0);
        fs::permissions(Path(""), fs::perms::all);
        EXPECT_EQ(setegid(group) + seteuid(user), 0);
        Save(handle);
        EXPECT_EQ(seteuid(0) + setegid(0), 0);
        struct stat status = {};
        stat(Path("out.oxd").c_str(), &status);
        return std::tuple(status.st_uid, status.st_gid == theirs, status.st_mode & 07777);
    };
    EXPECT_EQ(savedAs(0640, 0, 0), std::tuple(somebody, true, 0640U));
    constexpr uid_t other = 23'456;
    EXPECT_EQ(savedAs(0640, other, theirs), std::tuple(other, true, 0640U));
    for (const auto& [mode, left] : {std::pair(0640U, 0600U), {0664U, 0644U}, {0646U, 0644U}, {0604U, 0600U}})
        EXPECT_EQ(savedAs(mode, other, other), std::tuple(other, false, left)) << std::oct << mode;
}
#endif

} // namespace
