// The failures that concern a file: exceptions with what is known of it attached as Boost error information. All of
// this may be used by several threads at once.
#pragma once

#include "velstdlib/string/Texts.h"

#include <boost/assert/source_location.hpp>
#include <boost/exception/error_info.hpp>
#include <boost/exception/exception.hpp>

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

namespace veltaris::velstdlib::util {

using errinfo_filename = boost::error_info<struct tag_filename, std::string>;
// Where in a file's header the fault is.
using errinfo_section = boost::error_info<struct tag_section, std::string>;
using errinfo_key = boost::error_info<struct tag_key, std::string>;
using errinfo_fileversion = boost::error_info<struct tag_fileversion, std::int32_t>;

// How the version appears in diagnostic texts: without the digit grouping that the program's locale may have.
std::string to_string(const errinfo_fileversion& version);

// The base of these exceptions. what() returns the text, which does not change.
class CVELException : public virtual boost::exception, public virtual std::exception
{
public:
    explicit CVELException(const std::string& text) : m_text(text) {} // NOLINT(bugprone-throw-keyword-missing)
    const char* what() const noexcept override { return m_text.what(); }

private:
    std::runtime_error m_text; // whose copies share the text, so that copying this cannot fail
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

// The functions below are the only ones that raise these exceptions. Each composes the text, attaches the file's name
// and reports `where` as the place of the failure, which by default is the caller's. The texts are those of
// velstdlib/string/Texts.h.

// Throws CVELFileOpenException when a file cannot be opened; `error` is a value of errno.
[[noreturn]] void ThrowFileOpen(const std::string& filename, int error,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
// Throws CVELFileOpenException for a file that nobody has the permission to write, without an attempt to open it.
[[noreturn]] void ThrowProtectedOpen(const std::string& filename, const boost::source_location& where);
// Throws CVELFileSaveException when no file can hold the data set.
[[noreturn]] void ThrowFileSave(const std::string& filename, string::TextId reason,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
// Throws CVELFileVersionException when a file, or a part of one, has a version that the library does not know.
[[noreturn]] void ThrowFileVersion(const std::string& filename, std::int32_t version,
                                   const boost::source_location& where = BOOST_CURRENT_LOCATION);
// The place in a header that a failure is about.
struct CHeaderPlace
{
    std::string section;
    std::string key;
};
// Throws CVELFileBadContentException when the header contradicts itself or exceeds a limit at this place.
[[noreturn]] void ThrowBadContent(const std::string& filename, const CHeaderPlace& place,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);
// Throws CVELFileBadContentException when the header is unusable as a whole.
[[noreturn]] void ThrowBadContent(const std::string& filename,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);
// Throws CVELFileWriteProtectedException when a header is to be written for a file that nobody may write.
[[noreturn]] void ThrowWriteProtected(const std::string& filename,
                                      const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace veltaris::velstdlib::util
