#include "oxd/provenance/Origin.h"

#include "oxd/files/FilePath.h"
#include "oxd/library/DataSet.h"
#include "oxd/system/Platform.h"

namespace oxd {

std::string ToolName()
{
    return "oxd " OXD_VERSION;
}

std::string LibraryName()
{
    const std::string version = platform::FileOf(reinterpret_cast<const void*>(&OpenOxdFile)).version;
    return version.empty() ? "VELOxdDll" : "VELOxdDll " + version;
}

std::string NameWithoutFolder(const std::string& file)
{
    return ToUtf8(ToPath(file).filename());
}

} // namespace oxd
