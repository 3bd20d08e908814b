#include "velstdlib/util/VELException.h"

#include <boost/exception/errinfo_api_function.hpp>
#include <boost/exception/errinfo_errno.hpp>
#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>

#include <cerrno>

namespace veltaris::velstdlib::util {

namespace {

constexpr const char* writeProtected = "The specified file is write protected.";

std::string FileText(const std::string& reason, const std::string& filename)
{
    return reason + " Filename: " + filename;
}

[[noreturn]] void ThrowOpen(const char* reason, const std::string& filename, int error,
                            const boost::source_location& where)
{
    boost::throw_exception(CVELFileOpenException(FileText(reason, filename))
                               << boost::errinfo_api_function("open") << boost::errinfo_errno(error)
                               << errinfo_filename(filename),
                           where);
}

} // namespace

void ThrowFileOpen(const std::string& filename, int error, const boost::source_location& where)
{
    const bool isMissing = error == ENOENT;
    ThrowOpen(isMissing ? "The specified file was not found." : "The specified file cannot be opened.", filename, error,
              where);
}

void ThrowProtectedOpen(const std::string& filename, const boost::source_location& where)
{
    ThrowOpen(writeProtected, filename, EACCES, where);
}

void ThrowFileSave(const std::string& filename, const std::string& reason, const boost::source_location& where)
{
    boost::throw_exception(CVELFileSaveException(FileText(reason, filename)) << errinfo_filename(filename), where);
}

std::string to_string(const errinfo_fileversion& version)
{
    return "[" + boost::tag_type_name<tag_fileversion>() + "] = " + std::to_string(version.value()) + "\n";
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

void ThrowWriteProtected(const std::string& filename, const boost::source_location& where)
{
    boost::throw_exception(
        CVELFileWriteProtectedException(FileText(writeProtected, filename)) << errinfo_filename(filename), where);
}

} // namespace veltaris::velstdlib::util
