// The failures that concern a file, with what is known of it attached as Boost error information.
#pragma once

#include <boost/assert/source_location.hpp>
#include <boost/exception/error_info.hpp>
#include <boost/exception/exception.hpp>

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

namespace veltaris::velstdlib::util {

using errinfo_filename = boost::error_info<struct tag_filename, std::string>;
using errinfo_fileversion = boost::error_info<struct tag_fileversion, std::int32_t>;
using errinfo_chedtype = boost::error_info<struct tag_chedtype, std::string>;

class CVELException : public virtual boost::exception, public virtual std::exception
{
public:
    explicit CVELException(const std::string& text) : m_text(text) {}
    const char* what() const noexcept override { return m_text.what(); }

private:
    std::runtime_error m_text; // shares its text between copies, so that copying the exception cannot fail
};

class CVELFileException : public CVELException
{
    using CVELException::CVELException;
};

class CVELFileOpenException : public CVELFileException
{
    using CVELFileException::CVELFileException;
};

class CVELFileSaveException : public CVELFileException
{
    using CVELFileException::CVELFileException;
};

class CVELFileVersionException : public CVELFileException
{
    using CVELFileException::CVELFileException;
};

class CVELFileBadContentException : public CVELFileException
{
    using CVELFileException::CVELFileException;
};

// The ways in which these are raised. `where` is reported as the place of the failure: the caller's, by default.
[[noreturn]] void ThrowFileOpen(const std::string& filename, int error,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
[[noreturn]] void ThrowFileVersion(const std::string& filename, std::int32_t version,
                                   const boost::source_location& where = BOOST_CURRENT_LOCATION);
[[noreturn]] void ThrowBadContent(const std::string& filename,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace veltaris::velstdlib::util
