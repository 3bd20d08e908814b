#include "inspect/header/KeyTable.h"

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/header/IndexedKey.h"

#include <array>
#include <limits>

namespace veltaris::inspect {

namespace {

using enum SectionUse;
using enum ValueKind;

constexpr std::array keySpecs{
    KeySpec{DataSet, 0, "Version", Version, "1"},
    KeySpec{DataSet, 0, "SetInfos", Link, ""},
    KeySpec{DataSet, 1, "ChannelCount", Channels, "0"},
    KeySpec{DataSet, 1, "FrameCount", Channels, "0"},
    KeySpec{DataSet, 1, "Ch#-Fr#", Link, "", "ChannelCount"},
    KeySpec{DataSet, 2, "GroupCount", Channels, "0"},
    KeySpec{DataSet, 2, "Gr#-Name", Text, "", "GroupCount"},
    KeySpec{DataSet, 2, "Gr#-ID", Int, "the next one", "GroupCount"},
    KeySpec{DataSet, 2, "Gr#-Count", Channels, "0", "GroupCount", true},
    KeySpec{DataSet, 2, "Gr#-Ch#", Link, "", "GroupCount"},
    KeySpec{DataSet, 2, "InfoSetCount", Count, "0"},
    KeySpec{DataSet, 2, "InfoSet#", Link, "", "InfoSetCount", true},

    KeySpec{Channel, 0, "Version", Version, "1"},
    KeySpec{Channel, 0, "Points", Size, "0"},
    KeySpec{Channel, 0, "Lines", Size, "0"},
    KeySpec{Channel, 0, "SaveBits", Size, "8"},
    KeySpec{Channel, 0, "LineDim#Points", Size, "that of the channel", "Lines"},
    KeySpec{Channel, 0, "LineDim#Range", AxisNumber, "that of the channel", "Lines"},
    KeySpec{Channel, 0, "LineDim#Min", AxisNumber, "that of the channel", "Lines"},
    KeySpec{Channel, 0, "Frame", Text, ""},
    KeySpec{Channel, 0, "CurLine", Int, "0"},
    KeySpec{Channel, 0, "Dim0Name", Text, ""},
    KeySpec{Channel, 0, "Dim1Name", Text, ""},
    KeySpec{Channel, 0, "Dim2Name", Text, ""},
    KeySpec{Channel, 0, "Dim0Unit", Text, ""},
    KeySpec{Channel, 0, "Dim1Unit", Text, ""},
    KeySpec{Channel, 0, "Dim2Unit", Text, ""},
    KeySpec{Channel, 0, "Dim0Range", AxisNumber, "0"},
    KeySpec{Channel, 0, "Dim1Range", AxisNumber, "0"},
    KeySpec{Channel, 0, "Dim2Range", AxisNumber, "0"},
    KeySpec{Channel, 0, "Dim0Min", AxisNumber, "0"},
    KeySpec{Channel, 0, "Dim1Min", AxisNumber, "0"},
    KeySpec{Channel, 0, "Dim2Min", AxisNumber, "0"},
    KeySpec{Channel, 0, "SaveMode", Storage, "Binary"},
    KeySpec{Channel, 0, "SaveSign", Storage, "Signed"},
    KeySpec{Channel, 0, "SaveOrder", Storage, "Intel"},

    KeySpec{InfoGroup, 2, "SubSectionCount", Count, "0"},
    KeySpec{InfoGroup, 2, "SubSection#", Link, "", "SubSectionCount", true},

    KeySpec{ViewList, 0, "Version", Version, "1"},
    KeySpec{ViewList, 0, "ViewWidth", Int, "0"},
    KeySpec{ViewList, 0, "ViewHeight", Int, "0"},
    KeySpec{ViewList, 0, "ViewCount", UnsignedCount, "0"},
    KeySpec{ViewList, 0, "View#", Link, "", "ViewCount", true},

    KeySpec{View, 0, "ViewTyp", Int, "0"},
    KeySpec{View, 0, "LineOp", Int, "0"},
    KeySpec{View, 0, "Channel", Int, "0"},
    KeySpec{View, 0, "Frame", Int, "0"},
    KeySpec{View, 0, "ViewSize", Int, "0"},
    KeySpec{View, 0, "ViewMode", Int, "0"},
    KeySpec{View, 0, "GraphMode", Int, "0"},
    KeySpec{View, 0, "AspectRatio", Int, "0"},
    KeySpec{View, 0, "AutoZRange", Int, "1"},
    KeySpec{View, 0, "ZRange", IntPair, "0"},
    KeySpec{View, 0, "ParCount", UnsignedCount, "0"},
    KeySpec{View, 0, "Par#", Text, "", "ParCount", true},

    KeySpec{ProcessorList, 2, "ProcessorCount", Count, "0"},
    KeySpec{ProcessorList, 2, "Processor#", Link, "", "ProcessorCount", true},
    KeySpec{ProcessorEntry, 2, "GUID", Text, ""},
    KeySpec{ProcessorEntry, 2, "InstanceNo", Unsigned, "none"},
    KeySpec{Processor, 2, "DisplayName", Text, ""},
    KeySpec{Processor, 2, "Enabled", Flag, "yes"},
    KeySpec{Processor, 2, "RangeMin", Parameter, "0 m"},
    KeySpec{Processor, 2, "RangeMax", Parameter, "0 m"},
    KeySpec{Processor, 2, "BaselineMin", Parameter, "0 m"},
    KeySpec{Processor, 2, "BaselineMax", Parameter, "0 m"},
    KeySpec{Processor, 2, "Threshold", Parameter, "5"},
    KeySpec{Processor, 2, "SpringConstant", Parameter, "0 N/m"},
    KeySpec{Processor, 2, "Sensitivity", Parameter, "0 m/V"},
    KeySpec{Processor, 2, "InputCount", UnsignedCount, "0"},
    KeySpec{Processor, 2, "Input#Group", Unsigned, "none", "InputCount"},
    KeySpec{Processor, 2, "Input#Channel", Unsigned, "none", "InputCount"},
    KeySpec{Processor, 2, "OutputCount", UnsignedCount, "0"},
    KeySpec{Processor, 2, "Output#Group", Unsigned, "none", "OutputCount"},
    KeySpec{Processor, 2, "Output#Channel", Unsigned, "none", "OutputCount"},
};

constexpr std::size_t characters = std::numeric_limits<unsigned char>::max() + 1;

constexpr std::size_t FirstOf(std::string_view text)
{
    return static_cast<unsigned char>(velstdlib::string::Folded(text.front()));
}

// The rows by the first character of their patterns, which is never an index, and in their order: a key is compared
// with those few that begin as it does.
class CRowsByFirst
{
public:
    constexpr CRowsByFirst()
    {
        for (const KeySpec& spec : keySpecs)
            ++m_ends[FirstOf(spec.pattern)];
        for (std::size_t first = 1; first < characters; ++first)
            m_ends[first] += m_ends[first - 1];
        auto next = m_ends;
        for (std::size_t row = keySpecs.size(); row-- > 0;)
            m_rows[--next[FirstOf(keySpecs[row].pattern)]] = static_cast<std::uint8_t>(row);
    }

