#include "velflexlib/dataset/LoadBudget.h"

#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <ios>

namespace veltaris::velflexlib::dataset {

namespace limits = velstdlib::util::limits;

namespace {

[[noreturn]] void ThrowShortStream()
{
    throw std::ios_base::failure("basic_ios::clear", std::make_error_code(std::io_errc::stream));
}

} // namespace

CLoadBudget::CLoadBudget(const velstdlib::util::CVELConfig& document)
    : m_fileName(document.GetFileName()), m_dataBytes(document.GetDataBytes()), m_slots(limits::channelSlots),
      m_pointlessLines(limits::pointlessLines)
{
}

void CLoadBudget::ChargeSlots(std::uint64_t count)
{
    if (count > m_slots)
        velstdlib::util::ThrowBadContent(m_fileName);
    m_slots -= count;
}

void CLoadBudget::ChargeSamples(std::uint64_t points, std::uint64_t lines, std::int64_t bitCount)
{
    if (points == 0) {
        if (lines > m_pointlessLines)
            velstdlib::util::ThrowBadContent(m_fileName);
        m_pointlessLines -= lines;
        return;
    }
    const auto sampleBytes = static_cast<std::uint64_t>(std::max<std::int64_t>(bitCount / 8, 1));
    if (lines > m_dataBytes / sampleBytes / points)
        ThrowShortStream();
    m_dataBytes -= lines * points * sampleBytes;
}

} // namespace veltaris::velflexlib::dataset
