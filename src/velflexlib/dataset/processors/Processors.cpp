#include "velflexlib/dataset/processors/Processors.h"

#include "velflexlib/fx/FxPropertyHelpers.h"

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CVELConfig;

namespace {

constexpr const char* rangeMinKey = "RangeMin";
constexpr const char* rangeMaxKey = "RangeMax";

} // namespace

void CProcessorSlope::LoadOwnParameters(const CVELConfig& document)
{
    const auto& keys = document.GetContent().GetActiveSection();
    m_rangeMin = fx::ReadFxProperty(keys, rangeMinKey, m_rangeMin);
    m_rangeMax = fx::ReadFxProperty(keys, rangeMaxKey, m_rangeMax);
}

void CProcessorSlope::SaveOwnParameters(CVELConfig& document) const
{
    auto& keys = document.GetContent().GetActiveSection();
    fx::WriteFxProperty(keys, rangeMinKey, m_rangeMin);
    fx::WriteFxProperty(keys, rangeMaxKey, m_rangeMax);
}

} // namespace veltaris::velflexlib::dataset
