#include "commands.h"
#include "failures.h"

#include <VELOxdDll.h>

mxArray* Root(Arguments arguments)
{
    return FromNumber(GetMetaInfoTreeRootHandle(Number(arguments[0])));
}

mxArray* Children(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t node = Number(arguments[1]);
    const uint64_t count = GetMetaInfoItemChildCount(file, node);
    FailIfAsked();
    mxArray* const children = Numbers(count);
    uint64_t* const numbers = mxGetData(children);
    for (uint64_t i = 0; i < count; ++i)
        numbers[i] = i == 0 ? SelectFirstChildMetaInfoItem(file, node) : SelectNextMetaInfoItem(file, numbers[i - 1]);
    return children;
}

mxArray* IsGroup(Arguments arguments)
{
    return mxCreateLogicalScalar(IsMetaInfoItemAGroup(Number(arguments[0]), Number(arguments[1])));
}

mxArray* NodeName(Arguments arguments)
{
    return TextOfPlace(arguments, GetMetaInfoItemName);
}

mxArray* NodeValue(Arguments arguments)
{
    return TextOfPlace(arguments, GetMetaInfoItemValue);
}

mxArray* SetNodeValue(Arguments arguments)
{
    SetMetaInfoItemValue(Number(arguments[0]), Number(arguments[1]), Text(arguments[2]));
    return NULL;
}

mxArray* AddItem(Arguments arguments)
{
    const char* const name = Text(arguments[2]);
    return FromNumber(AddMetaInfoItem(Number(arguments[0]), Number(arguments[1]), name, Text(arguments[3])));
}

mxArray* AddNodeGroup(Arguments arguments)
{
    return FromNumber(AddMetaInfoItemGroup(Number(arguments[0]), Number(arguments[1]), Text(arguments[2])));
}
