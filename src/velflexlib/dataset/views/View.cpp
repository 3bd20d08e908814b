#include "velflexlib/dataset/views/View.h"

#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/BiMapper.h"
#include "velstdlib/util/ContainerHelper.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/header/ListCount.h"

#include <stdexcept>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

using velstdlib::string::ParseLeadingInt;
using velstdlib::util::BiMapper;
using velstdlib::util::CHeaderSection;
using velstdlib::util::CVELKeyToValueList;

namespace {

const BiMapper<DataViewID, int> dataViewCodes{{DataViewID::Kind0, 0}, {DataViewID::Kind1, 1}, {DataViewID::Kind2, 2},
                                              {DataViewID::Kind3, 3}, {DataViewID::Kind4, 4}, {DataViewID::Kind5, 5},
                                              {DataViewID::Kind6, 6}};
const BiMapper<ViewMode, int> viewModeCodes{{ViewMode::Mode0, 0}, {ViewMode::Mode1, 1}};
const BiMapper<GraphMode, int> graphModeCodes{{GraphMode::Mode0, 0}, {GraphMode::Mode1, 1}, {GraphMode::Mode2, 2}};

// The first fields of a text that commas separate: at least one, and at most `most`.
std::vector<std::string_view> LeadingFields(std::string_view text, std::size_t most)
{
    std::vector<std::string_view> fields;
    while (fields.size() < most) {
        const auto comma = text.find(',');
        fields.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos)
            break;
        text.remove_prefix(comma + 1);
    }
    return fields;
}

template <class Enum>
void ReadMapped(const CVELKeyToValueList& keys, std::string_view key, const BiMapper<Enum, int>& codes, Enum& field)
{
    field = codes.map(keys.GetValueT<int>(key, codes.map(field)));
}

void ReadInt(const CVELKeyToValueList& keys, std::string_view key, int& field)
{
    field = keys.GetValueT<int>(key, field);
}

// The number that the text begins with, or the fallback if there is none or it is out of range.
int LeadingIntOr(std::string_view text, int fallback)
{
    try {
        return ParseLeadingInt(text);
    } catch (const std::logic_error&) {
        return fallback;
    }
}

std::pair<int, int> ReadZRange(const CVELKeyToValueList& keys, const std::pair<int, int>& current)
{
    const std::string currentText = std::to_string(current.first) + "," + std::to_string(current.second);
    const std::string text = keys.GetValue("ZRange", currentText);
    auto fields = LeadingFields(text, 2);
    const std::string_view last = velstdlib::util::CheckedAt(fields, 1);
    return {LeadingIntOr(fields.front(), current.first), LeadingIntOr(last, current.second)};
}

// The fields of a line are the code of an operator, the name of a parameter and its value. Lines with fewer fields are
// skipped, as are lines with an unknown code.
void StoreParameter(CView& view, std::string_view line)
{
    const auto fields = LeadingFields(line, 3);
    if (fields.size() < 3)
        return;
    const int code = ParseLeadingInt(fields[0]);
    if (code >= 0 && std::cmp_less(code, view.lineOpParameters.size()))
        view.lineOpParameters[static_cast<std::size_t>(code)].insert_or_assign(std::string(fields[1]), fields[2]);
}

// In the order of the lines' numbers: of two lines with the same name the later one counts.
void ReadParameters(CView& view, const CHeaderSection& section)
{
    const auto count =
        velstdlib::util::ReadListCount<std::uint64_t>(section, "ParCount", velstdlib::util::limits::viewParameters);
    for (const auto& [index, line] : ReadNumberedValues(section.keys, "Par", count))
        StoreParameter(view, line);
}

} // namespace

void CView::Read(const CHeaderSection& section)
{
    const CVELKeyToValueList& keys = section.keys;
    ReadMapped(keys, "ViewTyp", dataViewCodes, id); // sic
    ReadMapped(keys, "LineOp", LineOpCodes(), lineOp);
    ReadInt(keys, "Channel", channel);
    ReadInt(keys, "Frame", frame);
    ReadInt(keys, "ViewSize", size);
    ReadMapped(keys, "ViewMode", viewModeCodes, viewMode);
    ReadMapped(keys, "GraphMode", graphModeCodes, graphMode);
    ReadInt(keys, "AspectRatio", aspectRatio);
    autoZRange = keys.GetValueT<int>("AutoZRange", autoZRange ? 1 : 0) != 0;
    zRange = ReadZRange(keys, zRange);
    ReadParameters(*this, section);
}

} // namespace veltaris::velflexlib::dataset
