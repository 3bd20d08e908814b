// Findings of several files as one log in SARIF 2.1.0, which tools for code review show.
#pragma once

#include "oxd/inspection/InspectFile.h"

#include <memory>
#include <string>

namespace oxd {

class SarifLog
{
public:
    explicit SarifLog(const std::string& toolVersion);
    ~SarifLog();
    SarifLog(const SarifLog&) = delete;
    SarifLog& operator=(const SarifLog&) = delete;

    void Add(const inspect::Inspection& inspection);
    // A file that could not be inspected at all, and why.
    void AddFailure(const std::string& file, const std::string& reason);

    // The log as a JSON document that ends with a line feed.
    std::string Text() const;

private:
    struct Content;
    std::unique_ptr<Content> m_content;
};

} // namespace oxd
