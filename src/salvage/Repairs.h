// The texts that a header may have had before a single byte of it was damaged.
#pragma once

#include "inspect/Inspection.h"
#include "inspect/header/HeaderLines.h"
#include "inspect/header/SectionUses.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::salvage {

// Another text for a line of the header. A plain value.
struct Repair
{
    std::uint64_t offset = 0; // of the line in the header, in bytes
    std::uint64_t line = 0;   // its number, from 1
    std::string section;      // that it is in
    std::string found;        // the line without its end
    std::string text;         // what stands there instead
};

// Whether it concerns a single line of a channel.
bool IsLineRepair(const Repair& repair);

std::string Repaired(std::string_view header, const Repair& repair);

// A header that opens, its text, and what was found in it.
struct HeaderToRepair
{
    std::string_view text; // with its end mark
    const inspect::CHeaderLines& lines;
    const inspect::CSectionUses& uses;
    const inspect::Inspection& inspection; // may lack what keeps the header from opening
};

// All repairs by one byte of what says where samples stand: sizes of channels, counts, links to the sections of
// channels, and the heads of these. Each number that would make the samples fit the bytes of the file is among them,
// but not all repairs fit. The work goes by the header.
std::vector<Repair> FindRepairs(const HeaderToRepair& header);

} // namespace veltaris::salvage
