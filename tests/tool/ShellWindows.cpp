#include "tool/ToolTest.h"

#include <boost/nowide/convert.hpp>

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

// Sends what this process writes to `descriptor`, and what those that it starts do, to a file while it lives.
class Redirection
{
public:
    Redirection(int descriptor, const char* file) : m_descriptor(descriptor), m_before(_dup(descriptor))
    {
        const int there = _open(file, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
        _dup2(there, m_descriptor);
        _close(there);
    }
    ~Redirection()
    {
        _dup2(m_before, m_descriptor);
        _close(m_before);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

private:
    int m_descriptor;
    int m_before;
};

} // namespace

int RunTool(const std::string& arguments, const char* tool)
{
    const Redirection results(1, "results.txt");
    const Redirection diagnostics(2, "diagnostics.txt");
    return static_cast<int>(
        _wspawnl(_P_WAIT, boost::nowide::widen(tool).c_str(), L"oxd", Line(arguments).c_str(), nullptr));
}
