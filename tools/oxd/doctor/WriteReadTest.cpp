#include "oxd/doctor/WriteReadTest.h"

#include "oxd/doctor/TemporaryFolder.h"
#include "oxd/library/Channel.h"
#include "oxd/library/LineOperators.h"
#include "oxd/library/MetaNode.h"

#include <optional>

namespace oxd {

namespace {

constexpr std::uint64_t points = 64;
constexpr std::uint64_t lines = 16;
constexpr std::int32_t lowestRaw = -536870912;

// From the lowest raw sample nearly to the highest, with low bits that differ.
std::vector<std::int32_t> KnownLine(std::uint64_t line)
{
    constexpr std::int32_t step = (1 << 20) + 1; // 1024 of them make the 30 bits of a raw sample
    std::vector<std::int32_t> samples;
    for (std::uint64_t point = 0; point < points; ++point) {
        samples.push_back(lowestRaw + static_cast<std::int32_t>(line * points + point) * (step - 1) +
                          static_cast<std::int32_t>(point));
    }
    return samples;
}

const Axis knownAxis{"Height", "µm", -1.5, 3};
constexpr const char* knownGroup = "Doctor";
constexpr const char* knownItem = "Temperature";
constexpr const char* knownValue = "21.5 °C";

DataSet MakeKnown()
{
    DataSet dataSet = DataSet::Create();
    constexpr std::int32_t bits = 32; // keep every bit of a sample
    const std::uint64_t group = dataSet.Call(CreateGroup, bits);
    dataSet.Call(SetChannelCount, group, 1);
    Channel channel(dataSet, group, 0);
    channel.Resize(points, lines);
    channel.WriteAxis(signalAxis, knownAxis);
    for (std::uint64_t line = 0; line < lines; ++line) {
        channel.WriteRaw(line, KnownLine(line));
    }
    MetaNode::Root(dataSet).AddGroup(knownGroup).AddItem(knownItem, knownValue);
    return dataSet;
}

bool IsKnown(const Channel& channel)
{
    const Axis axis = channel.ReadAxis(signalAxis);
    bool same = axis.name == knownAxis.name && axis.unit == knownAxis.unit && axis.min == knownAxis.min &&
                axis.range == knownAxis.range && channel.Points() == points && channel.Lines() == lines;
    for (std::uint64_t line = 0; same && line < lines; ++line) {
        same = channel.ReadRaw(line, rawData.code) == KnownLine(line);
    }
    return same;
}

bool IsKnown(const MetaNode& root)
{
    const auto group = root.FindGroup(knownGroup);
    const auto item = group ? group->FindItem(knownItem) : std::nullopt;
    return item && item->Value() == knownValue;
}

void RequireKnown(const std::string& file)
{
    bool same = false;
    try {
        const DataSet read = DataSet::Open(file);
        same = IsKnown(Channel(read, 0, 0)) && IsKnown(MetaNode::Root(read));
    } catch (const std::exception& error) {
        throw Failure(ExitCode::CannotOpen, "cannot be read again", error.what());
    }
    if (!same) {
        throw Failure(ExitCode::CannotOpen, file, "does not hold what was written to it");
    }
}

struct TestName
{
    const char* check;
    const char* file;
};

constexpr TestName testNames[] = {
    {"write and read", "sample.oxd"},
    {"write and read Unicode", "größe-測.oxd"},
};

const char* Remedy(ExitCode code)
{
    return code == ExitCode::CannotWrite
               ? "See that the temporary folder may be written and has room, and that the system's code page is UTF-8."
               : "See that the disk is sound and that no other program changes files in the temporary folder.";
}

// Gives how it ended.
ExitCode CheckOne(const TestName& name, Checks& checks)
{
    try {
        const TemporaryFolder folder;
        const std::string file = folder.File(name.file);
        OutputFile output({file});
        MakeKnown().SaveTo(output);
        output.Close();
        RequireKnown(file);
        checks.push_back({name.check, name.file + std::string(" holds what was written to it")});
        return ExitCode::Done;
    } catch (const Failure& failure) {
        checks.push_back({name.check, failure.what(), Remedy(failure.Code())});
        return failure.Code();
    }
}

} // namespace

void CheckWritingAndReading(Diagnosis& diagnosis)
{
    for (const TestName& name : testNames) {
        const ExitCode outcome = CheckOne(name, diagnosis.checks);
        if (diagnosis.outcome == ExitCode::Done) {
            diagnosis.outcome = outcome;
        }
    }
}

} // namespace oxd
