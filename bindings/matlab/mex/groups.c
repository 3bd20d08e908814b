#include "commands.h"
#include "failures.h"

#include <VELOxdDll.h>
#include <veloxd_blocks.h>

mxArray* Groups(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    mxArray* const ids = Numbers(GetGroupCount(file));
    uint64_t none = 0;
    GetAllGroupIds(file, mxIsEmpty(ids) ? &none : mxGetData(ids));
    return ids;
}

mxArray* GroupName(Arguments arguments)
{
    return TextOfPlace(arguments, GetGroupName);
}

mxArray* SetNameOfGroup(Arguments arguments)
{
    SetGroupName(Number(arguments[0]), Number(arguments[1]), Text(arguments[2]));
    return NULL;
}

mxArray* AddGroup(Arguments arguments)
{
    return FromNumber(CreateGroup(Number(arguments[0]), (int32_t)Number(arguments[1])));
}

/* The slots that hold a channel. */
mxArray* Channels(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t count = GetChannelCount(file, group);
    FailIfAsked();
    mxArray* const slots = Numbers(count);
    size_t found = 0;
    for (uint64_t slot = 0; slot < count; ++slot) {
        if (HasChannelBuffer(file, group, slot))
            ((uint64_t*)mxGetData(slots))[found++] = slot;
    }
    mxSetN(slots, (mwSize)found);
    return slots;
}

/* Gives a group so many channels of lines x points; discards those that it had. */
mxArray* SetChannels(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t count = Number(arguments[2]);
    SetChannelCount(file, group, count);
    for (uint64_t slot = 0; slot < count && !VELHasLastError(); ++slot)
        SetChannelXYDimension(file, group, slot, Number(arguments[4]), Number(arguments[3]));
    return NULL;
}

/* Lines and points. */
mxArray* Shape(Arguments arguments)
{
    mxArray* const shape = Numbers(2);
    uint64_t* const numbers = mxGetData(shape);
    RequireBlock(
        VELBlockShape(Number(arguments[0]), Number(arguments[1]), Number(arguments[2]), &numbers[0], &numbers[1]));
    return shape;
}
