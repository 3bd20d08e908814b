// One channel of a data set: its size, axes and lines.
#pragma once

#include "oxd/library/DataSet.h"

#include <cstdint>
#include <string>
#include <vector>

namespace oxd {

// Runs from `min` to `min` + `range`, in `unit`. The range may be negative or 0, and in a damaged file neither number
// need be finite.
struct Axis
{
    std::string name;
    std::string unit;
    double min;
    double range;
};

// Where an axis begins and how far it reaches, without its name and unit.
struct AxisSpan
{
    double min;
    double range;
};

// The functions of the interface for one of the three axes. Which axis is meant is a value this way, and what is done
// with an axis is written once.
struct AxisAccess
{
    using TextGetter = void (*)(std::uint64_t, std::uint64_t, std::uint64_t, char*, std::uint64_t);
    using TextSetter = void (*)(std::uint64_t, std::uint64_t, std::uint64_t, const char*);
    using NumberGetter = double (*)(std::uint64_t, std::uint64_t, std::uint64_t);
    using NumberSetter = void (*)(std::uint64_t, std::uint64_t, std::uint64_t, double);

    TextGetter getName, getUnit;
    NumberGetter getMin, getRange;
    TextSetter setName, setUnit;
    NumberSetter setMin, setRange;
};

extern const AxisAccess pointAxis;
extern const AxisAccess lineAxis;
extern const AxisAccess signalAxis;

// Refers to a slot of a data set, which must outlive it; whether there is a channel in the slot, Exists() tells. Copies
// refer to the same channel. Calls throw a LibraryError if the library refuses them.
class Channel
{
public:
    Channel(const DataSet& dataSet, std::uint64_t group, std::uint64_t index)
        : m_dataSet(&dataSet), m_group(group), m_index(index)
    {
    }

    bool Exists() const { return Call(HasChannelBuffer); }
    std::uint64_t Points() const { return Call(GetChannelData_Points); }
    std::uint64_t Lines() const { return Call(GetChannelData_Lines); }

    // Makes a channel of that size in the slot. One that has the size already keeps its samples; else all are 0.
    void Resize(std::uint64_t points, std::uint64_t lines) { Call(SetChannelXYDimension, points, lines); }

    std::uint64_t Group() const { return m_group; } // the id of the group that it is in
    std::uint64_t Index() const { return m_index; }

    // The name of the group that it is in.
    std::string GroupName() const { return m_dataSet->Text(GetGroupName, m_group); }

    // The name of the signal axis, which says what a channel holds: it has no name of its own.
    std::string Name() const { return Text(signalAxis.getName); }

    Axis ReadAxis(const AxisAccess& axis) const;
    void WriteAxis(const AxisAccess& axis, const Axis& values);

    // How many points of a line are valid. A damaged file may claim more than a line holds; this throws then.
    std::uint64_t ValidPoints(std::uint64_t line) const;

    // Of the point axis along a line, which may be the line's own.
    AxisSpan PointSpan(std::uint64_t line) const;

    // Whether a line has a point axis of its own, other than that of the channel.
    bool HasOwnPointAxis(std::uint64_t line) const;

    // The valid samples of a line through a line operator, given by its code. Nothing if they are too few for it.
    std::vector<std::int32_t> ReadRaw(std::uint64_t line, std::int32_t lineOperator) const;
    std::vector<double> ReadReal(std::uint64_t line, std::int32_t lineOperator) const;

    // Overwrites the leading samples of a line and leaves the others as they are, valid or not.
    void WriteRaw(std::uint64_t line, const std::vector<std::int32_t>& samples);

    // Writes a whole line, which takes Points() values in the unit of the signal axis.
    void WriteReal(std::uint64_t line, const std::vector<double>& values)
    {
        Call(SetChannelData_LineReal, line, values.data());
    }

private:
    template <typename Sample>
    std::vector<Sample> Read(void (*function)(std::uint64_t, std::uint64_t, std::uint64_t, std::uint64_t, std::int32_t,
                                              Sample*),
                             std::uint64_t line, std::int32_t lineOperator) const;

    template <typename Result, typename... Parameters>
    Result Call(Result (*function)(std::uint64_t, std::uint64_t, std::uint64_t, Parameters...),
                std::type_identity_t<Parameters>... arguments) const
    {
        return m_dataSet->Call(function, m_group, m_index, arguments...);
    }

    std::string Text(AxisAccess::TextGetter getter) const { return m_dataSet->Text(getter, m_group, m_index); }

    const DataSet* m_dataSet;
    std::uint64_t m_group;
    std::uint64_t m_index;
};

} // namespace oxd
