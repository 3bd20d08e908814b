// Collects findings while a file is inspected.
#pragma once

#include "inspect/Finding.h"
#include "inspect/header/HeaderLines.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::inspect {

// The text in double quotes, cut when it is long.
std::string Quoted(std::string_view text);

// What was made of something, and one sentence about it.
struct Remark
{
    std::string taken;
    std::string sentence;
};

// The lines must outlive the list. Not thread-safe: belongs to one inspection.
class CFindingList
{
public:
    static constexpr std::size_t mostPerRule = 1000;

    explicit CFindingList(const CHeaderLines& lines) : m_lines(lines) {}

    // About a line of the header: what is found is the value of its key or, without one, the whole line.
    void AddLine(RuleId rule, const HeaderLine& line, Remark remark);
    // About a line, or about the section as a whole, which has no line when it is missing.
    void AddKey(RuleId rule, std::uint32_t section, std::string_view key, Remark remark);
    void AddSection(RuleId rule, std::uint32_t section, Remark remark);
    // About a place in the file that is no line.
    void AddPlace(RuleId rule, std::uint64_t offset, std::string_view found, Remark remark);
    void Add(Finding finding);

    // All of them in file order, with one more for each rule that has too many.
    std::vector<Finding> Take();

private:
    const CHeaderLines& m_lines;
    std::vector<Finding> m_findings;
    std::map<RuleId, std::uint64_t> m_counts;
};

} // namespace veltaris::inspect
