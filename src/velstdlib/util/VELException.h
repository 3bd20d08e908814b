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

// The version in diagnostic texts: without the digit grouping of the program's locale.
std::string to_string(const errinfo_fileversion& version);

class CVELException : public virtual boost::exception, public virtual std::exception
{
public:
    explicit CVELException(const std::string& text) : m_text(text) {} // NOLINT(bugprone-throw-keyword-missing)
    const char* what() const noexcept override { return m_text.what(); }

private:
    std::runtime_error m_text; // shares its text between copies, so that
                               // copying the exception cannot fail
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

class CVELFileWriteProtectedException : public CVELFileException
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
// To be written, by a caller that has found that it must not be.
[[noreturn]] void ThrowProtectedOpen(const std::string& filename, const boost::source_location& where);
inline constexpr const char* tooMuchText = "There is too much text for one file.";
[[noreturn]] void ThrowFileSave(const std::string& filename, const std::string& reason,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
[[noreturn]] void ThrowFileVersion(const std::string& filename, std::int32_t version,
                                   const boost::source_location& where = BOOST_CURRENT_LOCATION);
[[noreturn]] void ThrowBadContent(const std::string& filename,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);

[[noreturn]] void ThrowWriteProtected(const std::string& filename,
                                      const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace veltaris::velstdlib::util
