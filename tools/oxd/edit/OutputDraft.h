// The file that an edited data set is saved to, which takes its place only if the command is no dry run.
#pragma once

#include "oxd/files/OutputFile.h"

#include <optional>
#include <string>

namespace oxd {

class OutputDraft
{
public:
    // For a dry run, the output is examined if it is named, and never written. Throws a Failure as OutputFile does.
    OutputDraft(const Destination& output, bool isDryRun);

    OutputFile& File() { return *m_file; }

    // Puts what was saved from `file` in its place, or, for a dry run, gives the preview of it.
    std::string Finish(const std::string& file, const std::string& saved);

private:
    std::optional<OutputFile> m_file;
    bool m_isDryRun;
};

} // namespace oxd
