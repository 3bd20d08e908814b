#include "oxd/inspection/InspectFile.h"

#include "oxd/inspection/FindingText.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"

#include <system_error>

namespace oxd {

namespace {

// An inspection does not wait for the other end of a pipe.
std::string ReasonOf(const std::error_code& error)
{
    return error == std::errc::invalid_argument ? "is not a regular file" : error.message();
}

} // namespace

inspect::Inspection InspectFile(const std::string& file)
{
    inspect::Inspection inspection = InspectQuietly(file);
    const std::string subject = file + ": ";
    for (const std::string& message : LesserMessages(inspection)) {
        Explain(subject + message);
    }
    return inspection;
}

inspect::Inspection InspectQuietly(const std::string& file)
{
    try {
        return inspect::Inspect(file);
    } catch (const std::system_error& error) {
        Explain(error.what());
        const bool isUnreadable = error.code() == std::errc::io_error;
        throw Failure(isUnreadable ? ExitCode::Damaged : ExitCode::CannotOpen, file, ReasonOf(error.code()));
    }
}

// The inspection and the library agree on what opens, and the library would read all samples to say so.
void RequireOpens(const inspect::Inspection& inspection)
{
    if (const auto refusal = RefusalMessage(inspection)) {
        throw Failure(ExitCode::Damaged, inspection.file, *refusal);
    }
}

} // namespace oxd
