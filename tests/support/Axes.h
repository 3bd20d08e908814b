// The texts and numbers of every axis of a channel, with the functions that set and get them.
#pragma once

#include <VELOxdDll.h>

#include <cstdint>

struct AxisProperty
{
    const char* text; // its name in failures
    void (*setText)(std::uint64_t, std::uint64_t, std::uint64_t, const char*);
    void (*getText)(std::uint64_t, std::uint64_t, std::uint64_t, char*, std::uint64_t);
    const char* number;
    void (*setNumber)(std::uint64_t, std::uint64_t, std::uint64_t, double);
    double (*getNumber)(std::uint64_t, std::uint64_t, std::uint64_t);
};

inline const AxisProperty axisProperties[] = {
    {"point axis name", SetChannelData_PointAxisName, GetChannelData_PointAxisName, "point axis min",
     SetChannelData_PointAxisMin, GetChannelData_PointAxisMin},
    {"point axis unit", SetChannelData_PointAxisUnit, GetChannelData_PointAxisUnit, "point axis range",
     SetChannelData_PointAxisRange, GetChannelData_PointAxisRange},
    {"line axis name", SetChannelData_LineAxisName, GetChannelData_LineAxisName, "line axis min",
     SetChannelData_LineAxisMin, GetChannelData_LineAxisMin},
    {"line axis unit", SetChannelData_LineAxisUnit, GetChannelData_LineAxisUnit, "line axis range",
     SetChannelData_LineAxisRange, GetChannelData_LineAxisRange},
    {"signal axis name", SetChannelData_SignalAxisName, GetChannelData_SignalAxisName, "signal axis min",
     SetChannelData_SignalAxisMin, GetChannelData_SignalAxisMin},
    {"signal axis unit", SetChannelData_SignalAxisUnit, GetChannelData_SignalAxisUnit, "signal axis range",
     SetChannelData_SignalAxisRange, GetChannelData_SignalAxisRange},
};
