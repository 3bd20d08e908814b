#include "velflexlib/dataset/ChannelSection.h"

#include "velstdlib/math/SIPrefix.h"
#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/HeaderText.h"
#include "velstdlib/util/IndexedKey.h"
#include "velstdlib/util/VELException.h"

#include <array>
#include <string_view>

namespace veltaris::velflexlib::dataset {

using velstdlib::string::FormatDouble;
using velstdlib::util::CVELKeyToValueList;

namespace {

constexpr std::string_view linePrefix = "LineDim";
constexpr std::array axes{pointAxis, lineAxis, signalAxis};

std::string AxisKey(std::size_t axis, std::string_view property)
{
    return ("Dim" + std::to_string(axis)).append(property);
}

struct CAxisTexts
{
    std::string unit;
    double range;
    double min;
};

// The number with its axis' prefix behind it; an unreadable one counts as missing.
double PrefixedNumber(const CVELKeyToValueList& section, const std::string& key, std::string_view defaultText,
                      std::string_view prefix)
{
    const auto parse = [&](std::string text) { return velstdlib::math::ParseSINumber(text.append(prefix)); };
    const auto number = parse(section.GetValue(key, defaultText));
    return number ? *number : parse(std::string(defaultText)).value_or(0);
}

CAxisTexts LoadPrefixed(const CVELKeyToValueList& section, std::size_t axis)
{
    std::string unit = section.GetValue(AxisKey(axis, "Unit"));
    std::string_view prefix = velstdlib::math::LeadingSIPrefix(unit);
    if (prefix.size() == unit.size())
        prefix = {}; // a unit of one character is no prefix
    unit.erase(0, prefix.size());
    return {unit, PrefixedNumber(section, AxisKey(axis, "Range"), "1.0", prefix),
            PrefixedNumber(section, AxisKey(axis, "Min"), "0.0", prefix)};
}

CAxisTexts LoadPlain(const CVELKeyToValueList& section, std::size_t axis)
{
    return {section.GetValue(AxisKey(axis, "Unit")), section.GetValueT<double>(AxisKey(axis, "Range"), 0),
            section.GetValueT<double>(AxisKey(axis, "Min"), 0)};
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
    for (const std::size_t axis : axes) {
        const CAxisTexts texts =
            version <= prefixedUnitsVersion ? LoadPrefixed(section, axis) : LoadPlain(section, axis);
        buffer.SetAxisName(axis, section.GetValue(AxisKey(axis, "Name"), "Noname"));
        buffer.SetAxisUnit(axis, texts.unit);
        buffer.SetAxisRange(axis, texts.range);
        buffer.SetAxisMin(axis, texts.min);
    }
}

void SaveAxes(const CDataBuffer& buffer, CVELKeyToValueList& section)
{
    for (const std::size_t index : axes) {
        section.SetValue(AxisKey(index, "Name"), velstdlib::util::CleanHeaderText(buffer.GetAxisName(index)));
        section.SetValue(AxisKey(index, "Unit"), velstdlib::util::CleanHeaderText(buffer.GetAxisUnit(index)));
        section.SetValue(AxisKey(index, "Range"), FormatDouble(buffer.GetAxisRange(index)));
        section.SetValue(AxisKey(index, "Min"), FormatDouble(buffer.GetAxisMin(index)));
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
    const CLineAxis common = buffer.GetCommonLineAxis();
    for (const auto& [line, axis] : buffer.GetOwnLineAxes()) {
        if (!WrittenAlike(axis, common))
            return true;
    }
    return false;
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
