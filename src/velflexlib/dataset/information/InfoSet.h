// The measurement information of a data set.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/information/InfoSetItem.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Top-level groups in order. GetGroupIndex ignores ASCII case, every other look-up by name is exact.
class CInfoSet
{
public:
    static constexpr std::uint32_t noIndex = 0xFFFF'FFFF;

    // Emitted after groups were deleted or moved.
    lumox::sigslot_unorderedslots<> OnChanged;

    CInfoSet() = default;
    CInfoSet(const CInfoSet&) = delete;
    CInfoSet& operator=(const CInfoSet&) = delete;
    ~CInfoSet() = default;

    const std::vector<std::unique_ptr<CInfoSetItem>>& GetGroups() const { return m_groups.All(); }
    // Null when there is no such group.
    CInfoSetItem* GetGroup(std::uint32_t index) const;
    // Empty when there is no such group.
    std::string GetGroupName(int index) const;
    // The first group of this name, or noIndex.
    std::uint32_t GetGroupIndex(const std::string& name) const;
    // The first top-level group of this name; with `recursive`, each one's subtree is searched before the next.
    CInfoSetItem* FindGroup(const std::string& name, bool recursive) const;

    // Inserts before the group at `index`; noIndex, like the count of groups, means the end. False, with the item
    // destroyed, for any other index.
    bool InsertGroup(std::unique_ptr<CInfoSetItem> group, std::uint32_t index);
    bool AddGroup(std::unique_ptr<CInfoSetItem> group) { return InsertGroup(std::move(group), noIndex); }
    // False when there is no such group.
    bool DeleteGroup(const std::string& name);
    bool DeleteGroup(std::uint32_t index);
    // One of these.
    void DeleteGroup(const CInfoSetItem& group);
    void DeleteAllGroups();
    // False unless both are positions of groups.
    bool MoveGroup(int from, int to);

    bool IsModified() const { return m_modified; }
    void SetModified(bool modified) { m_modified = modified; }
    // The first group that was left when groups were last deleted.
    CInfoSetItem* GetSelected() const { return m_selected; }

    // The number that stands for a node of this set outside the library: never 0 nor 1, and never given to another.
    std::uint64_t GetHandle(CInfoSetItem& item);
    // The living node that has the handle, or null.
    CInfoSetItem* FindItem(std::uint64_t handle) const;

private:
    friend class CInfoSetItem;

    void ForgetHandle(std::uint64_t handle) { m_handles.erase(handle); }
    void GroupsDeleted();

    boost::unordered_flat_map<std::uint64_t, CInfoSetItem*> m_handles; // outlives the nodes, which sign off
    CInfoSiblings m_groups{CInfoSiblings::Names::OfGroups};
    bool m_modified = false;
    CInfoSetItem* m_selected = nullptr;
};

} // namespace veltaris::velflexlib::dataset
