/* A program without C++ of its own, into which a C++ run-time and the library are loaded, so that all of it can be
   found by what comes later: host FILE LIBRARY... Uses VELOxdDll, wherever it is in the list, also where it throws
   inside. */
#define _POSIX_C_SOURCE 200809L

#include <VELOxdDll.h>

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

/* Copies the address of a function to `pointer`, which points to a function pointer: standard C has no conversion. */
static bool Find(const char* name, void* pointer)
{
    void* const address = dlsym(RTLD_DEFAULT, name);
    memcpy(pointer, &address, sizeof address);
    if (address == NULL)
        fprintf(stderr, "%s is not found\n", name);
    return address != NULL;
}

int main(int argc, char** argv)
{
    for (int i = 2; i < argc; ++i)
        if (dlopen(argv[i], RTLD_NOW | RTLD_GLOBAL) == NULL) {
            fprintf(stderr, "%s\n", dlerror());
            return 2;
        }
    uint64_t (*create)(const char*) = NULL;
    uint64_t (*open)(const char*) = NULL;
    uint64_t (*makeGroup)(uint64_t, int32_t) = NULL;
    uint64_t (*groups)(uint64_t) = NULL;
    void (*save)(uint64_t) = NULL;
    bool (*failed)(void) = NULL;
    const char* (*text)(void) = NULL;
    if (!Find("CreateOxdFile", &create) || !Find("OpenOxdFile", &open) || !Find("CreateGroup", &makeGroup) ||
        !Find("GetGroupCount", &groups) || !Find("SaveOxdFile", &save) || !Find("VELHasLastError", &failed) ||
        !Find("VELGetLastError", &text))
        return 2;
    const uint64_t file = create(argv[1]);
    makeGroup(file, 16);
    save(file);
    const bool works = !failed() && groups(open(argv[1])) == 1;
    open("/nowhere/missing.oxd");
    const bool tellsFailure = failed() && strstr(text(), "missing.oxd") != NULL;
    printf("%s, %s\n", works ? "works" : "does not work", tellsFailure ? "tells of failures" : "tells of no failure");
    return works && tellsFailure ? 0 : 1;
}
