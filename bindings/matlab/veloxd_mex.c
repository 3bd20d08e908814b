/* What the package veloxd calls: one function for MATLAB and Octave, whose first argument names a command of the table
 * at the end. Numbers are uint64 scalars, texts are rows of uint8 in UTF-8, and matrices have a column for each line,
 * so that lines lie in memory as the library has them. Failures become errors with an identifier. What is allocated
 * here belongs to MATLAB, which frees it when an error ends a call. */
#include "failures.h"
#include "file_names.h"

#include <VELOxdDll.h>
#include <mex.h>
#include <stdbool.h>
#include <string.h>
#include <veloxd_blocks.h>

typedef const mxArray* const* Arguments;

static uint64_t Number(const mxArray* value)
{
    if (!mxIsUint64(value) || mxGetNumberOfElements(value) != 1)
        mexErrMsgIdAndTxt("veloxd:argument", "A number is to be a uint64 scalar.");
    return *(const uint64_t*)mxGetData(value);
}

static char* Text(const mxArray* value)
{
    if (!mxIsUint8(value) && !mxIsEmpty(value))
        mexErrMsgIdAndTxt("veloxd:argument", "A text is to be a row of uint8.");
    const size_t length = (size_t)mxGetNumberOfElements(value);
    char* const text = mxMalloc(length + 1);
    if (length > 0)
        memcpy(text, mxGetData(value), length);
    text[length] = '\0';
    if (strlen(text) != length)
        mexErrMsgIdAndTxt("veloxd:argument", "A text holds a zero character.");
    return text;
}

static double Real(const mxArray* value)
{
    if (!mxIsDouble(value) || mxIsComplex(value) || mxGetNumberOfElements(value) != 1)
        mexErrMsgIdAndTxt("veloxd:argument", "A real number is to be a double scalar.");
    return mxGetScalar(value);
}

static mxArray* Numbers(size_t count)
{
    return mxCreateNumericMatrix(1, (mwSize)count, mxUINT64_CLASS, mxREAL);
}

static mxArray* FromNumber(uint64_t number)
{
    mxArray* const value = Numbers(1);
    *(uint64_t*)mxGetData(value) = number;
    return value;
}

static mxArray* FromText(const char* text)
{
    const size_t length = strlen(text);
    mxArray* const value = mxCreateNumericMatrix(1, (mwSize)length, mxUINT8_CLASS, mxREAL);
    if (length > 0)
        memcpy(mxGetData(value), text, length);
    return value;
}

typedef void (*PlaceText)(uint64_t file, uint64_t place, char* buffer, uint64_t size);

/* A text of a group or of a node. */
static mxArray* TextOfPlace(Arguments arguments, PlaceText getter)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t place = Number(arguments[1]);
    char* buffer = mxMalloc(usualTextSize);
    getter(file, place, buffer, usualTextSize);
    const uint64_t needed = NeededSize();
    if (needed > 0) {
        buffer = mxMalloc(needed);
        getter(file, place, buffer, needed);
    }
    FailIfAsked();
    return FromText(buffer);
}

/* ---- Files */

static mxArray* Open(Arguments arguments)
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

static mxArray* Create(Arguments arguments)
{
    return FromNumber(CreateOxdFile(SystemFileName(Text(arguments[0]))));
}

static mxArray* Close(Arguments arguments)
{
    CloseOxdFile(Number(arguments[0]));
    return NULL;
}

static mxArray* Rename(Arguments arguments)
{
    ChangeOxdFilename(Number(arguments[0]), SystemFileName(Text(arguments[1])));
    return NULL;
}

/* The second argument is the name of the file, for the text of a failure. */
static mxArray* Save(Arguments arguments)
{
    SaveOxdFile(Number(arguments[0]));
    FailToSaveIfAsked(Text(arguments[1]));
    return NULL;
}

/* ---- Groups and channels */

static mxArray* Groups(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    mxArray* const ids = Numbers(GetGroupCount(file));
    uint64_t none = 0;
    GetAllGroupIds(file, mxIsEmpty(ids) ? &none : mxGetData(ids));
    return ids;
}

static mxArray* GroupName(Arguments arguments)
{
    return TextOfPlace(arguments, GetGroupName);
}

static mxArray* SetNameOfGroup(Arguments arguments)
{
    SetGroupName(Number(arguments[0]), Number(arguments[1]), Text(arguments[2]));
    return NULL;
}

static mxArray* AddGroup(Arguments arguments)
{
    return FromNumber(CreateGroup(Number(arguments[0]), (int32_t)Number(arguments[1])));
}

/* The slots that hold a channel. */
static mxArray* Channels(Arguments arguments)
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
static mxArray* SetChannels(Arguments arguments)
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
static mxArray* Shape(Arguments arguments)
{
    mxArray* const shape = Numbers(2);
    uint64_t* const numbers = mxGetData(shape);
    RequireBlock(
        VELBlockShape(Number(arguments[0]), Number(arguments[1]), Number(arguments[2]), &numbers[0], &numbers[1]));
    return shape;
}

