#include "oxd/files/OutputFile.h"

#include "oxd/files/FilePath.h"
#include "oxd/files/InsertBytes.h"
#include "oxd/files/Interruption.h"
#include "oxd/files/PlatformFiles.h"
#include "oxd/files/Require.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Platform.h"

#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

namespace oxd {

namespace {

[[noreturn]] void Throw(std::errc error)
{
    throw std::system_error(std::make_error_code(error));
}

[[noreturn]] void Fail(const std::string& subject, const std::error_code& error)
{
    if (error == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
    throw Failure(ExitCode::CannotWrite, subject, error.message());
}

} // namespace

void RequireOtherFile(const std::string& input, const std::string& output)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(ToPath(input), ToPath(output), ignored)) {
        throw Failure(ExitCode::Usage, output, "is the file to read, which must stay as it is");
    }
}

// Runs a step and tells of its failure under the name that the user knows, or as one of a folder.
template <typename Step>
void OutputFile::Try(Step step, const std::filesystem::path* folder) const
{
    try {
        step();
    } catch (const std::system_error& error) {
        Fail(folder == nullptr ? Name() : InFolder(*folder), error.code());
    }
}

OutputFile::OutputFile(Destination destination)
    : m_destination(std::move(destination)), m_isStream(platform::IsStream(Name()))
{
    if (!m_isStream) {
        Try([this] {
            m_target = platform::FollowLinks(ToPath(Name()));
            CheckTarget();
        });
    }
}

OutputFile::~OutputFile()
{
    if (m_stream != closed) {
        platform::Close(m_stream);
    }
}

// Whoever took away the permission to write a file wants to keep it, although a new one could be put in its place.
void OutputFile::CheckTarget() const
{
    const std::filesystem::file_status status = std::filesystem::symlink_status(m_target);
    const bool exists = std::filesystem::exists(status);
    if (std::filesystem::is_directory(status) || (!exists && !Name().empty() && !m_target.has_filename())) {
        Throw(std::errc::is_a_directory);
    }
    if (exists && !m_destination.mayReplace) {
        Throw(std::errc::file_exists);
    }
    Require(!exists || platform::IsWritable(m_target));
}

void OutputFile::Write(std::string_view bytes)
{
    Begin();
    Try([&] { m_isStream ? Require(platform::WriteAll(m_stream, bytes)) : m_file->Write(bytes); });
}

std::string OutputFile::FileToFill()
{
    CreateFile();
    Try([this] { m_file->Close(); });
    return ToUtf8(m_file->Path());
}

void OutputFile::Insert(std::uint64_t place, std::string_view bytes)
{
    const std::filesystem::path folder = m_file->Path().parent_path();
    Try([&] { InsertBytes(m_file->Path(), place, bytes); }, m_isStream ? &folder : nullptr);
}

std::string OutputFile::FilledPlace() const
{
    return m_isStream && m_file ? InFolder(m_file->Path().parent_path()) : Name();
}

void OutputFile::Close()
{
    Begin(); // in case nothing was written
    if (m_isStream) {
        Try([this] {
            CopyToStream();
            Require(platform::Close(std::exchange(m_stream, closed)));
        });
        return;
    }
    Try([this] { m_file->MoveTo(m_target, m_destination.mayReplace); });
    try {
        Require(platform::FlushFolder(m_target.parent_path()));
    } catch (const std::system_error& error) {
        Complain(Name() + ": is written, but may not survive a loss of power: " + error.code().message());
    }
}

void OutputFile::Begin()
{
    if (m_isStream && m_stream == closed) {
        Try([this] {
            m_stream = platform::OpenStream(Name());
            Require(m_stream != closed);
        });
    } else if (!m_isStream && !m_file) {
        CreateFile();
    }
}

// What fails here concerns the folder, even where the file that is to be replaced could be written.
void OutputFile::CreateFile()
{
    const std::filesystem::path folder = Folder();
    Try([&] { m_file.emplace(folder, m_target); }, &folder);
}

std::filesystem::path OutputFile::Folder() const
{
    if (!m_isStream) {
        return m_target.parent_path();
    }
    try {
        return std::filesystem::temp_directory_path();
    } catch (const std::filesystem::filesystem_error& error) { // which may not name it
        Fail(Name() + ": folder for temporary files", error.code());
    }
}

std::string OutputFile::InFolder(const std::filesystem::path& folder) const
{
    return Name() + ": folder " + (folder.empty() ? "." : ToUtf8(folder));
}

// What something else wrote to a file, if it did.
void OutputFile::CopyToStream()
{
    if (!m_file) {
        return;
    }
    constexpr std::size_t chunk = std::size_t{1} << 20;
    std::ifstream file(m_file->Path(), std::ios::binary);
    file.exceptions(std::ios::badbit);
    for (std::vector<char> bytes(chunk); file;) {
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        interruption::Check();
        Require(platform::WriteAll(m_stream, {bytes.data(), static_cast<std::size_t>(file.gcount())}));
    }
}

} // namespace oxd
