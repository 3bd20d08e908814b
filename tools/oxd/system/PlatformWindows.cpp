#include "oxd/system/Platform.h"

#include <boost/nowide/convert.hpp>

#include <algorithm>
#include <cerrno>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace oxd::platform {

namespace {

constexpr int standardOutput = 1;
constexpr int standardError = 2;

// During its lifetime, the console takes what is written to it for UTF-8. Programs that come later find it as it was.
class ConsoleInUtf8
{
public:
    ConsoleInUtf8() : m_before(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~ConsoleInUtf8()
    {
        if (m_before != 0) { // there is a console
            SetConsoleOutputCP(m_before);
        }
    }
    ConsoleInUtf8(const ConsoleInUtf8&) = delete;
    ConsoleInUtf8& operator=(const ConsoleInUtf8&) = delete;

private:
    UINT m_before;
};

} // namespace

// The library takes names in the system's code page, which lacks most characters and silently puts similar ones in
// their place: that would be the name of another file. So the name must survive the way there and back.
std::optional<std::string> FileName(const std::string& name)
{
    const std::wstring wide = boost::nowide::widen(name);
    const int length = static_cast<int>(wide.size());
    const auto convert = [&](char* out, int size) {
        return WideCharToMultiByte(CP_ACP, 0, wide.data(), length, out, size, nullptr, nullptr);
    };
    std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(narrow.data(), static_cast<int>(narrow.size()));
    std::wstring back(wide.size(), L'\0');
    const int backLength =
        MultiByteToWideChar(CP_ACP, 0, narrow.data(), static_cast<int>(narrow.size()), back.data(), length);
    return backLength == length && back == wide ? std::optional(narrow) : std::nullopt;
}

void IgnoreBrokenPipes()
{
}

int TakeStandardOutput()
{
    static const ConsoleInUtf8 untilTheEnd;
    const int own = _dup(standardOutput);
    if (own >= 0) {
        _setmode(own, _O_BINARY); // lines end as they do elsewhere
    }
    const int nowhere = _open("NUL", _O_WRONLY);
    if (nowhere != standardOutput) {
        _dup2(nowhere, standardOutput);
        _close(nowhere);
    }
    return own;
}

void ShowStrayOutput()
{
    _dup2(standardError, standardOutput);
}

// Nobody but the reader of a pipe should open it to have a look.
bool IsStream(const std::string& name)
{
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    if (name.starts_with(R"(\\.\)")) {
        return true;
    }
    const HANDLE file = CreateFileW(boost::nowide::widen(name).c_str(), 0, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool isFile = GetFileType(file) == FILE_TYPE_DISK;
    CloseHandle(file);
    return !isFile;
}

int OpenStream(const std::string& name)
{
    return _wopen(boost::nowide::widen(name).c_str(), _O_WRONLY | _O_BINARY);
}

bool IsTerminal(int descriptor)
{
    return _isatty(descriptor) != 0;
}

bool WriteAll(int descriptor, std::string_view text)
{
    constexpr std::size_t largestChunk = 1 << 20;
    while (!text.empty()) {
        const auto chunk = static_cast<unsigned int>(std::min(text.size(), largestChunk));
        const int written = _write(descriptor, text.data(), chunk);
        if (written < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool Close(int descriptor)
{
    return _close(descriptor) == 0;
}

} // namespace oxd::platform
