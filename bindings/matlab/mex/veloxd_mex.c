/* What the package veloxd calls: one function for MATLAB and Octave, whose first argument names a command of the table
 * below. Failures become errors with an identifier. */
#include "commands.h"
#include "failures.h"

#include <string.h>

typedef struct
{
    const char* name;
    int arguments;
    mxArray* (*run)(Arguments arguments); /* gives the result, or NULL */
} Command;

static const Command commands[] = {
    {"open", 1, Open},
    {"create", 1, Create},
    {"close", 1, Close},
    {"rename", 2, Rename},
    {"save", 2, Save},
    {"groups", 1, Groups},
    {"groupName", 2, GroupName},
    {"setGroupName", 3, SetNameOfGroup},
    {"addGroup", 2, AddGroup},
    {"channels", 2, Channels},
    {"setChannels", 5, SetChannels},
    {"shape", 3, Shape},
    {"readRaw", 4, ReadRaw},
    {"readReal", 4, ReadReal},
    {"write", 4, Write},
    {"axis", 4, Axis},
    {"setAxis", 8, SetAxis},
    {"root", 1, Root},
    {"children", 2, Children},
    {"isGroup", 2, IsGroup},
    {"nodeName", 2, NodeName},
    {"nodeValue", 2, NodeValue},
    {"setNodeValue", 3, SetNodeValue},
    {"addItem", 4, AddItem},
    {"addNodeGroup", 3, AddNodeGroup},
};

static const Command* Find(const mxArray* name, int arguments)
{
    const char* const wanted = mxIsChar(name) ? mxArrayToString(name) : "";
    for (size_t i = 0; i < sizeof commands / sizeof *commands; ++i) {
        if (strcmp(commands[i].name, wanted) == 0 && commands[i].arguments == arguments)
            return &commands[i];
    }
    mexErrMsgIdAndTxt("veloxd:argument", "veloxd_mex has no command \"%s\" of %d arguments.", wanted, arguments);
    return NULL;
}

void mexFunction(int nlhs, mxArray* plhs[], int nrhs, const mxArray* prhs[])
{
    (void)nlhs; /* one result may always be given */
    if (nrhs < 1)
        mexErrMsgIdAndTxt("veloxd:argument", "veloxd_mex is called by the package veloxd.");
    if (!mexIsLocked())
        mexLock(); /* open files would be lost with the library */
    ForgetFailure();
    plhs[0] = Find(prhs[0], nrhs - 1)->run(prhs + 1);
    FailIfAsked();
    if (plhs[0] == NULL)
        plhs[0] = mxCreateNumericMatrix(0, 0, mxDOUBLE_CLASS, mxREAL);
}
