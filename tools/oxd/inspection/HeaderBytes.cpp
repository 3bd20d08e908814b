#include "oxd/inspection/HeaderBytes.h"

#include "oxd/files/Reopen.h"
#include "oxd/system/Failure.h"

namespace oxd {

std::string HeaderBytes(const inspect::Inspection& inspection)
{
    std::string bytes(inspection.headerBytes, '\0');
    try {
        std::ifstream file = Reopen(inspection.file);
        file.exceptions(std::ios::failbit | std::ios::badbit); // so that a lack of memory stays one
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    } catch (const std::ios_base::failure&) {
        throw Failure(ExitCode::CannotOpen, inspection.file, "its header cannot be read again");
    }
    return bytes;
}

} // namespace oxd
