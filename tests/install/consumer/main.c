/* Creates the file named by the argument, opens it again and prints "ok" if it holds what was written. */

#include <VELOxdDll.h>

#include <stdio.h>

int main(int argc, char** argv)
{
    const char* const path = argc == 2 ? argv[1] : NULL;
    const uint64_t created = CreateOxdFile(path);
    SetLogicalGroupId(created, CreateGroup(created, 32), 4711);
    SaveOxdFile(created);
    const bool same = GetLogicalGroupId(OpenOxdFile(path), 0) == 4711;
    puts(same && !VELHasLastError() ? "ok" : VELGetLastError());
    return same && !VELHasLastError() ? 0 : 1;
}
