#include "tool/Shell.h"

#include <boost/nowide/convert.hpp>

#include <utility>
#include <vector>

#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <sys/stat.h>

namespace {

// Blanks outside of single quotes part the arguments; a process gets them in double quotes.
std::vector<std::wstring> Words(const std::string& arguments)
{
    std::vector<std::wstring> words{L"oxd"};
    bool quoted = false;
    bool inside = false;
    for (const wchar_t c : boost::nowide::widen(arguments)) {
        quoted ^= c == L'\'';
        if (c == L' ' && !quoted) {
            inside = false;
            continue;
        }
        if (!std::exchange(inside, true))
            words.emplace_back();
        if (c != L'\'')
            words.back() += c;
    }
    return words;
}

std::wstring Quoted(std::wstring word)
{
    if (word.empty() || word.find_first_of(L" \n") != std::wstring::npos)
        word = L'"' + word + L'"';
    return word;
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
    std::vector<std::wstring> words = Words(arguments);
    std::vector<const wchar_t*> pointers;
    for (std::wstring& word : words) {
        word = Quoted(word);
        pointers.push_back(word.c_str());
    }
    pointers.push_back(nullptr);
    const Redirection results(1, "results.txt");
    const Redirection diagnostics(2, "diagnostics.txt");
    return static_cast<int>(_wspawnv(_P_WAIT, boost::nowide::widen(tool).c_str(), pointers.data()));
}
