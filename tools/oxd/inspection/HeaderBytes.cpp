#include "oxd/inspection/HeaderBytes.h"

#include "oxd/files/FilePath.h"
#include "oxd/system/Failure.h"

#include <fstream>

namespace oxd {

std::string HeaderBytes(const inspect::Inspection& inspection)
{
    std::string bytes(inspection.headerBytes, '\0');
    std::ifstream file(ToPath(inspection.file), std::ios::binary);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
        throw Failure(ExitCode::CannotOpen, inspection.file, "its header cannot be read again");
    }
    return bytes;
}

} // namespace oxd
