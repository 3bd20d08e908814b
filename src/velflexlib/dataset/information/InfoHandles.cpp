#include "velflexlib/dataset/information/InfoHandles.h"

#include <atomic>

namespace veltaris::velflexlib::dataset {

std::uint64_t CInfoHandles::Add(CInfoSetItem& item)
{
    static std::atomic<std::uint64_t> next = 2; // one counter for all files
    const std::uint64_t handle = next++;
    m_items.emplace(handle, &item);
    return handle;
}

CInfoSetItem* CInfoHandles::Find(std::uint64_t handle) const
{
    const auto found = m_items.find(handle);
    return found == m_items.end() ? nullptr : found->second;
}

} // namespace veltaris::velflexlib::dataset
