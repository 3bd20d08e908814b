#include "oxd/library/DataSet.h"

#include "oxd/library/Diagnostic.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Platform.h"

#include <new>

namespace oxd {

namespace {

std::string NameForLibrary(const std::string& file, ExitCode ifImpossible)
{
    const auto name = platform::FileName(file);
    if (!name) {
        throw Failure(ifImpossible, file, "the system's code page lacks a character of this name");
    }
    return *name;
}

// The text that the last failed call left. A buffer that was too short is no failure to look into, since a longer one
// is tried. A lack of memory says nothing about a file or a line, and must not pass for damage there.
std::string TakeLastError()
{
    std::string text = VELGetLastError();
    if (!diagnostic::IsShortBuffer(text)) {
        Explain(text);
    }
    if (diagnostic::IsOutOfMemory(text)) {
        throw std::bad_alloc();
    }
    return text;
}

Failure OpenFailure(const std::string& file, const std::string& text)
{
    const std::string reason =
        diagnostic::IsStreamFailure(text) ? "damaged, it ends before its samples do" : diagnostic::Reason(text);
    return {diagnostic::IsOpenFailure(text) ? ExitCode::CannotOpen : ExitCode::Damaged, file, reason};
}

Failure SaveFailure(const std::string& file, const std::string& text)
{
    const std::string reason =
        diagnostic::IsStreamFailure(text) ? "not written whole, is the disk full?" : diagnostic::Reason(text);
    return {ExitCode::CannotWrite, file, reason};
}

} // namespace

LibraryError::LibraryError(const std::string& text)
    : std::runtime_error(diagnostic::Reason(text)), m_shortBuffer(diagnostic::IsShortBuffer(text))
{
}

void ThrowPendingError()
{
    if (VELHasLastError()) {
        throw LibraryError(TakeLastError());
    }
}

DataSet DataSet::Open(const std::string& file)
{
    DataSet opened(OpenOxdFile(NameForLibrary(file, ExitCode::CannotOpen).c_str()));
    if (opened.m_handle == 0) {
        throw OpenFailure(file, TakeLastError());
    }
    // A file without a complete header opens as an empty data set, which differs from others by having no version.
    GetOxdVersion(opened.m_handle);
    if (VELHasLastError()) {
        TakeLastError();
        throw Failure(ExitCode::Damaged, file, "not an .oxd file, it has no header");
    }
    return opened;
}

DataSet DataSet::Create()
{
    DataSet created(CreateOxdFile(""));
    ThrowPendingError();
    return created;
}

std::string DataSet::SaveTo(OutputFile& output)
{
    NameForLibrary(output.Name(), ExitCode::CannotWrite);
    std::string file = output.FileToFill();
    Call(ChangeOxdFilename, NameForLibrary(file, ExitCode::CannotWrite).c_str());
    SaveOxdFile(m_handle);
    if (VELHasLastError()) {
        throw SaveFailure(output.FilledPlace(), TakeLastError());
    }
    return file;
}

} // namespace oxd
