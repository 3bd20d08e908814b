#include "oxd/system/OutputFile.h"

#include "oxd/system/Failure.h"
#include "oxd/system/Platform.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

std::filesystem::path ToPath(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

} // namespace

void RequireOtherFile(const std::string& input, const std::string& output)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(ToPath(input), ToPath(output), ignored)) {
        throw Failure(ExitCode::Usage, output, "is the file to read, which must stay as it is");
    }
}

OutputFile::~OutputFile()
{
    if (m_descriptor != closed) {
        platform::Close(m_descriptor);
        Remove();
    }
}

void OutputFile::Write(std::string_view bytes)
{
    Open();
    Require(platform::WriteAll(m_descriptor, bytes));
}

void OutputFile::Close()
{
    Open(); // in case nothing was written
    if (!platform::Close(std::exchange(m_descriptor, closed))) {
        const int error = errno;
        Remove();
        errno = error;
        Require(false);
    }
}

void OutputFile::Open()
{
    if (m_descriptor == closed) {
        m_descriptor = platform::CreateFileFor(m_name);
        Require(m_descriptor != closed);
        m_removable = platform::IsRegularFile(m_descriptor);
    }
}

void OutputFile::Require(bool success) const
{
    if (!success) {
        throw Failure(ExitCode::CannotWrite, m_name, std::generic_category().message(errno));
    }
}

// The name may be that of a link: what must go is the file that it points to.
void OutputFile::Remove() const
{
    if (m_removable) {
        std::error_code ignored;
        std::filesystem::remove(std::filesystem::canonical(ToPath(m_name), ignored), ignored);
    }
}

} // namespace oxd
