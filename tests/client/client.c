/* A program in plain C that knows the header only. It starts where every program does: with an untouched library. */
#include <VELOxdDll.h>

#include <stdio.h>
#include <string.h>

int main(int argc, char** argv)
{
    const char* const path = argc > 1 ? argv[1] : "client.oxd";
    const int32_t line[3] = {-5, 0, 5};
    int32_t read[3] = {0, 0, 0};
    const bool untouched = !VELHasLastError() && strcmp(VELGetLastError(), "") == 0 && CreateOxdFile(path) == 1;

    SetChannelCount(1, CreateGroup(1, 32), 1);
    SetChannelXYDimension(1, 0, 0, 3, 1);
    SetChannelData_LineRaw(1, 0, 0, 0, line);
    SaveOxdFile(1);
    GetChannelData_LineRaw(OpenOxdFile(path), 0, 0, 0, 0, read);
    CloseOxdFile(2);
    CloseOxdFile(1);
    const bool failed = VELHasLastError();
    if (failed)
        fprintf(stderr, "%s\n", VELGetLastError());
    return remove(path) == 0 && untouched && !failed && memcmp(line, read, sizeof line) == 0 ? 0 : 1;
}
