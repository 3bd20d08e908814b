#include "tool/ToolTest.h"

#include <boost/nowide/convert.hpp>

#include <cstdint>
#include <cstdlib>

#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <sys/stat.h>

namespace {

// A process is given the rest of its line as it stands, where double quotes do what single ones do in a shell, and a
// backslash before one is written twice.
std::wstring Line(const std::string& arguments)
{
    std::string line;
    for (const char c : arguments) {
        if (c == '\'' && line.ends_with('\\'))
            line += '\\';
        line += c == '\'' ? '"' : c;
    }
    return boost::nowide::widen(line);
}

} // namespace

// What it writes goes where this process writes, which is to files meanwhile.
int RunTool(const std::string& arguments, const char* tool)
{
    const std::wstring program = boost::nowide::widen(tool), line = Line(arguments);
    const int before[] = {_dup(1), _dup(2)};
    for (const int descriptor : {1, 2}) {
        const int there = _open(descriptor == 1 ? "results.txt" : "diagnostics.txt",
                                _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
        _dup2(there, descriptor);
        _close(there);
    }
    // Wine gives up a process that does not start within ten seconds, as on a busy machine.
    std::intptr_t exitCode = -1;
    for (int attempt = 0; attempt < 3 && exitCode == -1; ++attempt)
        exitCode = _wspawnl(_P_WAIT, program.c_str(), L"oxd", line.c_str(), nullptr);
    for (const int descriptor : {1, 2}) {
        _dup2(before[descriptor - 1], descriptor);
        _close(before[descriptor - 1]);
    }
    return static_cast<int>(exitCode);
}

void SetVariable(const char* name, const char* value)
{
    _putenv_s(name, value);
}
