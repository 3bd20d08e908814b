// The numbers by which programs outside the library name the nodes of the information.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>

namespace veltaris::velflexlib::dataset {

class CInfoSetItem;

// The living nodes of one info set that have a handle. A handle is never 0 nor 1 and is given out once in the life of
// the process, whatever set it is asked of, so that one of a dead node is never taken for another node. Not
// thread-safe, except that different tables may be used at once. A table outlives the nodes in it.
class CInfoHandles
{
public:
    CInfoHandles() = default;
    CInfoHandles(const CInfoHandles&) = delete;
    CInfoHandles& operator=(const CInfoHandles&) = delete;
    ~CInfoHandles() = default;

    // A new handle for the node.
    std::uint64_t Add(CInfoSetItem& item);
    void Remove(std::uint64_t handle) noexcept { m_items.erase(handle); }
    // The node that has the handle, or null.
    CInfoSetItem* Find(std::uint64_t handle) const;

private:
    boost::unordered_flat_map<std::uint64_t, CInfoSetItem*> m_items;
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
