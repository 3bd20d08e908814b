// The lines of a header and where they stand in the file, which the library's own document does not keep.
#pragma once

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::inspect {

inline constexpr std::uint32_t noSection = ~std::uint32_t{0};

// A line that is not blank.
struct HeaderLine
{
    enum class Kind : std::uint8_t
    {
        Section,
        Key,     // sets a key
        Removal, // a key without a value
        Other    // neither: it is ignored
    };

    std::uint32_t offset = 0;          // in the file, in bytes
    std::uint32_t number = 0;          // from 1
    std::uint32_t begin = 0;           // in the decoded text, in bytes
    std::uint32_t length = 0;          // without white space at the end
    std::uint32_t keyLength = 0;       // of a key
    std::uint32_t section = noSection; // position of the section that it is in, or noSection
    Kind kind = Kind::Other;
    bool isReplaced = false; // a later line sets or removes the same key
    bool repeats = false;    // an earlier line has the same name or key
};

// Reads lines exactly as CIniFileContent does, and decodes them as CVELConfig does. Positions of sections and lines are
// numbers from 0 in the order of the file. Not thread-safe while it is made; afterwards it does not change.
class CHeaderLines
{
public:
    // How the bytes are encoded. No lines are read from a wide encoding.
    enum class Encoding
    {
        Utf8,
        MarkedUtf8, // with a byte-order mark ahead
        CodePage,
        Wide
    };

    // `bytes` is the header with its end mark.
    explicit CHeaderLines(std::string bytes);
    CHeaderLines(const CHeaderLines&) = delete;
    CHeaderLines& operator=(const CHeaderLines&) = delete;
    ~CHeaderLines() = default;

    Encoding GetEncoding() const { return m_encoding; }
    // Not UTF-8, although most characters beyond ASCII are.
    bool IsDamagedUtf8() const { return m_isDamagedUtf8; }
    std::uint64_t FirstUndecodable() const { return m_firstUndecodable; } // offset of the byte that is not UTF-8
    const std::vector<HeaderLine>& Lines() const { return m_lines; }
    // What follows the last line end, up to the end mark; the library ignores it.
    const std::optional<HeaderLine>& Unended() const { return m_unended; }

    std::string_view Text(const HeaderLine& line) const { return View().substr(line.begin, line.length); }
    std::string_view Key(const HeaderLine& line) const { return Text(line).substr(0, line.keyLength); }
    std::string_view Value(const HeaderLine& line) const;

    std::size_t SectionCount() const { return m_sections.size(); }
    std::string_view SectionName(std::uint32_t section) const;
    const HeaderLine& SectionHead(std::uint32_t section) const { return m_lines[m_sections[section]]; }
    // The keys of a section, also those that are replaced, as positions of lines in their order.
    std::span<const std::uint32_t> LinesOf(std::uint32_t section) const;

    // noSection when there is none of this name.
    std::uint32_t FindSection(std::string_view name) const;
    // The line that gives the key its value, or null. `section` may be noSection.
    const HeaderLine* FindKey(std::uint32_t section, std::string_view key) const;
    // The value under the key; the default also when it is no such number, as the library reads it.
    int IntOf(std::uint32_t section, std::string_view key, int defaultValue) const;
    std::string_view ValueOf(std::uint32_t section, std::string_view key) const;

private:
    struct Name
    {
        std::uint32_t section; // noSection: the name of a section
        std::string_view text;
    };
    struct Hash
    {
        using is_transparent = void;
        const CHeaderLines* lines;
        std::size_t operator()(const Name& name) const;
        std::size_t operator()(std::uint32_t line) const { return (*this)(lines->NameOf(line)); }
    };
    struct Equal
    {
        using is_transparent = void;
        const CHeaderLines* lines;
        bool operator()(std::uint32_t a, std::uint32_t b) const { return a == b; }
        bool operator()(const Name& name, std::uint32_t line) const;
        bool operator()(std::uint32_t line, const Name& name) const { return (*this)(name, line); }
    };

    void Decode(std::string bytes);
    // `bytes` is the text as it was before it was decoded, without a byte-order mark.
    void ReadLines(std::string_view bytes);
    void ReadLine(std::uint64_t offset, std::uint32_t number, std::string_view text);
    void AddSection(HeaderLine line);
    void AddKey(HeaderLine line);
    void GroupBySection();
    std::string_view View() const { return m_text; }
    Name NameOf(std::uint32_t line) const;

    std::string m_text; // decoded, without a byte-order mark
    Encoding m_encoding = Encoding::Utf8;
    std::uint64_t m_firstUndecodable = 0;
    bool m_isDamagedUtf8 = false;
    std::vector<HeaderLine> m_lines;
    std::optional<HeaderLine> m_unended;
    std::vector<std::uint32_t> m_sections; // the line of each one's first head
    std::uint32_t m_current = noSection;
    boost::unordered_flat_set<std::uint32_t, Hash, Equal> m_index; // of sections, and of keys that are not replaced
    std::vector<std::uint32_t> m_linesBySection;
    std::vector<std::uint32_t> m_firstOfSection; // in it; one more than there are sections
};

} // namespace veltaris::inspect
