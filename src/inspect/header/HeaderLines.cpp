#include "inspect/header/HeaderLines.h"

#include "velstdlib/string/Encoding.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/string/NumberText.h"
#include "velstdlib/util/header/HeaderText.h"

#include <boost/lexical_cast/bad_lexical_cast.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veltaris::inspect {

namespace str = velstdlib::string;

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// The bytes of the longest character begin at most so far ahead of one that is wrong.
constexpr std::size_t longestCharacter = 4;

// The first line that has bytes which are not UTF-8 is near enough for a reader; the byte is looked for in it.
std::size_t FirstUndecodableByte(std::string_view bytes)
{
    std::size_t from = 0;
    while (true) {
        const auto end = bytes.find('\n', from);
        const std::string_view line = bytes.substr(from, end == std::string_view::npos ? end : end - from);
        if (!str::IsValidUtf8(line)) {
            std::size_t good = 0;
            for (std::size_t i = 1; i <= line.size() && i - good <= longestCharacter; ++i)
                good = str::IsValidUtf8(line.substr(good, i - good)) ? i : good;
            return from + good;
        }
        if (end == std::string_view::npos)
            return bytes.size();
        from = end + 1;
    }
}

// The bytes of the character of UTF-8 that begins at the byte, or 0.
std::size_t CharacterBytes(std::string_view bytes, std::size_t begin)
{
    for (std::size_t count = 2; count <= longestCharacter && begin + count <= bytes.size(); ++count) {
        if (str::IsValidUtf8(bytes.substr(begin, count)))
            return count;
    }
    return 0;
}

// Of the characters beyond ASCII.
bool AreMostUtf8(std::string_view bytes)
{
    std::size_t characters = 0, others = 0;
    for (std::size_t i = 0; i < bytes.size();) {
        const bool isAscii = static_cast<unsigned char>(bytes[i]) < 0x80;
        const std::size_t count = isAscii ? 1 : CharacterBytes(bytes, i);
        characters += count > 1 ? 1 : 0;
        others += count == 0 ? 1 : 0;
        i += std::max<std::size_t>(count, 1);
    }
    return characters > others;
}

} // namespace

CHeaderLines::CHeaderLines(std::string bytes) : m_index(0, Hash{this}, Equal{this})
{
    const std::string undecoded = str::IsValidUtf8(bytes) ? std::string() : bytes;
    Decode(std::move(bytes));
    if (m_encoding != Encoding::Wide)
        ReadLines(undecoded.empty() ? View() : undecoded);
    GroupBySection();
}

void CHeaderLines::Decode(std::string bytes)
try {
    const bool isUtf8 = str::IsValidUtf8(bytes);
    const bool isMarked = isUtf8 && bytes.starts_with(utf8Mark);
    m_encoding = isMarked ? Encoding::MarkedUtf8 : (isUtf8 ? Encoding::Utf8 : Encoding::CodePage);
    m_firstUndecodable = isUtf8 ? 0 : FirstUndecodableByte(bytes);
    m_isDamagedUtf8 = !isUtf8 && AreMostUtf8(bytes);
    str::AppendAnalyzed(m_text, std::move(bytes));
} catch (const std::runtime_error&) {
    m_encoding = Encoding::Wide;
}

// Line ends are the same bytes in all encodings that are read, so that both texts have the same lines.
void CHeaderLines::ReadLines(std::string_view bytes)
{
    const std::uint64_t markBytes = m_encoding == Encoding::MarkedUtf8 ? utf8Mark.size() : 0;
    std::uint64_t offset = 0; // in `bytes`
    std::size_t begin = 0;
    std::uint32_t number = 1;
    for (auto end = m_text.find('\n'); end != std::string::npos; end = m_text.find('\n', begin)) {
        ReadLine(markBytes + offset, number++, View().substr(begin, end - begin));
        begin = end + 1;
        offset = bytes.find('\n', offset) + 1;
    }
    std::string_view rest = View().substr(begin);
    rest.remove_suffix(std::min(rest.size(), velstdlib::util::headerEndMark.size()));
    rest = str::WithoutTrailingSpace(rest);
    if (rest.empty())
        return;
    m_unended = HeaderLine{static_cast<std::uint32_t>(markBytes + offset), number, static_cast<std::uint32_t>(begin),
                           static_cast<std::uint32_t>(rest.size())};
    m_unended->section = m_current;
}

void CHeaderLines::ReadLine(std::uint64_t offset, std::uint32_t number, std::string_view text)
{
    const auto begin = static_cast<std::uint32_t>(text.data() - m_text.data());
    text = str::WithoutTrailingSpace(text);
    if (text.empty())
        return;
    HeaderLine line{static_cast<std::uint32_t>(offset), number, begin, static_cast<std::uint32_t>(text.size())};
    line.section = m_current;
    const auto equals = text.find('=');
    if (text.starts_with('[') && text.ends_with(']')) {
        AddSection(line);
    } else if (equals == std::string_view::npos || equals == 0) {
        m_lines.push_back(line);
    } else {
        line.keyLength = static_cast<std::uint32_t>(equals);
        line.kind = equals + 1 < text.size() ? HeaderLine::Kind::Key : HeaderLine::Kind::Removal;
        AddKey(line);
    }
}

