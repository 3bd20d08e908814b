/* Makes the file named by the argument, opens it again and prints "ok" when it holds what was put in. */

#include <VELOxdDll.h>

#include <stdio.h>
#include <string.h>

static int Fail(const char* what)
{
    fprintf(stderr, "%s: %s\n", what, VELGetLastError());
    return 1;
}

int main(int argc, char** argv)
{
    const int32_t line[3] = {-256, 0, 65536};
    int32_t readBack[3] = {0, 0, 0};
    uint64_t handle;
    uint64_t group;

    if (argc != 2) {
        return 2;
    }

    handle = CreateOxdFile(argv[1]);
    group = CreateGroup(handle, 32);
    SetChannelCount(handle, group, 1);
    SetChannelXYDimension(handle, group, 0, 3, 1);
    SetChannelData_LineRaw(handle, group, 0, 0, line);
    SaveOxdFile(handle);
    CloseOxdFile(handle);
    if (VELHasLastError()) {
        return Fail("making the file");
    }

    handle = OpenOxdFile(argv[1]);
    GetChannelData_LineRaw(handle, 0, 0, 0, 0, readBack);
    CloseOxdFile(handle);
    if (VELHasLastError()) {
        return Fail("reading it back");
    }
    if (memcmp(line, readBack, sizeof line) != 0) {
        return Fail("other samples came back");
    }
    puts("ok");
    return 0;
}
