// Headers as plain text: read in one pass, and written by appending to one string.
#include "compare/Baseline.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <optional>
#include <type_traits>
#include <vector>

namespace bench::baseline {

namespace {

using Block = std::uint64_t;

// Folds the case of letters. A few other characters become equal as well, which only makes their searches longer.
std::uint64_t HashFolded(std::string_view name)
{
    std::uint64_t state = name.size();
    while (!name.empty()) {
        Block block = 0;
        const std::size_t length = std::min(name.size(), sizeof block);
        std::memcpy(&block, name.data(), length);
        state = (state ^ (block | 0x2020202020202020)) * 0x9E3779B97F4A7C15;
        state ^= std::rotl(state, 31);
        name.remove_prefix(length);
    }
    return state;
}

bool EqualFolded(std::string_view a, std::string_view b)
{
    const auto folded = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (folded(a[i]) != folded(b[i]))
            return false;
    }
    return true;
}

struct Entry
{
    std::string_view key;
    std::string_view value;
};

// A hash table of the keys of one section, or of the names of all sections. Index() builds it when every entry has been
// added, so that it never grows.
class CTable
{
public:
    void Add(std::string_view key, std::string_view value) { m_entries.push_back({key, value}); }

    void Index()
    {
        m_slots.resize(std::bit_ceil(m_entries.size() * 3 / 2 + 1));
        for (std::uint32_t i = 0; i < m_entries.size(); ++i)
            m_slots[SlotOf(m_entries[i].key)] = i + 1; // the last of several equal keys counts
    }

    // Returns the number of the entry, if there is one.
    std::optional<std::uint32_t> Find(std::string_view key) const
    {
        const std::uint32_t found = m_slots[SlotOf(key)];
        return found == 0 ? std::nullopt : std::optional(found - 1);
    }

    std::string_view Value(std::string_view key) const
    {
        const auto found = Find(key);
        return found ? m_entries[*found].value : std::string_view();
    }

    std::size_t Count() const { return m_entries.size(); }

private:
    std::size_t SlotOf(std::string_view key) const
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t slot = HashFolded(key) & mask;
        while (m_slots[slot] != 0 && !EqualFolded(m_entries[m_slots[slot] - 1].key, key))
            slot = (slot + 1) & mask;
        return slot;
    }

    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_slots; // numbers of entries from 1
};

struct KeyIndex
{
    CTable names;
    std::vector<CTable> sections;

    const CTable& Section(std::string_view name) const { return sections[*names.Find(name)]; }
};

std::string ReadWhole(const std::string& path)
{
    std::string text(std::filesystem::file_size(path), '\0');
    CFile::AtStart(path).Read(text.data(), text.size());
    return text;
}

KeyIndex Indexed(std::string_view text)
{
    KeyIndex index;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.starts_with('[')) {
            if (!index.sections.empty())
                index.sections.back().Index();
            index.names.Add(line.substr(1, line.size() - 2), {});
            index.sections.emplace_back();
        } else if (const auto equals = line.find('='); equals != std::string_view::npos) {
            index.sections.back().Add(line.substr(0, equals), line.substr(equals + 1));
        }
    }
    index.sections.back().Index();
    index.names.Index();
    return index;
}

template <class Number>
Number NumberIn(const CTable& section, std::string_view key)
{
    const std::string_view text = section.Value(key);
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

constexpr std::array<std::array<std::string_view, 4>, 3> axisKeys{{{"Dim0Name", "Dim0Unit", "Dim0Range", "Dim0Min"},
                                                                   {"Dim1Name", "Dim1Unit", "Dim1Range", "Dim1Min"},
                                                                   {"Dim2Name", "Dim2Unit", "Dim2Range", "Dim2Min"}}};

Channel ChannelIn(const CTable& section)
{
    Channel channel{NumberIn<std::uint64_t>(section, "Points"),
                    NumberIn<std::uint64_t>(section, "Lines"),
                    section.Value("Frame"),
                    NumberIn<std::uint64_t>(section, "CurLine"),
                    {},
                    NumberIn<std::uint64_t>(section, "SaveBits")};
    for (std::size_t i = 0; i < axisKeys.size(); ++i)
        channel.axes[i] = {section.Value(axisKeys[i][0]), section.Value(axisKeys[i][1]),
                           NumberIn<double>(section, axisKeys[i][2]), NumberIn<double>(section, axisKeys[i][3])};
    return channel;
}

void Append(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append("=").append(value).append("\r\n");
}

template <class Number>
void AppendNumber(std::string& text, std::string_view key, Number number)
{
    std::array<char, 32> digits{};
    std::to_chars_result end{};
    if constexpr (std::is_floating_point_v<Number>)
        end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::general, 6);
    else
        end = std::to_chars(digits.begin(), digits.end(), number);
    Append(text, key, {digits.begin(), end.ptr});
}

void AppendChannel(std::string& text, const Shape& shape, std::uint64_t channel)
{
    text.append("[DataSet-0:").append(std::to_string(channel)).append("]\r\n");
    Append(text, "Version", "2");
    AppendNumber(text, "Points", shape.points);
    AppendNumber(text, "Lines", shape.lines);
    Append(text, "Frame", "ForwardScan");
    AppendNumber(text, "CurLine", 0);
    for (const auto& axis : axisKeys) {
        Append(text, axis[0], "Topography");
        Append(text, axis[1], "m");
        AppendNumber(text, axis[2], 2.5e-6);
        AppendNumber(text, axis[3], -1.25e-6);
    }
    Append(text, "SaveMode", "Binary");
    AppendNumber(text, "SaveBits", shape.bits);
    Append(text, "SaveSign", "Signed");
    Append(text, "SaveOrder", "Intel");
}

} // namespace

std::uint64_t IndexHeader(const std::string& path)
{
    const std::string text = ReadWhole(path);
    return Indexed(text).names.Count();
}

std::uint64_t ReadHeader(const std::string& path)
{
    const std::string text = ReadWhole(path);
    const KeyIndex index = Indexed(text);
    const CTable& dataSet = index.Section("DataSet");
    std::vector<Channel> channels(NumberIn<std::uint64_t>(dataSet, "Gr0-Count"));
    for (std::size_t c = 0; c < channels.size(); ++c)
        channels[c] = ChannelIn(index.Section(dataSet.Value("Gr0-Ch" + std::to_string(c))));
    return channels.size();
}

void WriteHeader(const std::string& path, const Shape& shape, std::uint64_t channels)
{
    std::string text = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=ForwardScan\r\nGr0-ID=256\r\n";
    AppendNumber(text, "Gr0-Count", channels);
    for (std::uint64_t c = 0; c < channels; ++c) {
        const std::string number = std::to_string(c);
        text.append("Gr0-Ch").append(number).append("=DataSet-0:").append(number).append("\r\n");
    }
    for (std::uint64_t c = 0; c < channels; ++c)
        AppendChannel(text, shape, c);
    text += "\r\n#!";
    std::filesystem::remove(path);
    CFile::ToWrite(path).Write(text.data(), text.size());
}

} // namespace bench::baseline
