#include "velflexlib/dataset/serialisers/LoadBudget.h"

#include "velstdlib/math/Product.h"
#include "velstdlib/util/Limits.h"
#include "velstdlib/util/VELException.h"

#include <algorithm>
#include <ios>

namespace veltaris::velflexlib::dataset {

namespace limits = velstdlib::util::limits;
using velstdlib::math::Product;

namespace {

[[noreturn]] void ThrowShortStream()
{
    throw std::ios_base::failure("basic_ios::clear", std::make_error_code(std::io_errc::stream));
}

} // namespace

CLoadBudget::CLoadBudget(const velstdlib::util::CVELConfig& document)
    : m_fileName(document.GetFileName()), m_dataBytes(document.GetDataBytes()), m_slots(limits::channelSlots),
      m_sectionBytes(document.GetHeaderBytes() + limits::sharedSectionBytes), m_pointlessLines(limits::pointlessLines)
{
}

void CLoadBudget::ChargeSlots(std::uint64_t count)
{
    Take(m_slots, count);
}

void CLoadBudget::ChargeSection(const velstdlib::util::CVELKeyToValueList& section)
{
    Take(m_sectionBytes, std::max<std::uint64_t>(section.GetTextBytes(), limits::channelSectionBytes));
}

void CLoadBudget::CheckSections(std::uint64_t count) const
{
    std::uint64_t rest = m_sectionBytes;
    Take(rest, Product(count, limits::channelSectionBytes));
}

void CLoadBudget::Take(std::uint64_t& rest, std::uint64_t count) const
{
    if (count > rest)
        velstdlib::util::ThrowBadContent(m_fileName);
    rest -= count;
}

void CLoadBudget::ChargeSamples(std::uint64_t points, std::uint64_t lines, std::int64_t bitCount)
{
    if (points == 0) {
        Take(m_pointlessLines, lines);
        return;
    }
    const std::uint64_t bytes = Product(Product(points, lines), static_cast<std::uint64_t>(bitCount / 8));
    if (bytes > m_dataBytes)
        ThrowShortStream();
    m_dataBytes -= bytes;
}

} // namespace veltaris::velflexlib::dataset
