#include "commands.h"
#include "failures.h"

#include <VELOxdDll.h>

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
mxArray* Axis(Arguments arguments)
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

mxArray* SetAxis(Arguments arguments)
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