/* ---- Samples */

static mxArray* Read(Arguments arguments, mxClassID type)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const int32_t lineOp = (int32_t)Number(arguments[3]);
    uint64_t lines = 0;
    uint64_t points = 0;
    RequireBlock(VELBlockShape(file, group, channel, &lines, &points));
    mxArray* const samples = mxCreateNumericMatrix((mwSize)points, (mwSize)lines, type, mxREAL);
    const int64_t pitch = (int64_t)points;
    if (mxIsEmpty(samples))
        return samples;
    RequireBlock(type == mxINT32_CLASS
                     ? VELBlockReadRaw(file, group, channel, lineOp, 0, NULL, lines, mxGetData(samples), pitch)
                     : VELBlockReadReal(file, group, channel, lineOp, 0, NULL, lines, mxGetData(samples), pitch));
    return samples;
}

static mxArray* ReadRaw(Arguments arguments)
{
    return Read(arguments, mxINT32_CLASS);
}

static mxArray* ReadReal(Arguments arguments)
{
    return Read(arguments, mxDOUBLE_CLASS);
}

static bool IsMissing(const mxArray* samples, uint64_t at)
{
    return mxIsInt32(samples) ? ((const int32_t*)mxGetData(samples))[at] == INT32_MIN
                              : mxIsNaN(((const double*)mxGetData(samples))[at]);
}

/* How many points of a line are to be written. Those behind them are missing, and were never measured: a point that is
 * measured cannot become one that is not. */
static uint64_t PointsToWrite(const mxArray* samples, uint64_t line, uint64_t points, uint64_t acquired)
{
    uint64_t present = points;
    while (present > 0 && IsMissing(samples, line * points + present - 1))
        --present;
    bool isWhole = present == points || present >= acquired;
    for (uint64_t point = 0; point < present; ++point)
        isWhole = isWhole && !IsMissing(samples, line * points + point);
    if (!isWhole)
        mexErrMsgIdAndTxt("veloxd:argument", "Line %u lacks a sample (NaN or intmin) where there is one in the file.",
                          (unsigned)line + 1);
    return present;
}

static void WriteLine(uint64_t file, uint64_t group, uint64_t channel, const mxArray* samples, uint64_t line,
                      uint64_t count)
{
    const uint64_t begin = line * (uint64_t)mxGetM(samples);
    for (uint64_t point = 0; point < count; ++point) {
        if (mxIsInt32(samples))
            SetChannelData_PixelRaw(file, group, channel, point, line,
                                    ((const int32_t*)mxGetData(samples))[begin + point]);
        else
            SetChannelData_PixelReal(file, group, channel, point, line,
                                     ((const double*)mxGetData(samples))[begin + point]);
    }
    FailIfAsked();
}

static void RequireSamples(const mxArray* samples, uint64_t lines, uint64_t points)
{
    const bool fits = (uint64_t)mxGetM(samples) == points && (uint64_t)mxGetN(samples) == lines;
    if (!fits || mxIsComplex(samples) || mxIsSparse(samples) || !(mxIsInt32(samples) || mxIsDouble(samples)))
        mexErrMsgIdAndTxt("veloxd:argument", "The samples are to be a full real matrix of %u x %u (lines x points).",
                          (unsigned)lines, (unsigned)points);
}

static mxArray* Write(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const mxArray* const samples = arguments[3];
    uint64_t lines = 0;
    uint64_t points = 0;
    RequireBlock(VELBlockShape(file, group, channel, &lines, &points));
    RequireSamples(samples, lines, points);
    if (mxIsEmpty(samples))
        return NULL;
    uint64_t* const counts = mxMalloc(lines * sizeof(uint64_t));
    RequireBlock(VELBlockAcquired(file, group, channel, 0, NULL, lines, counts));
    for (uint64_t line = 0; line < lines; ++line) /* all of them before any is written */
        counts[line] = PointsToWrite(samples, line, points, counts[line]);
    const size_t size = mxGetElementSize(samples);
    for (uint64_t line = 0; line < lines; ++line) {
        const void* const row = (const char*)mxGetData(samples) + line * points * size;
        if (counts[line] < points)
            WriteLine(file, group, channel, samples, line, counts[line]);
        else
            RequireBlock(mxIsInt32(samples)
                             ? VELBlockWriteRaw(file, group, channel, line, NULL, 1, row, (int64_t)points)
                             : VELBlockWriteReal(file, group, channel, line, NULL, 1, row, (int64_t)points));
    }
    return NULL;
}

/* ---- Axes */

