#include "velflexlib/dataset/serialisers/ChannelSection.h"

#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/VELException.h"
#include "velstdlib/util/header/HeaderText.h"
#include "velstdlib/util/header/IndexedKey.h"

#include <array>
#include <string_view>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::string::FormatDouble;
using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr std::string_view linePrefix = "LineDim";

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

std::string LineKey(std::uint64_t line, std::string_view property)
{
    return std::string(linePrefix).append(std::to_string(line)).append(property);
}

CLineAxis LoadLineAxis(const CVELKeyToValueList& section, std::uint64_t line, const CLineAxis& common,
                       const std::string& fileName)
{
    const int count = section.GetValueT<int>(LineKey(line, "Points"), static_cast<int>(common.count));
    if (count < 0)
        velstdlib::util::ThrowBadContent(fileName);
    return {static_cast<std::uint64_t>(count), section.GetValueT<double>(LineKey(line, "Min"), common.min),
            section.GetValueT<double>(LineKey(line, "Range"), common.range)};
}

bool WrittenAlike(const CLineAxis& a, const CLineAxis& b)
{
    return a.count == b.count && FormatDouble(a.min) == FormatDouble(b.min) &&
           FormatDouble(a.range) == FormatDouble(b.range);
}

} // namespace

void LoadAxes(CDataBuffer& buffer, const CVELKeyToValueList& section, int version)
{
    for (std::size_t index = 0; index < axisKeys.size(); ++index) {
        CAxis axis;
        axis.name = section.GetValue(axisKeys[index].name, "Noname");
        (version <= prefixedUnitsVersion ? LoadPrefixed : LoadPlain)(axis, section, axisKeys[index]);
        buffer.SetAxis(index, std::move(axis));
    }
}

void SaveAxes(const CDataBuffer& buffer, CVELKeyToValueList& section)
{
    for (std::size_t index = 0; index < axisKeys.size(); ++index) {
        const CAxis axis = buffer.GetAxis(index);
        section.SetValue(axisKeys[index].name, velstdlib::util::CleanHeaderText(axis.name));
        section.SetValue(axisKeys[index].unit, velstdlib::util::CleanHeaderText(axis.unit));
        section.SetValue(axisKeys[index].range, FormatDouble(axis.range));
        section.SetValue(axisKeys[index].min, FormatDouble(axis.min));
    }
}

std::map<std::uint64_t, CLineAxis> LoadLineAxes(const CVELKeyToValueList& section, const CLineAxis& common,
                                                std::uint64_t lineCount, const std::string& fileName)
{
    std::map<std::uint64_t, CLineAxis> lineAxes;
    section.ForEach([&](std::string_view key, std::string_view) {
        const auto line = velstdlib::util::SplitIndexedKey(key, linePrefix);
        if (line && line->index < lineCount && !lineAxes.contains(line->index))
            lineAxes.emplace(line->index, LoadLineAxis(section, line->index, common, fileName));
    });
    std::erase_if(lineAxes, [&](const auto& own) { return own.second == common; });
    return lineAxes;
}

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
        section.SetValue(LineKey(line, "Range"), FormatDouble(axis.range));
        section.SetValue(LineKey(line, "Min"), FormatDouble(axis.min));
        section.SetValue(LineKey(line, "Points"), axis.count);
    }
}

} // namespace veltaris::velflexlib::dataset
