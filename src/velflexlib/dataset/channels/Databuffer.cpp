#include "velflexlib/dataset/channels/Databuffer.h"

#include "velstdlib/util/ContainerHelper.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CheckedArrayAt;

namespace {

// Nothing needs to be moved when it is written.
constexpr SampleWidth widthOfNewSamples = SampleWidth::Bits32;

} // namespace

bool operator==(const CLineAxis& a, const CLineAxis& b)
{
    const auto same = [](double x, double y) {
        return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
    };
    return a.count == b.count && same(a.min, b.min) && same(a.range, b.range);
}

CDataBuffer::CDataBuffer(std::int64_t bitCount, std::uint64_t points, std::uint64_t lines)
    : m_samples(points, lines, widthOfNewSamples), m_bitCount(bitCount), m_points(points), m_lineCount(lines)
{
    m_lineStates.ResetAll(lines, CLineStates::neverWritten);
}

std::uint64_t CDataBuffer::GetPoints() const
{
    const std::lock_guard lock(m_mutex);
    return m_points;
}

std::uint64_t CDataBuffer::GetLines() const
{
    const std::lock_guard lock(m_mutex);
    return m_lineCount;
}

void CDataBuffer::SetXYDimension(std::uint64_t points, std::uint64_t lines)
{
    {
        const std::lock_guard lock(m_mutex);
        if (HasShape(points, lines))
            return;
    }
    CShape shape{CSampleBlock(points, lines, widthOfNewSamples), points, lines};
    OnBeforeReshape.emit();
    {
        const std::lock_guard lock(m_mutex);
        if (!HasShape(points, lines)) // asked again: what another thread may have written since must stay
            Take(shape);
    }
    AnnounceReshape();
}

void CDataBuffer::Take(CShape& shape)
{
    m_points = shape.points;
    m_lineCount = shape.lines;
    std::swap(m_samples, shape.samples);
    m_ownLineAxes.swap(shape.ownLineAxes);
    m_lineStates.ResetAll(shape.lines, CLineStates::neverWritten);
    m_dataChanged = true;
    m_isEmpty = true;
    m_dataRange = {};
    m_rangeLacksLoaded = false;
    m_currentLine = shape.currentLine;
    m_latestFit = {};
}

CAxis CDataBuffer::GetAxis(std::size_t axis) const
{
    const std::lock_guard lock(m_mutex);
    return CheckedArrayAt(m_axes, axis);
}

std::string CDataBuffer::GetAxisName(std::size_t axis) const
{
    const std::lock_guard lock(m_mutex);
    return CheckedArrayAt(m_axes, axis).name;
}

std::string CDataBuffer::GetAxisUnit(std::size_t axis) const
{
    const std::lock_guard lock(m_mutex);
    return CheckedArrayAt(m_axes, axis).unit;
}

double CDataBuffer::GetAxisMin(std::size_t axis) const
{
    const std::lock_guard lock(m_mutex);
    return CheckedArrayAt(m_axes, axis).min;
}

double CDataBuffer::GetAxisRange(std::size_t axis) const
{
    const std::lock_guard lock(m_mutex);
    return CheckedArrayAt(m_axes, axis).range;
}

void CDataBuffer::SetAxis(std::size_t axis, CAxis value)
{
    const std::lock_guard lock(m_mutex);
    std::swap(CheckedArrayAt(m_axes, axis), value);
}

void CDataBuffer::SetAxisName(std::size_t axis, const std::string& name)
{
    const std::lock_guard lock(m_mutex);
    CheckedArrayAt(m_axes, axis).name = name;
}

void CDataBuffer::SetAxisUnit(std::size_t axis, const std::string& unit)
{
    const std::lock_guard lock(m_mutex);
    CheckedArrayAt(m_axes, axis).unit = unit;
}

void CDataBuffer::SetAxisMin(std::size_t axis, double min)
{
    const std::lock_guard lock(m_mutex);
    if (axis == pointAxis)
        ChangePointAxis(&CAxis::min, &CLineAxis::min, min);
    else
        CheckedArrayAt(m_axes, axis).min = min;
}

void CDataBuffer::SetAxisRange(std::size_t axis, double range)
{
    const std::lock_guard lock(m_mutex);
    if (axis == pointAxis)
        ChangePointAxis(&CAxis::range, &CLineAxis::range, range);
    else
        CheckedArrayAt(m_axes, axis).range = range;
}

void CDataBuffer::ChangePointAxis(double CAxis::*field, double CLineAxis::*lineField, double value)
{
    const double old = std::exchange(m_axes[pointAxis].*field, value);
    for (auto& [line, axis] : m_ownLineAxes) {
        if (std::bit_cast<std::uint64_t>(axis.*lineField) == std::bit_cast<std::uint64_t>(old))
            axis.*lineField = value;
    }
}

CSignalScale CDataBuffer::GetSignalScale() const
{
    const std::lock_guard lock(m_mutex);
    return SignalScale();
}

CLineAxis CDataBuffer::GetLineAxis(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    if (line >= m_lineCount)
        velstdlib::util::ThrowVectorSubscript();
    return LineAxisAt(line);
}

CLineAxis CDataBuffer::LineAxisAt(std::uint64_t line) const
{
    const auto own = m_ownLineAxes.find(line);
    return own == m_ownLineAxes.end() ? CommonLineAxis() : own->second;
}

void CDataBuffer::RaiseOwnLineCount(std::uint64_t line, std::uint64_t count)
{
    const auto own = m_ownLineAxes.find(line);
    if (own == m_ownLineAxes.end())
        return;
    own->second.count = std::max(own->second.count, count);
    if (own->second == CommonLineAxis())
        m_ownLineAxes.erase(own);
}

std::uint32_t CDataBuffer::GetLineState(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    if (line >= m_lineCount)
        velstdlib::util::ThrowVectorSubscript();
    return m_lineStates.Get(line);
}

std::string CDataBuffer::GetGroupName() const
{
    const std::lock_guard lock(m_mutex);
    return m_groupName;
}

void CDataBuffer::SetGroupName(std::string name)
{
    const std::lock_guard lock(m_mutex);
    m_groupName.swap(name);
}

std::int64_t CDataBuffer::GetBitCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_bitCount;
}

void CDataBuffer::SetBitCount(std::int64_t bitCount)
{
    const std::lock_guard lock(m_mutex);
    m_bitCount = bitCount;
}

std::uint64_t CDataBuffer::GetCurrentLine() const
{
    const std::lock_guard lock(m_mutex);
    return m_currentLine;
}

void CDataBuffer::HoldNotifications()
{
    const std::lock_guard lock(m_mutex);
    m_notificationsHeld = true;
}

void CDataBuffer::ReleaseNotifications()
{
    std::unique_lock lock(m_mutex);
    m_notificationsHeld = false;
    const bool reshaped = std::exchange(m_reshapePending, false);
    const bool changed = std::exchange(m_changePending, false);
    const std::uint64_t line = m_currentLine;
    lock.unlock();
    if (reshaped)
        OnAfterReshape.emit();
    if (changed)
        OnChanged.emit(*this, line);
}

// Whether not to notify now; if so, it is noted that there is something to notify of.
void CDataBuffer::AnnounceReshape()
{
    {
        const std::lock_guard lock(m_mutex);
        if (HoldBack(m_reshapePending))
            return;
    }
    OnAfterReshape.emit();
}

} // namespace veltaris::velflexlib::dataset
