#include "oxd/edit/OutputDraft.h"

#include "oxd/edit/Preview.h"

namespace oxd {

OutputDraft::OutputDraft(const Destination& output, bool isDryRun) : m_isDryRun(isDryRun)
{
    if (isDryRun && output.name.empty()) {
        m_file.emplace();
    } else {
        m_file.emplace(output);
    }
}

std::string OutputDraft::Finish(const std::string& file, const std::string& saved)
{
    if (m_isDryRun) {
        return Preview(file, saved, m_file->Name());
    }
    m_file->Close();
    return {};
}

} // namespace oxd
