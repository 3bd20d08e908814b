/* A program in plain C that knows the header only. It starts where every program does: with an untouched library. */
#include <VELOxdDll.h>

#include <stdio.h>
#include <string.h>

static int failures = 0;

static void Expect(bool condition, const char* what)
{
    if (!condition) {
        fprintf(stderr, "not so: %s (%s)\n", what, VELGetLastError());
        ++failures;
    }
}

int main(int argc, char** argv)
{
    const char* const path = argc > 1 ? argv[1] : "client.oxd";
    const int32_t line[3] = {-5, 0, 5};
    int32_t read[3] = {0, 0, 0};
    uint64_t handle = 0;

    Expect(!VELHasLastError(), "no error at the start");
    Expect(strcmp(VELGetLastError(), "") == 0, "an empty error text at the start");
    Expect(CreateOxdFile(path) == 1, "the first handle is 1");
    Expect(CreateGroup(1, 32) == 0, "the first group is 0");
    SetChannelCount(1, 0, 1);
    SetChannelXYDimension(1, 0, 0, 3, 1);
    SetChannelData_LineRaw(1, 0, 0, 0, line);
    SaveOxdFile(1);
    Expect(!VELHasLastError(), "a file can be made and saved");

    handle = OpenOxdFile(path);
    GetChannelData_LineRaw(handle, 0, 0, 0, 0, read);
    Expect(memcmp(line, read, sizeof line) == 0, "what is read is what was written");
    Expect(!VELHasLastError(), "no error at the end");
    CloseOxdFile(handle);
    CloseOxdFile(1);
    remove(path);
    return failures;
}
