#include "file_names.h"

#ifdef _WIN32

#include <mex.h>
#include <wchar.h>
#include <windows.h>

const char* SystemFileName(const char* name)
{
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, NULL, 0);
    wchar_t* const wide = mxMalloc((size_t)length * sizeof(wchar_t) + sizeof(wchar_t));
    MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, name, -1, wide, length);
    BOOL isLost = FALSE;
    const int size = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, length, NULL, 0, NULL, &isLost);
    if (length == 0 || size == 0 || isLost)
        mexErrMsgIdAndTxt("veloxd:file", "The code page of Windows cannot express the name of the file.");
    char* const narrow = mxMalloc((size_t)size);
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, length, narrow, size, NULL, NULL);
    return narrow;
}

#else

const char* SystemFileName(const char* name)
{
    return name;
}

#endif
