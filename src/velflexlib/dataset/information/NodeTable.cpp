#include "velflexlib/dataset/information/NodeTable.h"

#include <utility>

namespace veltaris::velflexlib::dataset {

CNodeTable::CNodeTable()
{
    MakeFreeSegment();
    MakeFreeSegment();
}

// The segment is there before the handle is taken: without memory for it, nothing has happened.
std::uint64_t CNodeTable::Add(const CInfoHandles& owner, CInfoSetItem& node)
{
    std::uint64_t position = m_given.load(std::memory_order_relaxed);
    CSegment* segment = nullptr;
    do
        segment = &SegmentFor(position);
    while (!m_given.compare_exchange_weak(position, position + 1, std::memory_order_relaxed));
    CSlot& slot = segment->slots[position % segmentLength];
    slot.node.store(&node, std::memory_order_release);
    slot.owner.store(&owner, std::memory_order_release);
    return position + firstHandle;
}

// A segment that is reused has its places taken from it first, and then gets new nodes: who has read one of these sees
// in Find that the place is another one.
void CNodeTable::Remove(std::uint64_t handle) noexcept
{
    const std::uint64_t position = handle - firstHandle;
    Place& place = *m_places.Find(position / segmentLength);
    CSegment& segment = *place.load(std::memory_order_acquire);
    segment.slots[position % segmentLength].owner.store(nullptr, std::memory_order_release);
    if (segment.unused.fetch_sub(1, std::memory_order_acq_rel) == 1)
        Free(place);
}

auto CNodeTable::Find(std::uint64_t handle) const noexcept -> CFound
{
    const std::uint64_t position = handle - firstHandle; // 0 and 1 become positions that were never given
    const Place* const place = m_places.Find(position / segmentLength);
    CSegment* const segment = place ? place->load(std::memory_order_acquire) : nullptr;
    if (!segment)
        return {};
    const CSlot& slot = segment->slots[position % segmentLength];
    const CInfoHandles* const owner = slot.owner.load(std::memory_order_acquire);
    CInfoSetItem* const node = slot.node.load(std::memory_order_acquire);
    return owner && place->load(std::memory_order_relaxed) == segment ? CFound{owner, node} : CFound{};
}

auto CNodeTable::SegmentFor(std::uint64_t position) -> CSegment&
{
    const std::uint64_t index = position / segmentLength;
    const Place* const known = m_places.Find(index);
    if (CSegment* const segment = known ? known->load(std::memory_order_acquire) : nullptr)
        return *segment;
    const std::lock_guard lock(m_mutex);
    Place& place = m_places.Grow(index);
    if (!place.load(std::memory_order_relaxed))
        place.store(&TakeFreeSegment(), std::memory_order_release);
    return *place.load(std::memory_order_relaxed);
}

void CNodeTable::MakeFreeSegment()
{
    m_segments.push_back(std::make_unique<CSegment>());
    m_segments.back()->nextFree = std::exchange(m_free, m_segments.back().get());
}

auto CNodeTable::TakeFreeSegment() -> CSegment&
{
    if (!m_free)
        MakeFreeSegment();
    return *std::exchange(m_free, m_free->nextFree);
}

void CNodeTable::Free(Place& place) noexcept
{
    const std::lock_guard lock(m_mutex);
    CSegment& segment = *place.exchange(nullptr, std::memory_order_acq_rel);
    segment.unused.store(segmentLength, std::memory_order_relaxed);
    segment.nextFree = std::exchange(m_free, &segment);
}

} // namespace veltaris::velflexlib::dataset
