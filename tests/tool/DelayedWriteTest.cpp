// A system may tell only on closing that what was written before is lost, for example when a server's disk is full. No
// device here does that on demand, so what writes the tool's files is linked with a system that does.
#include "support/OxdTest.h"

#include "oxd/system/Failure.h"
#include "oxd/system/OutputFile.h"
#include "oxd/system/Platform.h"

#include <filesystem>
#include <fstream>

namespace oxd::platform {

int CreateFileFor(const std::string& name)
{
    return std::ofstream(name) ? 3 : -1;
}
bool IsRegularFile(int)
{
    return true;
}
bool WriteAll(int, std::string_view)
{
    return true;
}
bool Close(int)
{
    return false;
}

} // namespace oxd::platform

using DelayedWriteTest = OxdTest;

TEST_F(DelayedWriteTest, IsNoticedOnClosing)
{
    oxd::OutputFile file(Path("out.csv"));
    file.Write("1");
    EXPECT_THROW(file.Close(), oxd::Failure);
    EXPECT_FALSE(std::filesystem::exists(Path("out.csv")));
}
