#include "oxd/inspection/InspectFile.h"

#include "oxd/inspection/FindingText.h"
#include "oxd/library/DataSet.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"

#include <system_error>

namespace oxd {

inspect::Inspection InspectFile(const std::string& file)
{
    try {
        inspect::Inspection inspection = inspect::Inspect(file);
        for (const std::string& message : LesserMessages(inspection)) {
            Explain(file + ": " + message);
        }
        return inspection;
    } catch (const std::system_error& error) {
        Explain(error.what());
        const bool isUnreadable = error.code() == std::errc::io_error;
        throw Failure(isUnreadable ? ExitCode::Damaged : ExitCode::CannotOpen, file, error.code().message());
    }
}

// The library has its own words for why it does not open a file, which are the same in every command then.
void RequireOpens(const inspect::Inspection& inspection)
{
    if (!inspection.Opens() || inspection.headerBytes == 0) {
        DataSet::Open(inspection.file);
        throw Failure(ExitCode::Damaged, inspection.file, "damaged, its header cannot be read");
    }
}

} // namespace oxd
