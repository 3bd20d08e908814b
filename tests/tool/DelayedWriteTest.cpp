// A system may tell only on closing that what was written before is lost, for example when a server's disk is full. No
// device here does that on demand, so the tool's files are linked with a system that does.
#include "support/OxdTest.h"

#include "oxd/system/Failure.h"
#include "oxd/system/OutputFile.h"
#include "oxd/system/Platform.h"
#include "oxd/system/Results.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace oxd::platform {

int CreateFileFor(const std::string& name)
{
    const std::ofstream created(name);
    return 3;
}
int TakeStandardOutput()
{
    return 4;
}
bool IsRegularFile(int)
{
    return true;
}
bool IsTerminal(int)
{
    return false;
}
bool WriteAll(int, std::string_view)
{
    return true;
}
bool Close(int)
{
    errno = EIO;
    return false;
}

} // namespace oxd::platform

using DelayedWriteTest = OxdTest;

TEST_F(DelayedWriteTest, IsNoticedOnClosing)
{
    oxd::OutputFile file(Path("out.csv"));
    file.Write("1");
    try {
        file.Close();
        FAIL();
    } catch (const oxd::Failure& failure) {
        EXPECT_EQ(failure.what(), Path("out.csv") + ": " + std::generic_category().message(EIO));
    }
    EXPECT_FALSE(std::filesystem::exists(Path("out.csv")));

    oxd::Results results;
    results.Write("1");
    EXPECT_THROW(results.Close(), oxd::Failure);
}
