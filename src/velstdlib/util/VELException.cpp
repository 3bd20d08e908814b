#include "velstdlib/util/VELException.h"

#include <boost/exception/errinfo_api_function.hpp>
#include <boost/exception/errinfo_errno.hpp>
#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>

#include <cerrno>

namespace veltaris::velstdlib::util {

namespace {

std::string OpenText(const std::string& filename, int error)
{
    const char* const reason =
        error == ENOENT ? "The specified file was not found." : "The specified file cannot be opened.";
    return reason + (" Filename: " + filename);
}

} // namespace

void ThrowFileOpen(const std::string& filename, int error, const boost::source_location& where)
{
    boost::throw_exception(CVELFileOpenException(OpenText(filename, error))
                               << boost::errinfo_api_function("open") << boost::errinfo_errno(error)
                               << errinfo_filename(filename),
                           where);
}

void ThrowFileVersion(const std::string& filename, std::int32_t version, const boost::source_location& where)
{
    const std::string text =
        "The hed file has an unknown version. Please contact the Veltaris support to get a correct "
        "hed file. Version: " +
        std::to_string(version);
    boost::throw_exception(CVELFileVersionException(text) << errinfo_fileversion(version) << errinfo_filename(filename),
                           where);
}

void ThrowBadContent(const std::string& filename, const boost::source_location& where)
{
    const std::string text =
        "The hed file is corrupted. Please contact the Veltaris support to get a correct hed file. "
        "Filename: " +
        filename;
    boost::throw_exception(CVELFileBadContentException(text) << errinfo_filename(filename), where);
}

} // namespace veltaris::velstdlib::util
