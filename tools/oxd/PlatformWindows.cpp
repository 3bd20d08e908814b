#include "Platform.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <sys/stat.h>

namespace oxd::platform {

namespace {

constexpr int standardOutput = 1;
constexpr int standardError = 2;

// The characters in `codePage`. One that this code page lacks becomes its nearest or "?".
std::string Narrow(unsigned int codePage, const std::wstring& wide)
{
    const int length = static_cast<int>(wide.size());
    const auto convert = [&](char* out, int size) {
        return WideCharToMultiByte(codePage, 0, wide.data(), length, out, size, nullptr, nullptr);
    };
    std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(narrow.data(), static_cast<int>(narrow.size()));
    return narrow;
}

std::wstring Widen(const std::string& utf8)
{
    const int length = static_cast<int>(utf8.size());
    const auto convert = [&](wchar_t* out, int size) {
        return MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, out, size);
    };
    std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
    convert(wide.data(), static_cast<int>(wide.size()));
    return wide;
}

} // namespace

// The arguments that main gets are in the system's code page, which lacks most characters.
std::vector<std::string> Arguments(int, const char* const*)
{
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "command line");
    }
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(Narrow(CP_UTF8, wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

std::string FileName(const std::string& name)
{
    return Narrow(CP_ACP, Widen(name));
}

void IgnoreBrokenPipes()
{
}

int TakeStandardOutput()
{
    SetConsoleOutputCP(CP_UTF8);
    const int own = _dup(standardOutput);
    if (own >= 0) {
        _setmode(own, _O_BINARY); // lines end as they do elsewhere
    }
    if (_dup2(standardError, standardOutput) != 0) { // there is no standard error either
        const int nowhere = _open("NUL", _O_WRONLY);
        _dup2(nowhere, standardOutput);
    }
    return own;
}

int CreateFileFor(const std::string& name)
{
    return _wopen(Widen(name).c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}

bool IsRegularFile(int descriptor)
{
    struct _stat64 status = {};
    return _fstat64(descriptor, &status) == 0 && (status.st_mode & _S_IFREG) != 0;
}

bool IsTerminal(int descriptor)
{
    return _isatty(descriptor) != 0;
}

bool WriteAll(int descriptor, std::string_view text)
{
    constexpr std::size_t largestPiece = 1 << 20;
    while (!text.empty()) {
        const auto piece = static_cast<unsigned int>(std::min(text.size(), largestPiece));
        const int written = _write(descriptor, text.data(), piece);
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
