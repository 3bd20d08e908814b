// Failures that are no surprise: with these, walks through information end.
#pragma once

#include "api/Arguments.h"

#include <string>
#include <string_view>

// The text of a failure of one export, made once, so that the failure is stored without throwing anything. It reads
// "<reason><value>" with the diagnostics of an exception that the export throws. Does not change, so that any number of
// threads may use it.
class CExpectedFailure
{
public:
    // Throws std::bad_alloc when there is not enough memory for the whole text.
    CExpectedFailure(const CCall& call, std::string_view reason);

    // Makes this the last error. Throws std::bad_alloc.
    void Store(std::string_view value = {}) const;

private:
    std::string m_text; // without the value
    std::string m_end;  // what stands behind the value
};
