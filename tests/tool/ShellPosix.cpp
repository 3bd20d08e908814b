#include "tool/ToolTest.h"

#include <cstdlib>

#include <sys/wait.h>

int RunTool(const std::string& arguments, const char* tool)
{
    const std::string command = std::string("\"") + tool + "\" > results.txt 2> diagnostics.txt " + arguments;
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): one thread, and a shell is what redirects streams
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void SetVariable(const char* name, const char* value)
{
    setenv(name, value, 1); // NOLINT(concurrency-mt-unsafe): there is one thread
}