void CHeaderLines::AddSection(HeaderLine line)
{
    const std::string_view text = Text(line);
    const auto found = m_index.find(Name{noSection, text.substr(1, text.size() - 2)});
    const auto position = static_cast<std::uint32_t>(m_lines.size());
    line.kind = HeaderLine::Kind::Section;
    line.repeats = found != m_index.end();
    line.section = line.repeats ? m_lines[*found].section : static_cast<std::uint32_t>(m_sections.size());
    m_current = line.section;
    m_lines.push_back(line);
    if (line.repeats)
        return;
    m_sections.push_back(position);
    m_index.insert(position);
}

void CHeaderLines::AddKey(HeaderLine line)
{
    if (m_current != noSection) {
        if (const auto found = m_index.find(Name{m_current, Key(line)}); found != m_index.end()) {
            line.repeats = true;
            m_lines[*found].isReplaced = true;
            m_index.erase(found);
        }
    }
    m_lines.push_back(line);
    if (m_current != noSection && line.kind == HeaderLine::Kind::Key)
        m_index.insert(static_cast<std::uint32_t>(m_lines.size() - 1));
}

void CHeaderLines::GroupBySection()
{
    const auto isKey = [](const HeaderLine& line) {
        return line.section != noSection &&
               (line.kind == HeaderLine::Kind::Key || line.kind == HeaderLine::Kind::Removal);
    };
    m_firstOfSection.assign(m_sections.size() + 2, 0);
    for (const HeaderLine& line : m_lines) {
        if (isKey(line))
            ++m_firstOfSection[line.section + 2];
    }
    for (std::size_t s = 2; s < m_firstOfSection.size(); ++s)
        m_firstOfSection[s] += m_firstOfSection[s - 1];
    m_linesBySection.resize(m_firstOfSection.back());
    for (std::uint32_t i = 0; i < m_lines.size(); ++i) {
        if (isKey(m_lines[i]))
            m_linesBySection[m_firstOfSection[m_lines[i].section + 1]++] = i;
    }
}

std::string_view CHeaderLines::Value(const HeaderLine& line) const
{
    return line.kind == HeaderLine::Kind::Key ? Text(line).substr(line.keyLength + 1) : std::string_view();
}

std::string_view CHeaderLines::SectionName(std::uint32_t section) const
{
    if (section == noSection)
        return {};
    const std::string_view text = Text(SectionHead(section));
    return text.substr(1, text.size() - 2);
}

std::span<const std::uint32_t> CHeaderLines::LinesOf(std::uint32_t section) const
{
    if (section == noSection)
        return {};
    const std::size_t first = m_firstOfSection[section];
    return std::span(m_linesBySection).subspan(first, m_firstOfSection[section + 1] - first);
}

std::uint32_t CHeaderLines::FindSection(std::string_view name) const
{
    const auto found = m_index.find(Name{noSection, name});
    return found == m_index.end() ? noSection : m_lines[*found].section;
}

const HeaderLine* CHeaderLines::FindKey(std::uint32_t section, std::string_view key) const
{
    if (section == noSection)
        return nullptr;
    const auto found = m_index.find(Name{section, key});
    return found == m_index.end() ? nullptr : &m_lines[*found];
}

std::string_view CHeaderLines::ValueOf(std::uint32_t section, std::string_view key) const
{
    const HeaderLine* const line = FindKey(section, key);
    return line ? Value(*line) : std::string_view();
}

int CHeaderLines::IntOf(std::uint32_t section, std::string_view key, int defaultValue) const
try {
    const HeaderLine* const line = FindKey(section, key);
    return line ? str::ParseNumber<int>(Value(*line)) : defaultValue;
} catch (const boost::bad_lexical_cast&) {
    return defaultValue;
}

CHeaderLines::Name CHeaderLines::NameOf(std::uint32_t line) const
{
    const HeaderLine& at = m_lines[line];
    const std::string_view text = Text(at);
    return at.kind == HeaderLine::Kind::Section ? Name{noSection, text.substr(1, text.size() - 2)}
                                                : Name{at.section, Key(at)};
}

std::size_t CHeaderLines::Hash::operator()(const Name& name) const
{
    return str::HashFolded(name.text) + std::size_t{name.section} * 0x9E37'79B9'7F4A'7C15U;
}

bool CHeaderLines::Equal::operator()(const Name& name, std::uint32_t line) const
{
    const Name other = lines->NameOf(line);
    return name.section == other.section && str::EqualFolded(name.text, other.text);
}

} // namespace veltaris::inspect
