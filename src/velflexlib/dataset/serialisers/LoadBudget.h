// What one file may still ask for while it is loaded.
#pragma once

#include "velstdlib/util/header/VELConfig.h"

#include <cstdint>
#include <string>

namespace veltaris::velflexlib::dataset {

// A header is only text: what it promises is charged here before it is built. Charges add up over the whole file.
class CLoadBudget
{
public:
    explicit CLoadBudget(const velstdlib::util::CVELConfig& document);

    // Throws CVELFileBadContentException when the file has asked for more channel slots than there may be.
    void ChargeSlots(std::uint64_t count);

    // Throws CVELFileBadContentException when the file makes more channels of its sections than it has text for. One of
    // them is made from this section.
    void ChargeSection(const velstdlib::util::CVELKeyToValueList& section);
    // The same, when so many are to be made: nothing is charged yet.
    void CheckSections(std::uint64_t count) const;

    // Throws CVELFileBadContentException for too many lines without points, and std::ios_base::failure, as reading the
    // samples would, when the file is too short to hold those of `lines` lines. The bit count must be 8, 16 or 32.
    void ChargeSamples(std::uint64_t points, std::uint64_t lines, std::int64_t bitCount);

private:
    void Take(std::uint64_t& rest, std::uint64_t count) const;

    std::string m_fileName;
    std::uint64_t m_dataBytes;
    std::uint64_t m_slots;
    std::uint64_t m_sectionBytes;
    std::uint64_t m_pointlessLines;
};

} // namespace veltaris::velflexlib::dataset
