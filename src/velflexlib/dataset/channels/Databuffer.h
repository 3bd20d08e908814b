// One channel: lines of raw samples and the axes that give them a physical meaning.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/channels/LineAxes.h"
#include "velflexlib/dataset/channels/LineStates.h"
#include "velflexlib/dataset/operators/LineOperator.h"
#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/SampleBlock.h"
#include "velflexlib/dataset/samples/SignalScale.h"
#include "velflexlib/dataset/samples/kernels/SampleKernels.h"

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

    // For the serialisers. A channel is loaded in two stages: first its size, which takes no memory for samples, then
    // its samples.

    // As SetXYDimension, whatever the size was, except that no line holds samples yet: all are missing. The given lines
    // have an axis of their own. The numbers of points and lines may promise more samples than any channel can hold.
    // Holds notifications back from then on, until LoadSamples or ReleaseNotifications; not when it throws.
    void Restore(std::uint64_t points, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> ownLineAxes,
                 std::uint64_t currentLine);

    // Takes storage, in the width that the bit count gives, for the lines that have valid points, as far as `bytesLeft`
    // bytes fill whole lines, and calls load(std::span<std::byte> bytes, SampleWidth width, std::size_t& filled) once
    // under the lock, to write all of these bytes and to count in `filled`, which is 0, the first ones that are done.
    // When it returns, these lines count as written and unchanged; the other lines from the first that is not there on
    // are missing. When it throws, so are those whose bytes were not all done by then.
    // Result: whether no line is missing; then a channel that was not loaded from 32 bits is to be saved with 16.
    // However it ends, notifications are released. Throws what `load` throws; std::runtime_error "Invalid bit count: "
    // and the number unless that is 8, 16 or 32, and std::bad_alloc when memory runs out or a limit is exceeded, each
    // with all lines missing.
    template <class Load>
    bool LoadSamples(std::uint64_t bytesLeft, Load&& load)
    {
        try {
            const bool isComplete = LoadLines(bytesLeft, std::forward<Load>(load));
            ReleaseNotifications();
            return isComplete;
        } catch (...) {
            ReleaseNotifications();
            throw;
        }
    }
    // The point axes of all lines.
    CLineAxes GetLineAxes() const;
    // How many samples a file holds of this channel, which was prepared for that: those of every line that holds any.
    std::uint64_t GetStoredSampleCount() const;
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
        CLineAxes lineAxes;
        std::uint64_t currentLine = 0;
    };

    CSignalScale SignalScale() const { return {m_axes[signalAxis].min, m_axes[signalAxis].range}; }
    bool HasShape(std::uint64_t points, std::uint64_t lines) const
    {
        return points == m_lineAxes.Points() && lines == m_lineAxes.Lines();
    }
    // Leaves in `shape` what is to be freed, without the lock.
    void Take(CShape& shape);
    void RemoveEmptyLines();
    bool IsReadable(std::uint64_t line) const
    {
        return line < m_lineAxes.Lines() && m_lineAxes.CountAt(line) <= m_lineAxes.Points();
    }
    CStoredSamples ValidSamples(std::uint64_t line) const
    {
        return m_samples.Line(line).First(m_lineAxes.CountAt(line));
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
    template <class Load>
    bool LoadLines(std::uint64_t bytesLeft, Load&& load)
    {
        const std::lock_guard lock(m_mutex);
        TakeStorageToLoad(bytesLeft);
        const auto bytes = m_samples.BytesToOverwrite();
        std::size_t filled = 0;
        try {
            std::forward<Load>(load)(bytes, m_samples.Width(), filled);
        } catch (...) {
            CountAsLoaded(filled);
            throw;
        }
        return CountAsLoaded(bytes.size());
    }
    void TakeStorageToLoad(std::uint64_t bytesLeft);
    bool CountAsLoaded(std::size_t bytes);

    std::array<CAxis, 3> m_axes;
    CLineAxes m_lineAxes;
    CLineStates m_lineStates;
    CSampleBlock m_samples;
    std::atomic<bool> m_isEmpty = true;
    std::atomic<bool> m_dataChanged = false;
    std::int64_t m_bitCount;
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
