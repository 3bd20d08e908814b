// One channel: lines of raw samples and the axes that give them a physical meaning.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/channels/Axis.h"
#include "velflexlib/dataset/channels/HeldNotifications.h"
#include "velflexlib/dataset/channels/LatestFit.h"
#include "velflexlib/dataset/channels/LineAxes.h"
#include "velflexlib/dataset/channels/LineStates.h"
#include "velflexlib/dataset/channels/ObservedRange.h"
#include "velflexlib/dataset/operators/LineOperator.h"
#include "velflexlib/dataset/samples/DataRange.h"
#include "velflexlib/dataset/samples/SampleBlock.h"
#include "velflexlib/dataset/samples/SignalScale.h"
#include "velstdlib/util/OptionalMutex.h"

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

// Every line has the same number of points; how many of them are valid, its line axis says. Samples are kept as the
// file that they came from has them, in 8, 16 or 32 bits.
// Invariant: a line with valid points has storage. Lines that a file promised and did not hold are missing: they have
// neither. When one of them is written, all become ordinary lines of zeros, except those whose own axis says 0 points.
// Every operation may be called from any thread, unless the buffer is made for one thread at a time: one lock guards
// all members. Signals are emitted without it, so that a slot may call back.
class CDataBuffer
{
public:
    // Emitted with the line that was written.
    lumox::sigslot_unorderedslots<CDataBuffer&, std::size_t> OnChanged;
    // Emitted before and after every change of the number of points or lines. Of several threads that ask for the same
    // change at once, each emits them.
    lumox::sigslot_unorderedslots<> OnBeforeReshape;
    lumox::sigslot_unorderedslots<> OnAfterReshape;

    // `bitCount` is the number of bits that a sample has in the file: 8, 16 or 32 for it to be saved.
    CDataBuffer(std::int64_t bitCount, std::uint64_t points, std::uint64_t lines,
                velstdlib::util::Sharing sharing = velstdlib::util::Sharing::AnyThread);
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

    // A line outside the buffer throws std::out_of_range "invalid vector<T> subscript".
    CLineAxis GetLineAxis(std::uint64_t line) const;
    std::uint32_t GetLineState(std::uint64_t line) const;

    // Stores a whole line, clamped to the raw range and padded with zeros. Returns false, with nothing changed, when
    // there is no such line, `values` has more than GetPoints() elements, or there is no such mode.
    bool SetLineRaw(std::uint64_t line, std::span<const std::int32_t> values);
    bool SetLineReal(std::uint64_t line, std::span<const double> values, RealToRawMode mode);

    // Stores one sample; the line's state stays. Returns false when there is no such sample or no such mode.
    // All setters of samples throw std::bad_alloc, with nothing changed, when memory runs out or a limit is exceeded.
    bool SetPixelRaw(std::uint64_t point, std::uint64_t line, std::int32_t value);
    bool SetPixelReal(std::uint64_t point, std::uint64_t line, double value, RealToRawMode mode);

    // Whether there is such a line, and it claims no more valid points than the buffer has.
    bool CanReadLine(std::uint64_t line) const;
    // Writes what the operator makes of the line's valid samples, or nothing when there are too few for it. Returns
    // false, with nothing written, when the line cannot be read.
    bool ReadLineRaw(std::uint64_t line, const CLineOperator& lineOperator, std::int32_t* values) const;
    bool ReadLineReal(std::uint64_t line, const CLineOperator& lineOperator, double* values) const;
    // Reads one sample of such a corrected line. Returns false, with `value` as it was, when that has no such sample.
    bool ReadPixelRaw(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                      std::int32_t& value) const;
    bool ReadPixelReal(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator, double& value) const;

    // The lowest and highest of all samples that were loaded or written since the last change of size. Single samples
    // count only in lines that were loaded or written whole.
    CRawRange GetDataRange() const;
    bool IsEmpty() const { return m_isEmpty; }
    bool IsDataChanged() const { return m_dataChanged; }

    // The group's name, except that a file may give each channel a frame name of its own.
    std::string GetGroupName() const;
    void SetGroupName(std::string name);
    std::int64_t GetBitCount() const;
    void SetBitCount(std::int64_t bitCount);
    std::uint64_t GetCurrentLine() const;

    // Shortens all lines to the longest valid one, and frees the storage of lines that have no valid points.
    void PrepareForSave();

    // While notifications are held back, OnChanged and OnAfterReshape are not emitted; releasing them emits each once
    // if it came up meanwhile.
    void HoldNotifications();
    void ReleaseNotifications();

    // For the serialisers. A channel is loaded in two stages: first its size, then its samples. Only the second one
    // takes memory for samples.

