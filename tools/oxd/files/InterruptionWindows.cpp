#include "oxd/files/Interruption.h"

#include "oxd/system/Failure.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string>
#include <system_error>

#include <windows.h>

namespace oxd::interruption {

namespace {

enum class Stage
{
    NoFile,
    Temporary,
    Interrupted, // with a temporary file, which the command has to remove
    Committed,
    Ending
};

// The system calls the handler in a thread of its own.
std::atomic<Stage> stage = Stage::NoFile;
std::atomic<bool> hasFolder = false;
constexpr std::size_t longestPath = 32768;
std::array<wchar_t, longestPath> temporaryFolder{};

// From `expected` to `next`; otherwise `expected` becomes the stage that was found.
bool Proceed(Stage& expected, Stage next)
{
    return stage.compare_exchange_strong(expected, next);
}

// Whether the command is left to come to its own end.
bool MayGoOn()
{
    Stage noFile = Stage::NoFile;
    Stage temporary = Stage::Temporary;
    if (Proceed(noFile, Stage::Ending)) {
        return false;
    }
    return Proceed(temporary, Stage::Interrupted) || temporary == Stage::Committed;
}

BOOL WINAPI End(DWORD event)
{
    if (!MayGoOn()) {
        Abandon();
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(ExitCode::Interrupted));
    }
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        Sleep(INFINITE); // the system ends the process once this function returns
    }
    return TRUE;
}

void RequireUninterrupted(bool isSo)
{
    if (!isSo) {
        throw Failure(ExitCode::Interrupted, "interrupted", "nothing was changed");
    }
}

} // namespace

void Heed()
{
    SetConsoleCtrlHandler(End, TRUE);
}

void Guard(const std::filesystem::path&)
{
    Stage before = Stage::NoFile;
    const bool isFirst = Proceed(before, Stage::Temporary);
    if (!isFirst && (before != Stage::Committed || !Proceed(before, Stage::Temporary))) {
        Sleep(INFINITE); // the process is about to end
    }
}

void GuardFolder(const std::filesystem::path& folder)
{
    const std::wstring& name = folder.native();
    if (name.size() >= temporaryFolder.size()) {
        throw std::system_error(std::make_error_code(std::errc::filename_too_long));
    }
    *std::copy(name.begin(), name.end(), temporaryFolder.begin()) = L'\0';
    hasFolder = true;
}

void ReleaseFolder()
{
    hasFolder = false;
}

// Nothing is there to be removed, but the command is left to come to its own end.
void Defer()
{
    Guard({});
}

void Check()
{
    RequireUninterrupted(stage != Stage::Interrupted);
}

void Commit()
{
    Stage before = Stage::Temporary;
    RequireUninterrupted(Proceed(before, Stage::Committed));
}

void Release()
{
    stage = Stage::NoFile;
}

void Abandon()
{
    if (hasFolder) {
        RemoveDirectoryW(temporaryFolder.data());
    }
}

} // namespace oxd::interruption
