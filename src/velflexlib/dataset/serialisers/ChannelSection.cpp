#include "velflexlib/dataset/serialisers/ChannelSection.h"

#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/IndexedKey.h"

#include <array>
#include <string_view>

namespace veltaris::velflexlib::dataset {

using velstdlib::string::FormatDouble;
using velstdlib::util::CHeaderSection;
using velstdlib::util::CleanHeaderText;
using velstdlib::util::CVELKeyToValueList;

namespace {

// Versions of the section.
constexpr int prefixedUnitsVersion = 1; // a unit may begin with the SI prefix of the numbers of its axis
constexpr int plainVersion = 2;
constexpr int lineAxesVersion = 3; // lines may have point axes of their own

constexpr std::string_view channelVersionKey = "Version";
constexpr std::string_view pointsKey = "Points";
constexpr std::string_view frameKey = "Frame";
constexpr std::string_view currentLineKey = "CurLine";
constexpr std::string_view bitCountKey = "SaveBits";

// Keys of one line: the prefix, the number of the line, and one of these.
constexpr std::string_view linePrefix = "LineDim";
constexpr std::string_view lineRange = "Range";
constexpr std::string_view lineMin = "Min";
constexpr std::string_view linePoints = "Points";

// The keys of one axis.
struct CAxisKeys
{
    std::string_view name;
    std::string_view unit;
    std::string_view range;
    std::string_view min;
};

constexpr std::array<CAxisKeys, 3> axisKeys{{{"Dim0Name", "Dim0Unit", "Dim0Range", "Dim0Min"},
                                             {"Dim1Name", "Dim1Unit", "Dim1Range", "Dim1Min"},
                                             {"Dim2Name", "Dim2Unit", "Dim2Range", "Dim2Min"}}};
static_assert(pointAxis == 0 && lineAxis == 1 && signalAxis == 2);

// The number with its axis' prefix behind it; an unreadable one counts as missing.
double PrefixedNumber(const CVELKeyToValueList& section, std::string_view key, std::string_view defaultText,
                      std::string_view prefix)
{
    const auto parse = [&](std::string text) { return velstdlib::math::ParseSINumber(text.append(prefix)); };
    const auto number = parse(section.GetValue(key, defaultText));
    return number ? *number : parse(std::string(defaultText)).value_or(0);
}

void LoadPrefixed(CAxis& axis, const CVELKeyToValueList& section, const CAxisKeys& keys)
{
    axis.unit = section.GetValue(keys.unit);
    std::string_view prefix = velstdlib::math::LeadingSIPrefix(axis.unit);
    if (prefix.size() == axis.unit.size())
        prefix = {}; // a unit of one character is no prefix
    axis.range = PrefixedNumber(section, keys.range, "1.0", prefix);
    axis.min = PrefixedNumber(section, keys.min, "0.0", prefix);
    axis.unit.erase(0, prefix.size());
}

void LoadPlain(CAxis& axis, const CVELKeyToValueList& section, const CAxisKeys& keys)
{
    axis.unit = section.GetValue(keys.unit);
    axis.range = section.GetValueT<double>(keys.range, 0);
    axis.min = section.GetValueT<double>(keys.min, 0);
}

void LoadAxis(CAxis& axis, const CVELKeyToValueList& section, const CAxisKeys& keys, int version)
{
    axis.name = section.GetValue(keys.name, "Noname");
    (version <= prefixedUnitsVersion ? LoadPrefixed : LoadPlain)(axis, section, keys);
}

void SaveAxis(const CAxis& axis, CVELKeyToValueList& section, const CAxisKeys& keys)
{
    section.SetValue(keys.name, CleanHeaderText(axis.name));
    section.SetValue(keys.unit, CleanHeaderText(axis.unit));
    section.SetValue(keys.range, FormatDouble(axis.range));
    section.SetValue(keys.min, FormatDouble(axis.min));
}

// Points are signed in a file so that a negative number is known for what it is: a fault.
std::uint64_t ReadSize(const CHeaderSection& section, std::string_view key, std::uint64_t defaultSize = 0)
{
    const int size = section.keys.GetValueT<int>(key, static_cast<int>(defaultSize));
    if (size < 0)
        section.ThrowBadContent(key);
    return static_cast<std::uint64_t>(size);
}

std::string LineKey(std::uint64_t line, std::string_view property)
{
    return std::string(linePrefix).append(std::to_string(line)).append(property);
}

CLineAxis LoadLineAxis(const CHeaderSection& section, std::uint64_t line, const CLineAxis& common)
{
    const auto number = [&](std::string_view property, double defaultNumber) {
        return section.keys.GetValueT<double>(LineKey(line, property), defaultNumber);
    };
    return {ReadSize(section, LineKey(line, linePoints), common.count), number(lineMin, common.min),
            number(lineRange, common.range)};
}

// The lines whose axis the section gives in part or whole, where that differs from the channel's. The keys that exist
// bound the work: the number of lines alone would not.
std::map<std::uint64_t, CLineAxis> LoadLineAxes(const CHeaderSection& section, const CLineAxis& common,
                                                std::uint64_t lineCount)
{
    std::map<std::uint64_t, CLineAxis> lineAxes;
    section.keys.ForEach([&](std::string_view key, std::string_view) {
        const auto line = velstdlib::util::SplitIndexedKey(key, linePrefix);
        if (line && line->index < lineCount && !lineAxes.contains(line->index))
            lineAxes.emplace(line->index, LoadLineAxis(section, line->index, common));
    });
    std::erase_if(lineAxes, [&](const auto& own) { return own.second == common; });
    return lineAxes;
}

bool WrittenAlike(const CLineAxis& a, const CLineAxis& b)
{
    return a.count == b.count && FormatDouble(a.min) == FormatDouble(b.min) &&
           FormatDouble(a.range) == FormatDouble(b.range);
}

// Whether some line's axis, as it would be written, differs from the channel's.
bool HasLineAxes(const CDataBuffer& buffer)
{
    const CLineAxes axes = buffer.GetLineAxes();
    return axes.IsAny([&](const CLineAxis& axis) { return !WrittenAlike(axis, axes.Common()); });
}

void SaveLineAxes(const CDataBuffer& buffer, CVELKeyToValueList& section)
{
    const std::uint64_t lines = buffer.GetLines();
    for (std::uint64_t line = 0; line < lines; ++line) {
        const CLineAxis axis = buffer.GetLineAxis(line);
        section.SetValue(LineKey(line, lineRange), FormatDouble(axis.range));
        section.SetValue(LineKey(line, lineMin), FormatDouble(axis.min));
        section.SetValue(LineKey(line, linePoints), axis.count);
    }
}

} // namespace

CChannelHeader ReadChannelSection(const CHeaderSection& section)
{
    const CVELKeyToValueList& keys = section.keys;
    const int version = keys.GetValueT<int>(channelVersionKey, prefixedUnitsVersion);
    if (version > lineAxesVersion)
        velstdlib::util::ThrowFileVersion(std::string(section.fileName), version);
    CChannelHeader header;
    header.points = ReadSize(section, pointsKey);
    header.lines = ReadSize(section, channelLinesKey);
    header.frame = keys.GetValue(frameKey, "Unknown");
    header.currentLine = keys.GetValueT<int>(currentLineKey, 0);
    for (std::size_t index = 0; index < axisKeys.size(); ++index)
        LoadAxis(header.axes[index], keys, axisKeys[index], version);
    if (version == lineAxesVersion) {
        const CAxis& common = header.axes[pointAxis];
        header.ownLineAxes = LoadLineAxes(section, {header.points, common.min, common.range}, header.lines);
    }
    header.bitCount = keys.GetValueT<int>(bitCountKey, 8);
    return header;
}

void WriteChannelSection(CVELKeyToValueList& keys, const CDataBuffer& buffer)
{
    const bool hasLineAxes = HasLineAxes(buffer);
    keys.SetValue(channelVersionKey, std::to_string(hasLineAxes ? lineAxesVersion : plainVersion));
    keys.SetValue(pointsKey, buffer.GetPoints());
    keys.SetValue(channelLinesKey, buffer.GetLines());
    keys.SetValue(frameKey, CleanHeaderText(buffer.GetGroupName()));
    keys.SetValue(currentLineKey, std::to_string(static_cast<std::int64_t>(buffer.GetCurrentLine())));
    for (std::size_t index = 0; index < axisKeys.size(); ++index)
        SaveAxis(buffer.GetAxis(index), keys, axisKeys[index]);
    if (hasLineAxes)
        SaveLineAxes(buffer, keys);
    keys.SetValue("SaveMode", "Binary");
    keys.SetValue(bitCountKey, std::to_string(buffer.GetBitCount()));
    keys.SetValue("SaveSign", "Signed");
    keys.SetValue("SaveOrder", "Intel");
}

} // namespace veltaris::velflexlib::dataset
