#include "commands.h"
#include "failures.h"
#include "file_names.h"

#include <VELOxdDll.h>
#include <veloxd_blocks.h>

mxArray* Open(Arguments arguments)
{
    const char* const path = Text(arguments[0]);
    uint64_t file = 0;
    const int32_t result = VELBlockOpen(SystemFileName(path), &file);
    if (result != VEL_BLOCK_OK) {
        CloseOxdFile(file); /* what opened in part; 0 is ignored */
        FailToOpen(path, result == VEL_BLOCK_NO_HEADER);
    }
    return FromNumber(file);
}

mxArray* Create(Arguments arguments)
{
    return FromNumber(CreateOxdFile(SystemFileName(Text(arguments[0]))));
}

mxArray* Close(Arguments arguments)
{
    CloseOxdFile(Number(arguments[0]));
    return NULL;
}

mxArray* Rename(Arguments arguments)
{
    ChangeOxdFilename(Number(arguments[0]), SystemFileName(Text(arguments[1])));
    return NULL;
}

/* The second argument is the name of the file, for the text of a failure. */
mxArray* Save(Arguments arguments)
{
    SaveOxdFile(Number(arguments[0]));
    FailToSaveIfAsked(Text(arguments[1]));
    return NULL;
}
