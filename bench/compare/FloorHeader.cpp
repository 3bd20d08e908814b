// A header as text: read in one pass over it, and written into one string.
#include "compare/Floor.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace bench::floor {

namespace {

using Block = std::uint64_t;

// Letters of both cases become alike; so do a few other characters, which only lengthens the search for those.
std::uint64_t HashFolded(std::string_view name, std::uint64_t state)
{
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
    std::uint32_t section;
};

class CKeyIndex
{
public:
    explicit CKeyIndex(std::size_t textBytes) : m_slots(std::bit_ceil(textBytes / 8 + 16))
    {
        m_entries.reserve(textBytes / 16 + 1);
        m_entries.push_back({});
    }

    // The entry under this key of this section, made if there is none.
    Entry& At(std::uint32_t section, std::string_view key)
    {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t slot = HashFolded(key, section) & mask;; slot = (slot + 1) & mask) {
            if (m_slots[slot] == 0) {
                m_slots[slot] = static_cast<std::uint32_t>(m_entries.size());
                return m_entries.emplace_back(Entry{key, {}, section});
            }
            Entry& entry = m_entries[m_slots[slot]];
            if (entry.section == section && EqualFolded(entry.key, key))
                return entry;
        }
    }

    std::uint32_t NumberOf(const Entry& entry) const { return static_cast<std::uint32_t>(&entry - m_entries.data()); }
    std::size_t Count() const { return m_entries.size() - 1; }

private:
    std::vector<std::uint32_t> m_slots; // numbers of entries, 0 where there is none
    std::vector<Entry> m_entries;
};

void Append(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append(value).append("\r\n");
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
    static constexpr std::array<std::array<std::string_view, 4>, 3> axes{
        {{"Dim0Name=", "Dim0Unit=", "Dim0Range=", "Dim0Min="},
         {"Dim1Name=", "Dim1Unit=", "Dim1Range=", "Dim1Min="},
         {"Dim2Name=", "Dim2Unit=", "Dim2Range=", "Dim2Min="}}};
    text += "[DataSet-0:";
    AppendNumber(text, "", channel);
    text.replace(text.size() - 2, 2, "]\r\n");
    Append(text, "Version=", "2");
    AppendNumber(text, "Points=", shape.points);
    AppendNumber(text, "Lines=", shape.lines);
    Append(text, "Frame=", "ForwardScan");
    AppendNumber(text, "CurLine=", 0);
    for (const auto& axis : axes) {
        Append(text, axis[0], "Topography");
        Append(text, axis[1], "m");
        AppendNumber(text, axis[2], 2.5e-6);
        AppendNumber(text, axis[3], -1.25e-6);
    }
    Append(text, "SaveMode=", "Binary");
    AppendNumber(text, "SaveBits=", shape.bits);
    Append(text, "SaveSign=", "Signed");
    Append(text, "SaveOrder=", "Intel");
}

} // namespace

std::uint64_t IndexHeader(const std::string& path)
{
    std::string text(std::filesystem::file_size(path), '\0');
    CFile::AtStart(path).Read(text.data(), text.size());
    CKeyIndex index(text.size());
    std::uint32_t section = 0;
    std::string_view rest = text;
    for (auto end = rest.find('\n'); end != rest.npos; end = rest.find('\n')) {
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.starts_with('['))
            section = index.NumberOf(index.At(0, line.substr(1, line.size() - 2)));
        else if (const auto equals = line.find('='); equals != line.npos)
            index.At(section, line.substr(0, equals)).value = line.substr(equals + 1);
    }
    return index.Count();
}

void WriteHeader(const std::string& path, const Shape& shape, std::uint64_t channels)
{
    std::string text = "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Name=ForwardScan\r\nGr0-ID=256\r\n";
    AppendNumber(text, "Gr0-Count=", channels);
    for (std::uint64_t c = 0; c < channels; ++c) {
        AppendNumber(text, "Gr0-Ch", c);
        text.replace(text.size() - 2, 2, "=DataSet-0:");
        AppendNumber(text, "", c);
    }
    for (std::uint64_t c = 0; c < channels; ++c)
        AppendChannel(text, shape, c);
    text += "\r\n#!";
    std::filesystem::remove(path);
    CFile::ToWrite(path).Write(text.data(), text.size());
}

} // namespace bench::floor
