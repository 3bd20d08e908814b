#include "failures.h"

#include <VELOxdDll.h>
#include <mex.h>
#include <stdlib.h>
#include <string.h>
#include <veloxd_blocks.h>

/* A copy of what stands behind `begin` up to `end`; NULL if `begin` is not in the text. */
static char* Between(const char* text, const char* begin, char end)
{
    const char* const found = strstr(text, begin);
    if (found == NULL)
        return NULL;
    const char* const first = found + strlen(begin);
    const char* const last = strchr(first, end);
    const size_t length = last == NULL ? strlen(first) : (size_t)(last - first);
    char* const copy = mxMalloc(length + 1);
    memcpy(copy, first, length);
    copy[length] = '\0';
    return copy;
}

/* The line of the library's text that says what failed, without a point at its end. */
static const char* Reason(const char* details)
{
    char* reason = Between(details, "std::exception::what: ", '\n');
    if (reason == NULL)
        reason = Between(details, "", '\n');
    const size_t length = strlen(reason);
    if (length > 0 && reason[length - 1] == '.')
        reason[length - 1] = '\0';
    return reason;
}

/* What the system says of the file, such as "No such file or directory"; NULL if it was not asked. */
static const char* SystemReason(const char* details)
{
    const char* const number = Between(details, "errinfo_errno_*] = ", '\n');
    return number == NULL ? NULL : Between(number, "\"", '"');
}

static void Fail(const char* details)
{
    const char* const reason = Reason(details);
    if (strcmp(reason, "std::bad_alloc") == 0)
        mexErrMsgIdAndTxt("veloxd:memory", "There is not enough memory.");
    mexErrMsgIdAndTxt("veloxd:failed", "%s.", reason);
}

static void FailForFile(const char* path, const char* details)
{
    const char* const reason = SystemReason(details);
    if (reason != NULL)
        mexErrMsgIdAndTxt("veloxd:file", "%s: %s.", path, reason);
}

void ForgetFailure(void)
{
    if (VELHasLastError())
        VELGetLastError();
}

uint64_t NeededSize(void)
{
    if (!VELHasLastError())
        return 0;
    const char* const details = VELGetLastError();
    const char* const size = Between(details, "Minimum buffer size: ", '\n');
    if (size == NULL)
        Fail(details);
    return strtoull(size, NULL, 10);
}

void FailIfAsked(void)
{
    if (VELHasLastError())
        Fail(VELGetLastError());
}

void RequireBlock(int32_t result)
{
    if (result == VEL_BLOCK_FAILED)
        Fail(VELGetLastError());
    if (result != VEL_BLOCK_OK)
        mexErrMsgIdAndTxt("veloxd:argument", "The library refuses the arguments.");
}

void FailToOpen(const char* path, bool hasNoHeader)
{
    const char* const details = VELGetLastError();
    if (hasNoHeader)
        mexErrMsgIdAndTxt("veloxd:damaged", "%s: the file has no header, so it is no .oxd file.", path);
    FailForFile(path, details);
    const char* const reason = Reason(details);
    if (strncmp(reason, "basic_ios", strlen("basic_ios")) == 0)
        mexErrMsgIdAndTxt("veloxd:damaged", "%s: the file ends before its samples do.", path);
    mexErrMsgIdAndTxt("veloxd:damaged", "%s: the file is damaged: %s.", path, reason);
}

void FailToSaveIfAsked(const char* path)
{
    if (!VELHasLastError())
        return;
    const char* const details = VELGetLastError();
    FailForFile(path, details);
    if (strncmp(Reason(details), "basic_ios", strlen("basic_ios")) == 0)
        mexErrMsgIdAndTxt("veloxd:file", "%s: the file cannot be written; is the disk full?", path);
    Fail(details);
}
