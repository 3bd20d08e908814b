// One channel: lines of raw samples and the axes that give them a physical meaning.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/channels/LineStates.h"
#include "velflexlib/dataset/operators/LineOperator.h"
#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/SampleBlock.h"
#include "velflexlib/dataset/samples/SignalScale.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <utility>

namespace veltaris::velflexlib::dataset {

// Indices of a channel's axes.
inline constexpr std::size_t pointAxis = 0;
inline constexpr std::size_t lineAxis = 1;
inline constexpr std::size_t signalAxis = 2;

struct CAxis
{
    std::string name;
    std::string unit;
    double min = 0; // physical value of the first point, on the signal axis that of the lowest raw sample
    double range = 0;
};

// The point axis of one line.
struct CLineAxis
{
    std::uint64_t count = 0; // points of the line that are valid; a line without any holds no samples in the file
    double min = 0;
    double range = 0;

    // Tells 0 from -0, and a NaN from all but the same NaN: only what is written alike is the same.
    friend bool operator==(const CLineAxis& a, const CLineAxis& b);
};

// Every operation may be called from any thread. Signals are emitted without the buffer's lock, so that a slot may
// call back.
class CDataBuffer
{
public:
    // Emitted with the line that was written.
    lumox::sigslot_unorderedslots<CDataBuffer&, std::size_t> OnChanged;
    // Emitted around every change of the number of points or lines, and by those of several threads that make the same
    // change at once and come too late.
    lumox::sigslot_unorderedslots<> OnBeforeReshape;
    lumox::sigslot_unorderedslots<> OnAfterReshape;

    // `bitCount` is the number of bits that a sample has in the file: 8, 16 or 32 for it to be saved.
    CDataBuffer(std::int64_t bitCount, std::uint64_t points, std::uint64_t lines);
    CDataBuffer(const CDataBuffer&) = delete;
    CDataBuffer& operator=(const CDataBuffer&) = delete;
    ~CDataBuffer() = default;

    std::uint64_t GetPoints() const;
    std::uint64_t GetLines() const;

    // Discards all samples and lines' own axes, unless both numbers are the current ones. Throws std::bad_alloc, with
    // nothing changed, when memory runs out or a limit is exceeded.
    void SetXYDimension(std::uint64_t points, std::uint64_t lines);

    // `axis` above 2 throws std::out_of_range "invalid array<T, N> subscript".
    CAxis GetAxis(std::size_t axis) const;
    std::string GetAxisName(std::size_t axis) const;
    std::string GetAxisUnit(std::size_t axis) const;
    double GetAxisMin(std::size_t axis) const;
    double GetAxisRange(std::size_t axis) const;
    // On the point axis this does not move the lines that have an axis of their own.
    void SetAxis(std::size_t axis, CAxis value);
    void SetAxisName(std::size_t axis, const std::string& name);
    void SetAxisUnit(std::size_t axis, const std::string& unit);
    // On the point axis these also move every line that still has the old value.
    void SetAxisMin(std::size_t axis, double min);
    void SetAxisRange(std::size_t axis, double range);
    CSignalScale GetSignalScale() const;

    // A line outside the buffer throws std::out_of_range "invalid vector<T> subscript".
    CLineAxis GetLineAxis(std::uint64_t line) const;
    std::uint32_t GetLineState(std::uint64_t line) const;

    // Stores a whole line, clamped to the raw range and filled up with zeros. False, with nothing changed, when there
    // is no such line, `values` has more than GetPoints() elements, or the mode is none.
    bool SetLineRaw(std::uint64_t line, std::span<const std::int32_t> values);
    bool SetLineReal(std::uint64_t line, std::span<const double> values, RealToRawMode mode);

    // Stores one sample; the line's state stays. False when there is no such sample, or the mode is none.
    bool SetPixelRaw(std::uint64_t point, std::uint64_t line, std::int32_t value);
    bool SetPixelReal(std::uint64_t point, std::uint64_t line, double value, RealToRawMode mode);

    // Whether there is such a line, and it claims no more valid points than the buffer has.
    bool CanReadLine(std::uint64_t line) const;
    // Writes what the operator makes of the line's valid samples; nothing when there are too few for it. False, with
    // nothing written, when the line cannot be read.
    bool ReadLineRaw(std::uint64_t line, const CLineOperator& lineOperator, std::int32_t* values) const;
    bool ReadLineReal(std::uint64_t line, const CLineOperator& lineOperator, double* values) const;
    // One sample of such a corrected line. False, with `value` as it was, when that has no such sample.
    bool ReadPixelRaw(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                      std::int32_t& value) const;
    bool ReadPixelReal(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator, double& value) const;

    // The lowest and highest of all samples that were ever written or loaded since the last change of size.
    CRawRange GetDataRange() const;
    bool IsEmpty() const { return m_isEmpty; }
    bool IsDataChanged() const { return m_dataChanged; }

    // The group's name, except that a file may give each channel a frame name of its own.
    std::string GetGroupName() const;
    void SetGroupName(std::string name);
    std::int64_t GetBitCount() const;
    void SetBitCount(std::int64_t bitCount);
    std::uint64_t GetCurrentLine() const;

    // Shortens all lines to the longest valid one, and leaves those that hold no samples without storage.
    void PrepareForSave();

    // While notifications are held back, OnChanged and OnAfterReshape are not emitted; releasing them emits each once
    // if it came up meanwhile.
    void HoldNotifications();
    void ReleaseNotifications();