typedef void (*TextGetter)(uint64_t file, uint64_t group, uint64_t channel, char* buffer, uint64_t size);
typedef void (*TextSetter)(uint64_t file, uint64_t group, uint64_t channel, const char* text);
typedef double (*NumberGetter)(uint64_t file, uint64_t group, uint64_t channel);
typedef void (*NumberSetter)(uint64_t file, uint64_t group, uint64_t channel, double number);

/* By their numbers in the last argument but those of SetAxis: point, line and signal axis. */
static const struct
{
    TextGetter getName, getUnit;
    NumberGetter getMin, getRange;
    TextSetter setName, setUnit;
    NumberSetter setMin, setRange;
} axes[] = {
    {GetChannelData_PointAxisName, GetChannelData_PointAxisUnit, GetChannelData_PointAxisMin,
     GetChannelData_PointAxisRange, SetChannelData_PointAxisName, SetChannelData_PointAxisUnit,
     SetChannelData_PointAxisMin, SetChannelData_PointAxisRange},
    {GetChannelData_LineAxisName, GetChannelData_LineAxisUnit, GetChannelData_LineAxisMin, GetChannelData_LineAxisRange,
     SetChannelData_LineAxisName, SetChannelData_LineAxisUnit, SetChannelData_LineAxisMin,
     SetChannelData_LineAxisRange},
    {GetChannelData_SignalAxisName, GetChannelData_SignalAxisUnit, GetChannelData_SignalAxisMin,
     GetChannelData_SignalAxisRange, SetChannelData_SignalAxisName, SetChannelData_SignalAxisUnit,
     SetChannelData_SignalAxisMin, SetChannelData_SignalAxisRange},
};

static uint64_t AxisNumber(const mxArray* value)
{
    const uint64_t axis = Number(value);
    if (axis >= sizeof axes / sizeof *axes)
        mexErrMsgIdAndTxt("veloxd:argument", "There is no such axis.");
    return axis;
}

static mxArray* AxisText(Arguments arguments, TextGetter getter)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    char* buffer = mxMalloc(usualTextSize);
    getter(file, group, channel, buffer, usualTextSize);
    const uint64_t needed = NeededSize();
    if (needed > 0) {
        buffer = mxMalloc(needed);
        getter(file, group, channel, buffer, needed);
    }
    FailIfAsked();
    return FromText(buffer);
}

/* A cell: name, unit, minimum and range. */
static mxArray* Axis(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const uint64_t axis = AxisNumber(arguments[3]);
    mxArray* const cell = mxCreateCellMatrix(1, 4);
    mxSetCell(cell, 0, AxisText(arguments, axes[axis].getName));
    mxSetCell(cell, 1, AxisText(arguments, axes[axis].getUnit));
    mxSetCell(cell, 2, mxCreateDoubleScalar(axes[axis].getMin(file, group, channel)));
    mxSetCell(cell, 3, mxCreateDoubleScalar(axes[axis].getRange(file, group, channel)));
    return cell;
}

static mxArray* SetAxis(Arguments arguments)
{
    const uint64_t file = Number(arguments[0]);
    const uint64_t group = Number(arguments[1]);
    const uint64_t channel = Number(arguments[2]);
    const uint64_t axis = AxisNumber(arguments[3]);
    const char* const name = Text(arguments[4]); /* all of them before any is set */
    const char* const unit = Text(arguments[5]);
    const double min = Real(arguments[6]);
    const double range = Real(arguments[7]);
    axes[axis].setName(file, group, channel, name);
    axes[axis].setUnit(file, group, channel, unit);
    axes[axis].setMin(file, group, channel, min);
    axes[axis].setRange(file, group, channel, range);
    return NULL;
}

/* ---- Information, as a tree of nodes */

static mxArray* Root(Arguments arguments)
{
    return FromNumber(GetMetaInfoTreeRootHandle(Number(arguments[0])));
}

static mxArray* Children(Arguments arguments)
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

static mxArray* IsGroup(Arguments arguments)
{
    return mxCreateLogicalScalar(IsMetaInfoItemAGroup(Number(arguments[0]), Number(arguments[1])));
}

static mxArray* NodeName(Arguments arguments)
{
    return TextOfPlace(arguments, GetMetaInfoItemName);
}

static mxArray* NodeValue(Arguments arguments)
{
    return TextOfPlace(arguments, GetMetaInfoItemValue);
}

static mxArray* SetNodeValue(Arguments arguments)
{
    SetMetaInfoItemValue(Number(arguments[0]), Number(arguments[1]), Text(arguments[2]));
    return NULL;
}

static mxArray* AddItem(Arguments arguments)
{
    const char* const name = Text(arguments[2]);
    return FromNumber(AddMetaInfoItem(Number(arguments[0]), Number(arguments[1]), name, Text(arguments[3])));
}

static mxArray* AddNodeGroup(Arguments arguments)
{
    return FromNumber(AddMetaInfoItemGroup(Number(arguments[0]), Number(arguments[1]), Text(arguments[2])));
}

/* ---- Commands */

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
