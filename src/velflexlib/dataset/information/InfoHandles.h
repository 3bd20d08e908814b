// The numbers by which programs outside the library name the nodes of the information.
#pragma once

#include "velflexlib/dataset/information/NodeTable.h"

#include <cstdint>
#include <memory>

namespace veltaris::velflexlib::dataset {

class CInfoSetItem;

// The handles of one info set's nodes. A handle is never 0 nor 1 and is given out once in the life of the process,
// whatever set it is asked of, so that one of a dead node is never taken for another node. Sets may be used by several
// threads at once, each by one thread at a time. Outlives the nodes.
class CInfoHandles
{
public:
    CInfoHandles() = default;
    CInfoHandles(const CInfoHandles&) = delete;
    CInfoHandles& operator=(const CInfoHandles&) = delete;
    ~CInfoHandles() = default;

    // A new handle for the node.
    std::uint64_t Add(CInfoSetItem& item) { return m_table->Add(*this, item); }
    void Remove(std::uint64_t handle) noexcept { m_table->Remove(handle); }
    // The living node of this set that has the handle, or null.
    CInfoSetItem* Find(std::uint64_t handle) const
    {
        const auto found = m_table->Find(handle);
        return found.owner == this ? found.node : nullptr;
    }
    // The living node of whichever set that has the handle, or null.
    static CInfoSetItem* FindAny(std::uint64_t handle)
    {
        const auto found = TheTable()->Find(handle);
        return found.owner ? found.node : nullptr;
    }

private:
    static const std::shared_ptr<CNodeTable>& TheTable();

    std::shared_ptr<CNodeTable> m_table = TheTable(); // one for all sets, which lives as long as any of them
};

// The handle of one node, which has none until it is asked for. It leaves its table when the node goes.
class CInfoHandle
{
public:
    CInfoHandle() = default;
    CInfoHandle(const CInfoHandle&) = delete;
    CInfoHandle& operator=(const CInfoHandle&) = delete;
    ~CInfoHandle()
    {
        if (m_table)
            m_table->Remove(m_number);
    }

    // The handle of `item`, which this belongs to. It is taken from the first table that is given here.
    std::uint64_t Get(CInfoHandles& table, CInfoSetItem& item)
    {
        if (!m_table) {
            m_number = table.Add(item);
            m_table = &table;
        }
        return m_number;
    }

private:
    CInfoHandles* m_table = nullptr;
    std::uint64_t m_number = 0;
};

} // namespace veltaris::velflexlib::dataset
