#include "api/FileTable.h"

#include <algorithm>

CFileTable::~CFileTable()
{
    for (std::uint64_t handle = 1; m_places.Find(handle - 1); ++handle)
        Remove(handle);
}

std::uint64_t CFileTable::Add(std::unique_ptr<FileHandleStruct> file)
{
    const std::lock_guard lock(m_mutex);
    while (Find(m_lowestFree))
        ++m_lowestFree;
    m_places.Grow(m_lowestFree - 1).store(file.release(), std::memory_order_release);
    return m_lowestFree;
}

std::unique_ptr<FileHandleStruct> CFileTable::Remove(std::uint64_t handle) noexcept
{
    const std::lock_guard lock(m_mutex);
    auto* const place = m_places.Find(handle - 1);
    std::unique_ptr<FileHandleStruct> removed(place ? place->exchange(nullptr, std::memory_order_acq_rel) : nullptr);
    if (removed)
        m_lowestFree = std::min(m_lowestFree, handle);
    return removed;
}
