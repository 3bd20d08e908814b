#include "velflexlib/dataset/channels/Databuffer.h"

#include "velstdlib/util/ContainerHelper.h"

#include <utility>

namespace veltaris::velflexlib::dataset {

using velstdlib::util::CheckedArrayAt;

CDataBuffer::CDataBuffer(std::int64_t bitCount, std::uint64_t points, std::uint64_t lines,
                         velstdlib::util::Sharing sharing)
    : m_lineAxes({points, 0, 0}, lines), m_samples(points, lines), m_bitCount(bitCount), m_mutex(sharing)
{
    m_lineStates.Reset(lines, 0);
}

std::uint64_t CDataBuffer::GetPoints() const
{
    const std::lock_guard lock(m_mutex);
    return m_lineAxes.Points();
}

std::uint64_t CDataBuffer::GetLines() const
{
    const std::lock_guard lock(m_mutex);
    return m_lineAxes.Lines();
}

void CDataBuffer::SetXYDimension(std::uint64_t points, std::uint64_t lines)
{
    {
        const std::lock_guard lock(m_mutex);
        if (HasShape(points, lines))
            return;
    }
    CShape shape{CSampleBlock(points, lines), CLineAxes({points, 0, 0}, lines)};
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
    std::swap(m_samples, shape.samples);
    std::swap(m_lineAxes, shape.lineAxes);
    m_lineAxes.SetCommon(m_axes[pointAxis].min, m_axes[pointAxis].range);
    m_lineStates.Reset(m_lineAxes.Lines(), 0);
    m_dataChanged = true;
    m_isEmpty = true;
    m_range.Clear();
    m_currentLine = shape.currentLine;
    m_latestFit.Forget();
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
    m_lineAxes.SetCommon(m_axes[pointAxis].min, m_axes[pointAxis].range);
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
    CheckedArrayAt(m_axes, axis).min = min;
    if (axis == pointAxis)
        m_lineAxes.MoveMin(min);
}

void CDataBuffer::SetAxisRange(std::size_t axis, double range)
{
    const std::lock_guard lock(m_mutex);
    CheckedArrayAt(m_axes, axis).range = range;
    if (axis == pointAxis)
        m_lineAxes.MoveRange(range);
}

CSignalScale CDataBuffer::LockAndGetSignalScale() const
{
    const std::lock_guard lock(m_mutex);
    return SignalScale();
}

CLineAxis CDataBuffer::GetLineAxis(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    if (line >= m_lineAxes.Lines())
        velstdlib::util::ThrowVectorSubscript();
    return m_lineAxes.At(line);
}

std::uint32_t CDataBuffer::GetLineState(std::uint64_t line) const
{
    const std::lock_guard lock(m_mutex);
    if (line >= m_lineAxes.Lines())
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
    m_notifications.Hold();
}

void CDataBuffer::ReleaseNotifications()
{
    std::unique_lock lock(m_mutex);
    const CHeldNotifications::CPending pending = m_notifications.Release();
    const std::uint64_t line = m_currentLine;
    lock.unlock();
    if (pending.reshaped)
        OnAfterReshape.emit();
    if (pending.changed)
        OnChanged.emit(*this, line);
}

void CDataBuffer::AnnounceReshape()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_notifications.HoldReshaped())
            return;
    }
    OnAfterReshape.emit();
}

} // namespace veltaris::velflexlib::dataset
