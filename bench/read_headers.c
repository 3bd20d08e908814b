/* What a scan is measured against: opens each file and reads as many bytes as its header has, and nothing else.
   read_headers LIST, where each line of LIST is a number of bytes, a blank and the name of a file. */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    FILE* const list = argc == 2 ? fopen(argv[1], "r") : NULL;
    char* line = NULL;
    size_t room = 0;
    char* buffer = NULL;
    size_t held = 0;
    if (list == NULL)
        return 2;
    while (getline(&line, &room, list) > 0) {
        char* name = NULL;
        const size_t bytes = strtoull(line, &name, 10);
        name[strcspn(name, "\n")] = '\0';
        if (bytes > held) {
            free(buffer);
            buffer = malloc(bytes);
            held = bytes;
        }
        const int file = open(name + 1, O_RDONLY);
        if (file < 0 || buffer == NULL || read(file, buffer, bytes) < 0) {
            perror(name + 1);
            return 1;
        }
        close(file);
    }
    free(buffer);
    free(line);
    fclose(list);
    return 0;
}