    std::span<const std::uint8_t> Of(std::string_view key) const
    {
        if (key.empty())
            return {};
        const std::size_t first = FirstOf(key), begin = first == 0 ? 0 : m_ends[first - 1];
        return std::span(m_rows).subspan(begin, m_ends[first] - begin);
    }

private:
    std::array<std::uint8_t, keySpecs.size()> m_rows{};
    std::array<std::uint8_t, characters> m_ends{}; // behind those of a character
};

constexpr CRowsByFirst rowsByFirst;

} // namespace

std::optional<KnownKey> FindKeySpec(SectionUse use, int version, std::string_view key)
{
    for (const std::uint8_t row : rowsByFirst.Of(key)) {
        const KeySpec& spec = keySpecs[row];
        if (spec.use != use || (spec.version != 0 && spec.version != version))
            continue;
        if (const auto indices = MatchKey(key, spec.pattern))
            return KnownKey{&spec, *indices};
    }
    return std::nullopt;
}

std::span<const KeySpec> AllKeySpecs()
{
    return keySpecs;
}

bool IsOfAxis(const KeySpec& spec)
{
    return spec.use == Channel && (spec.pattern.starts_with("Dim") || spec.pattern.starts_with("LineDim"));
}

std::optional<KeyIndices> MatchKey(std::string_view key, std::string_view pattern)
{
    KeyIndices indices;
    std::uint64_t* next = &indices.first;
    for (auto index = pattern.find('#'); index != std::string_view::npos; index = pattern.find('#')) {
        const auto found = velstdlib::util::SplitIndexedKey(key, pattern.substr(0, index));
        if (!found)
            return std::nullopt;
        *next = found->index;
        next = &indices.second;
        key = found->rest;
        pattern.remove_prefix(index + 1);
    }
    return velstdlib::string::EqualFolded(key, pattern) ? std::optional(indices) : std::nullopt;
}

} // namespace veltaris::inspect
