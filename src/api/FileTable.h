// The records of all open files by their handles.
#pragma once

#include "api/FileHandleStruct.h"
#include "velstdlib/util/StableArray.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

// Owns the records. Handles count from 1; a new record gets the smallest free one.
// All functions may be called by any number of threads at once. Find takes no lock, because every export calls it; the
// record that it gives is the caller's concern: whoever works on a file must not do so while another thread does, or
// closes it.
class CFileTable
{
public:
    CFileTable() = default;
    CFileTable(const CFileTable&) = delete;
    CFileTable& operator=(const CFileTable&) = delete;
    ~CFileTable();

    // Null when no record has this handle.
    FileHandleStruct* Find(std::uint64_t handle) const noexcept
    {
        const auto* const place = m_places.Find(handle - 1); // 0 becomes an index that no array has
        return place ? place->load(std::memory_order_acquire) : nullptr;
    }

    // The handle of the record from now on. Throws std::bad_alloc, with nothing changed.
    std::uint64_t Add(std::unique_ptr<FileHandleStruct> file);

    // The record, whose handle is free from now on; null when there is none.
    std::unique_ptr<FileHandleStruct> Remove(std::uint64_t handle) noexcept;

private:
    veltaris::velstdlib::util::CStableArray<std::atomic<FileHandleStruct*>> m_places; // by handle minus 1
    std::mutex m_mutex;             // held while a record comes or goes
    std::uint64_t m_lowestFree = 1; // no handle below it is free
};