    // Sets the size as SetXYDimension does, also when it stays the same, and gives some lines an axis of their own. No
    // line holds samples yet: all are missing until LoadSamples, whatever their axes say. The size may promise more
    // samples than any channel can hold; std::bad_alloc is thrown only for more points or lines than there may be.
    // Holds notifications back from now on, until LoadSamples or ReleaseNotifications, unless it throws.
    void Restore(std::uint64_t points, std::uint64_t lines, std::map<std::uint64_t, CLineAxis> ownLineAxes,
                 std::uint64_t currentLine);

    // Takes storage, in the width that the bit count gives, for as many lines with valid points as `bytesLeft` bytes
    // fill. Then calls load(std::span<std::byte> bytes, SampleWidth width, std::size_t& filled) once, under the lock,
    // which writes the samples of these lines and counts in `filled` the leading bytes that are final.
    // When `load` returns, all bytes count as loaded, so it must have written zeros where it skipped samples. When it
    // throws, only whole lines within `filled` do. Loaded lines count as written and unchanged. From the first line
    // with valid points that was not loaded, all lines are missing.
    // Returns whether no line is missing; the channel is then saved with 16 bits unless it was loaded with 32.
    // Throws what `load` throws; and, with all lines missing, std::runtime_error "Invalid bit count: " and the number
    // unless it is 8, 16 or 32, and std::bad_alloc when memory runs out or a limit is exceeded. Releases held
    // notifications however it ends.
    template <class Load>
    bool LoadSamples(std::uint64_t bytesLeft, Load&& load);

    // The point axes of all lines.
    CLineAxes GetLineAxes() const;
    // How many lines a file promised and did not hold.
    std::uint64_t GetMissingLineCount() const;
    // How many samples a file holds of this channel once it was prepared for saving: those of all lines that hold any.
    std::uint64_t GetStoredSampleCount() const;
    // Calls access(const CSampleBlock&) with the samples, under the lock.
    template <class Access>
    void AccessSamples(Access&& access) const
    {
        const std::lock_guard lock(m_mutex);
        std::forward<Access>(access)(m_samples);
    }

private:
    // All that a change of size replaces.
    struct CShape
    {
        CSampleBlock samples;
        CLineAxes lineAxes;
        std::uint64_t currentLine = 0;
    };

    CSignalScale LockAndGetSignalScale() const;
    CSignalScale SignalScale() const { return {m_axes[signalAxis].min, m_axes[signalAxis].range}; }
    bool HasShape(std::uint64_t points, std::uint64_t lines) const
    {
        return points == m_lineAxes.Points() && lines == m_lineAxes.Lines();
    }
    // Leaves in `shape` what is to be freed, without the lock.
    void Take(CShape& shape);
    void RemoveEmptyLines();
    void AnnounceReshape();

    bool IsReadable(std::uint64_t line) const
    {
        return line < m_lineAxes.Lines() && m_lineAxes.CountAt(line) <= m_lineAxes.Points();
    }
    CStoredSamples ValidSamples(std::uint64_t line) const
    {
        return m_samples.Line(line).First(m_lineAxes.CountAt(line));
    }
    template <class Write>
    bool ReadLine(std::uint64_t line, const CLineOperator& lineOperator, Write write) const;
    bool GetPixel(std::uint64_t point, std::uint64_t line, const CLineOperator& lineOperator,
                  std::int32_t& value) const;

    template <class Values>
    bool SetLine(std::uint64_t line, const Values& values);
    template <class Values>
    void StoreLine(std::uint64_t line, const Values& values);
    template <class Values>
    void WriteSamples(std::uint64_t line, const Values& values);
    void StorePixel(std::uint64_t point, std::uint64_t line, std::int32_t value);
    void MakeWritable(std::uint64_t line, std::int32_t bits);

    template <class Load>
    bool LoadLines(std::uint64_t bytesLeft, Load&& load);
    void TakeStorageToLoad(std::uint64_t bytesLeft);
    bool CountAsLoaded(std::size_t bytes);

    std::array<CAxis, 3> m_axes;
    CLineAxes m_lineAxes; // knows the point axis, too
    CLineStates m_lineStates;
    CSampleBlock m_samples;
    std::atomic<bool> m_isEmpty = true;
    std::atomic<bool> m_dataChanged = false;
    std::int64_t m_bitCount;
    std::uint64_t m_currentLine = 0;
    std::string m_groupName;
    mutable CObservedRange m_range;
    mutable CLatestFit m_latestFit;
    CHeldNotifications m_notifications;
    mutable velstdlib::util::COptionalMutex m_mutex;
};

template <class Load>
bool CDataBuffer::LoadSamples(std::uint64_t bytesLeft, Load&& load)
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

template <class Load>
bool CDataBuffer::LoadLines(std::uint64_t bytesLeft, Load&& load)
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

} // namespace veltaris::velflexlib::dataset
