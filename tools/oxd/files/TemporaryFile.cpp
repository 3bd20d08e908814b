#include "oxd/files/TemporaryFile.h"

#include "oxd/files/Interruption.h"
#include "oxd/files/PlatformFiles.h"
#include "oxd/files/Require.h"
#include "oxd/system/Platform.h"

#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace oxd {

namespace {

// Short, since the name beside it may be as long as the system allows; and hidden on systems that hide such names.
std::string RandomName()
{
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz234567";
    constexpr int length = 20; // of 5 bits each
    std::random_device random;
    std::string name = ".oxd-";
    for (int i = 0; i < length; ++i) {
        name += letters[random() % letters.size()];
    }
    return name + ".tmp";
}

// An interruption that comes before the file is there, or while it is made, finds it guarded.
int Create(const std::filesystem::path& file, const std::filesystem::path& replaced)
{
    interruption::Guard(file);
    const int descriptor = platform::CreateReplacement(file, replaced);
    if (descriptor < 0) {
        const int error = errno;
        interruption::Release();
        throw std::system_error(error, std::generic_category());
    }
    return descriptor;
}

} // namespace

TemporaryFile::TemporaryFile(const std::filesystem::path& folder, const std::filesystem::path& replaced)
    : m_path(folder / RandomName()), m_replaced(replaced), m_descriptor(Create(m_path, replaced))
{
}

TemporaryFile::~TemporaryFile()
{
    if (m_descriptor != closed) {
        platform::Close(m_descriptor);
    }
    if (!m_isMoved) {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
        interruption::Release();
    }
}

void TemporaryFile::Write(std::string_view bytes)
{
    interruption::Check();
    Require(platform::WriteAll(m_descriptor, bytes));
}

void TemporaryFile::Close()
{
    if (m_descriptor != closed) {
        Require(platform::Close(std::exchange(m_descriptor, closed)));
    }
}

void TemporaryFile::MoveTo(const std::filesystem::path& target, bool mayReplace)
{
    Flush();
    interruption::Commit();
    Require(platform::Move(m_path, target, mayReplace));
    m_isMoved = true;
}

void TemporaryFile::Flush()
{
    if (m_descriptor == closed) {
        m_descriptor = platform::OpenExisting(m_path);
        Require(m_descriptor != closed);
    }
    platform::FinishRights(m_descriptor, m_replaced);
    Require(platform::Flush(m_descriptor));
    Close();
}

} // namespace oxd
