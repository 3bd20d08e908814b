// What one file may still ask for while it is loaded.
#pragma once

#include "velstdlib/util/VELConfig.h"

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

    // Throws CVELFileBadContentException for too many lines without points, and std::ios_base::failure, as reading the
    // samples would, when the file is too short to hold those of `lines` lines.
    void ChargeSamples(std::uint64_t points, std::uint64_t lines, std::int64_t bitCount);

private:
    std::string m_fileName;
    std::uint64_t m_dataBytes;
    std::uint64_t m_slots;
    std::uint64_t m_pointlessLines;
};

} // namespace veltaris::velflexlib::dataset
