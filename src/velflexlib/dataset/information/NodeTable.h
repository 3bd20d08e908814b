// All nodes of information that have a handle, by this number.
#pragma once

#include "velstdlib/util/StableArray.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoHandles;
class CInfoSetItem;

// One table for all information of the process. A handle is a position in it, which is given out once: they are numbers
// from 2 on, in the order in which they are taken. Positions come in segments. One whose nodes have all been removed
// serves again for later handles, so that the table needs memory for the nodes that live together and a few bits for
// each that ever had a handle.
//
// All functions may be called by several threads at once, and Find takes no lock. Segments are not freed before the
// table is: whoever looks for the handle of a dead node may still read a segment that meanwhile serves other handles,
// notices that it has left its place, and finds nothing.
class CNodeTable
{
public:
    struct CFound
    {
        const CInfoHandles* owner = nullptr; // null when there is no such node
        CInfoSetItem* node = nullptr;
    };

    // Takes two segments ahead: a small file that reaches from one into the next leaves no memory behind.
    CNodeTable();

    // A new handle. Throws std::bad_alloc, and then the handle is still to be given out.
    std::uint64_t Add(const CInfoHandles& owner, CInfoSetItem& node);
    // `handle` must be that of a node.
    void Remove(std::uint64_t handle) noexcept;
    CFound Find(std::uint64_t handle) const noexcept;

private:
    static constexpr std::uint64_t firstHandle = 2;
    static constexpr std::uint64_t segmentLength = 512;

    struct CSlot
    {
        std::atomic<const CInfoHandles*> owner = nullptr;
        std::atomic<CInfoSetItem*> node = nullptr;
    };
    struct CSegment
    {
        std::array<CSlot, segmentLength> slots;
        std::atomic<std::uint64_t> unused = segmentLength; // nodes to come and nodes alive
        CSegment* nextFree = nullptr;
    };
    using Place = std::atomic<CSegment*>;

    CSegment& SegmentFor(std::uint64_t position);
    void MakeFreeSegment();
    CSegment& TakeFreeSegment();
    void Free(Place& place) noexcept;

    std::atomic<std::uint64_t> m_given = 0; // handles
    velstdlib::util::CStableArray<Place> m_places;
    std::mutex m_mutex; // guards what follows, and the places of segments
    std::vector<std::unique_ptr<CSegment>> m_segments;
    CSegment* m_free = nullptr;
};

} // namespace veltaris::velflexlib::dataset
