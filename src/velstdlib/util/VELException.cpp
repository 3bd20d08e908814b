#include "velstdlib/util/VELException.h"

#include <boost/exception/errinfo_api_function.hpp>
#include <boost/exception/errinfo_errno.hpp>
#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>

#include <cerrno>

namespace veltaris::velstdlib::util {

using string::FormatText;
using string::TextId;

namespace {

CVELFileBadContentException BadContent(const std::string& filename)
{
    CVELFileBadContentException failure(FormatText(TextId::FileCorrupted, {filename}));
    failure << errinfo_filename(filename);
    return failure;
}

[[noreturn]] void ThrowOpen(TextId text, const std::string& filename, int error, const boost::source_location& where)
{
    boost::throw_exception(CVELFileOpenException(FormatText(text, {filename}))
                               << boost::errinfo_api_function("open") << boost::errinfo_errno(error)
                               << errinfo_filename(filename),
                           where);
}

} // namespace

void ThrowFileOpen(const std::string& filename, int error, const boost::source_location& where)
{
    ThrowOpen(error == ENOENT ? TextId::FileNotFound : TextId::FileCannotBeOpened, filename, error, where);
}

void ThrowProtectedOpen(const std::string& filename, const boost::source_location& where)
{
    ThrowOpen(TextId::FileWriteProtected, filename, EACCES, where);
}

void ThrowFileSave(const std::string& filename, TextId reason, const boost::source_location& where)
{
    const std::string text = FormatText(TextId::FileCannotBeSaved, {string::GetText(reason), filename});
    boost::throw_exception(CVELFileSaveException(text) << errinfo_filename(filename), where);
}

std::string to_string(const errinfo_fileversion& version)
{
    return "[" + boost::tag_type_name<tag_fileversion>() + "] = " + std::to_string(version.value()) + "\n";
}

void ThrowFileVersion(const std::string& filename, std::int32_t version, const boost::source_location& where)
{
    const std::string text = FormatText(TextId::FileVersionUnknown, {std::to_string(version)});
    boost::throw_exception(CVELFileVersionException(text) << errinfo_fileversion(version) << errinfo_filename(filename),
                           where);
}

void ThrowBadContent(const std::string& filename, const CHeaderPlace& place, const boost::source_location& where)
{
    boost::throw_exception(BadContent(filename) << errinfo_section(place.section) << errinfo_key(place.key), where);
}

void ThrowBadContent(const std::string& filename, const boost::source_location& where)
{
    boost::throw_exception(BadContent(filename), where);
}

void ThrowWriteProtected(const std::string& filename, const boost::source_location& where)
{
    const std::string text = FormatText(TextId::FileWriteProtected, {filename});
    boost::throw_exception(CVELFileWriteProtectedException(text) << errinfo_filename(filename), where);
}

} // namespace veltaris::velstdlib::util
