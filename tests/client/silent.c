/* Opens a file with a number that cannot be read, and prints nothing. */
#include "VELOxdDll.h"

#include <stdio.h>

static bool Write(const char* name)
{
    static const char header[] = "[DataSet]\r\nVersion=2\r\nGroupCount=many\r\n\r\n#!";
    FILE* const file = fopen(name, "wb");
    if (file == NULL)
        return false;
    const size_t written = fwrite(header, 1, sizeof header - 1, file);
    return fclose(file) == 0 && written == sizeof header - 1;
}

int main(int argc, char** argv)
{
    if (argc != 2 || !Write(argv[1]))
        return 1;
    const uint64_t file = OpenOxdFile(argv[1]);
    return file == 0 || VELHasLastError() || remove(argv[1]) != 0 ? 1 : 0;
}
