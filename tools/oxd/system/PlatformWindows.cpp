#include "oxd/system/Platform.h"

#include <boost/nowide/convert.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace oxd::platform {

namespace {

constexpr int standardOutput = 1;

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

HMODULE ModuleOf(const void* function)
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCWSTR>(function), &module);
    return module;
}

// That of the program if there is no module.
std::string NameOf(HMODULE module)
{
    std::wstring name(1 << 15, L'\0'); // as long as names get
    name.resize(GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size())));
    return boost::nowide::narrow(name);
}

// From the fixed part of the version resource, which a text of a fixed length precedes.
std::string VersionOf(HMODULE module)
{
    constexpr std::size_t fixedPart = 40;
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16)); // RT_VERSION
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
    if (loaded == nullptr || SizeofResource(module, found) < fixedPart + sizeof(VS_FIXEDFILEINFO)) {
        return {};
    }
    VS_FIXEDFILEINFO info = {};
    std::memcpy(&info, static_cast<const char*>(LockResource(loaded)) + fixedPart, sizeof info);
    return std::to_string(HIWORD(info.dwFileVersionMS)) + "." + std::to_string(LOWORD(info.dwFileVersionMS)) + "." +
           std::to_string(HIWORD(info.dwFileVersionLS));
}

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

LoadedFile FileOf(const void* function)
{
    const HMODULE module = ModuleOf(function);
    return module == nullptr ? LoadedFile() : LoadedFile{NameOf(module), VersionOf(module)};
}

std::string ProgramFile()
{
    return NameOf(nullptr);
}

TextSettings GetTextSettings()
{
    std::wstring locale(LOCALE_NAME_MAX_LENGTH, L'\0');
    const int length = GetUserDefaultLocaleName(locale.data(), LOCALE_NAME_MAX_LENGTH);
    locale.resize(static_cast<std::size_t>(std::max(length, 1) - 1)); // its end counts
    const UINT codePage = GetACP();
    TextSettings settings{boost::nowide::narrow(locale), "code page " + std::to_string(codePage), {}};
    if (codePage != CP_UTF8) {
        settings.remedy =
            "Use a Windows from 10, version 1903, on: this one's code page lacks characters that names of "
            "files may have.";
    }
    return settings;
}

int OpenStream(const std::string& name)
{
    return _wopen(boost::nowide::widen(name).c_str(), _O_WRONLY | _O_BINARY);
}

bool IsTerminal(int descriptor)
{
    return _isatty(descriptor) != 0;
}

bool OpenInBrowser(const std::string& file)
{
    constexpr INT_PTR lastError = 32; // as the system defines it
    const HINSTANCE opened =
        ShellExecuteW(nullptr, L"open", boost::nowide::widen(file).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(opened) > lastError;
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
