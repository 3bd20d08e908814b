#include "velflexlib/dataset/serialisers/LoadBudget.h"

#include "velstdlib/util/Limits.h"

#include <algorithm>

namespace veltaris::velflexlib::dataset {

namespace limits = velstdlib::util::limits;

CLoadBudget::CLoadBudget(std::uint64_t headerBytes)
    : m_slots(limits::channelSlots), m_sectionBytes(headerBytes + limits::sharedSectionBytes),
      m_pointlessLines(limits::pointlessLines)
{
}

bool CLoadBudget::TakeSection(std::uint64_t textBytes)
{
    return Take(m_sectionBytes, std::max(textBytes, limits::channelSectionBytes));
}

} // namespace veltaris::velflexlib::dataset
