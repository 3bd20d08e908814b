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

// What all of them are. The text is what() and does not change.
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

// A file that cannot be opened, for the reason `error`, which is a value of errno.
[[noreturn]] void ThrowFileOpen(const std::string& filename, int error,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
// The same for a file that is not even tried to be opened for writing, since nobody has the permission to write it.
[[noreturn]] void ThrowProtectedOpen(const std::string& filename, const boost::source_location& where);
// A data set that no file can hold.
[[noreturn]] void ThrowFileSave(const std::string& filename, string::TextId reason,
                                const boost::source_location& where = BOOST_CURRENT_LOCATION);
// A file, or a part of one, of a version that the library does not know.
[[noreturn]] void ThrowFileVersion(const std::string& filename, std::int32_t version,
                                   const boost::source_location& where = BOOST_CURRENT_LOCATION);
// The place in a header that a failure is about.
struct CHeaderPlace
{
    std::string section;
    std::string key;
};
// A file whose header contradicts itself or asks for more than there may be at this place.
[[noreturn]] void ThrowBadContent(const std::string& filename, const CHeaderPlace& place,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);
// A file whose header is unusable as a whole.
[[noreturn]] void ThrowBadContent(const std::string& filename,
                                  const boost::source_location& where = BOOST_CURRENT_LOCATION);
// A header that is about to be written for a file that nobody has the permission to write.
[[noreturn]] void ThrowWriteProtected(const std::string& filename,
                                      const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace veltaris::velstdlib::util
