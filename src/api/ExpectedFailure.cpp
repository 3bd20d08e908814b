#include "api/ExpectedFailure.h"

#include "api/LastError.h"

#include <boost/exception/diagnostic_information.hpp>

#include <new>

CExpectedFailure::CExpectedFailure(const CCall& call, std::string_view reason)
{
    try {
        call.FailAlone(reason);
    } catch (const boost::exception& failure) {
        m_text = boost::diagnostic_information(failure, true);
    }
    const auto found = m_text.find(reason);
    if (found == std::string::npos) // which is how diagnostics tell of a lack of memory
        throw std::bad_alloc();
    m_end = m_text.substr(found + reason.size());
    m_text.resize(found + reason.size());
}

void CExpectedFailure::Store(std::string_view value) const
{
    std::string text;
    text.reserve(m_text.size() + value.size() + m_end.size());
    StoreLastError(text.append(m_text).append(value).append(m_end).c_str());
}
