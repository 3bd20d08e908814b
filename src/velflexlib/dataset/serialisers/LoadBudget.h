// What one file may still ask for while it is loaded.
#pragma once

#include <cstdint>

namespace veltaris::velflexlib::dataset {

// A header is only text: what it promises is charged here before it is built. Charges add up over the whole file, and
// a refused one changes nothing. Samples are not charged: memory for them is taken as they are read. Not thread-safe:
// each load has a budget of its own.
class CLoadBudget
{
public:
    explicit CLoadBudget(std::uint64_t headerBytes);

    // Each answers whether the file may have that too.

    bool TakeSlots(std::uint64_t count) { return Take(m_slots, count); }
    // One channel made from a section with so much text. Several may name one section, and each counts at least as
    // much as a section of its own would need.
    bool TakeSection(std::uint64_t textBytes);
    // The lines of a channel without points, which cost the file nothing.
    bool TakePointlessLines(std::uint64_t count) { return Take(m_pointlessLines, count); }

private:
    static bool Take(std::uint64_t& rest, std::uint64_t count)
    {
        if (count > rest)
            return false;
        rest -= count;
        return true;
    }

    std::uint64_t m_slots;
    std::uint64_t m_sectionBytes;
    std::uint64_t m_pointlessLines;
};

} // namespace veltaris::velflexlib::dataset