    // For the serialisers.

    // As SetXYDimension, whatever the size was. The given lines get an axis of their own instead of the channel's, and
    // those among them that hold no samples get no storage until they are written. Samples are held in the width that
    // the bit count gives, which must be 8, 16 or 32.
    void Restore(std::uint64_t points, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> ownLineAxes,
                 std::uint64_t currentLine);
    // The point axis of a line that has none of its own.
    CLineAxis GetCommonLineAxis() const;
    // The lines whose axis is another.
    std::map<std::uint64_t, CLineAxis> GetOwnLineAxes() const;
    // How many samples a file holds of this channel, which was prepared for that: those of every line that holds any.
    std::uint64_t GetStoredSampleCount() const;
    // Calls load(std::span<std::byte>, SampleWidth) under the lock, to write all samples as they are held, which then
    // count as written and unchanged. They are zeros when it throws.
    template <class Load>
    void LoadSamples(Load&& load)
    {
        const std::lock_guard lock(m_mutex);
        const auto bytes = m_samples.BytesToOverwrite();
        try {
            std::forward<Load>(load)(bytes, m_samples.Width());
        } catch (...) {
            std::ranges::fill(bytes, std::byte{});
            throw;
        }
        CountAsLoaded();
    }
    // Calls access(const CSampleBlock&) with the samples, under the lock.
    template <class Access>
    void AccessSamples(Access&& access) const
    {
        const std::lock_guard lock(m_mutex);
        std::forward<Access>(access)(m_samples);
    }

private:
    // Of the line that was last read through an operator: pixels are read along a line.
    struct CLatestFit
    {
        std::uint64_t line = 0;
        const CLineOperator* lineOperator = nullptr; // null: there is none
        CLineFit fit{};
    };

    // All that a change of size replaces.
    struct CShape
    {
        CSampleBlock samples;
        std::uint64_t points = 0;
        std::uint64_t lines = 0;
        std::map<std::uint64_t, CLineAxis> ownLineAxes{};
        std::uint64_t currentLine = 0;
    };

    CSignalScale SignalScale() const { return {m_axes[signalAxis].min, m_axes[signalAxis].range}; }
    CLineAxis CommonLineAxis() const { return {m_points, m_axes[pointAxis].min, m_axes[pointAxis].range}; }
    CLineAxis LineAxisAt(std::uint64_t line) const;
    void RaiseLineCount(std::uint64_t line, std::uint64_t count)
    {
        if (!m_ownLineAxes.empty())
            RaiseOwnLineCount(line, count);
    }
    void RaiseOwnLineCount(std::uint64_t line, std::uint64_t count);
    void ChangePointAxis(double CAxis::*field, double CLineAxis::*lineField, double value);
    bool HasShape(std::uint64_t points, std::uint64_t lines) const
    {
        return points == m_points && lines == m_lineCount;
    }
    // Leaves in `shape` what is to be freed, without the lock.
    void Take(CShape& shape);
    std::uint64_t LongestLine() const;
    void RemoveEmptyLines();
    bool IsReadable(std::uint64_t line) const { return line < m_lineCount && ValidCount(line) <= m_points; }
    CStoredSamples ValidSamples(std::uint64_t line) const { return m_samples.Line(line).First(ValidCount(line)); }
    std::uint64_t ValidCount(std::uint64_t line) const
    {
        return m_ownLineAxes.empty() ? m_points : LineAxisAt(line).count;
    }
    const CLineFit& FitOf(std::uint64_t line, const CStoredSamples& samples, const CLineOperator& lineOperator) const;
    template <class Write>
    bool ReadLine(std::uint64_t line, const CLineOperator& lineOperator, Write write) const;
    bool GetPixel(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                  std::int32_t& value) const;
    template <class Values>
    bool SetLine(std::uint64_t line, const Values& values);
    template <class Values>
    void StoreLine(std::uint64_t line, const Values& values);
    void StorePixel(std::uint64_t point, std::uint64_t line, std::int32_t value);
    bool IsRangeOwed(std::uint64_t line) const;
    void WidenRange(const CStoredSamples& samples) const;
    void WidenRange(const CSampleSurvey& survey) const;
    bool HoldBack(bool& pending) const
    {
        pending = pending || m_notificationsHeld;
        return m_notificationsHeld;
    }
    void AnnounceReshape();
    void CountAsLoaded();

    std::array<CAxis, 3> m_axes;
    std::map<std::uint64_t, CLineAxis> m_ownLineAxes;
    CLineStates m_lineStates;
    CSampleBlock m_samples;
    std::atomic<bool> m_isEmpty = true;
    std::atomic<bool> m_dataChanged = false;
    std::int64_t m_bitCount;
    std::uint64_t m_points = 0;
    std::uint64_t m_lineCount = 0;
    std::uint64_t m_currentLine = 0;
    std::string m_groupName;
    // Loaded samples enter the range when it is first asked for, each line at the latest when it is overwritten.
    mutable CRawRange m_dataRange;
    mutable bool m_rangeLacksLoaded = false;
    mutable CLatestFit m_latestFit; // none after any change of samples
    bool m_notificationsHeld = false;
    bool m_changePending = false;
    bool m_reshapePending = false;
    mutable std::mutex m_mutex;
};

} // namespace veltaris::velflexlib::dataset
