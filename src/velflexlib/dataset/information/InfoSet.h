// The measurement information of a data set.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/information/InfoHandles.h"
#include "velflexlib/dataset/information/InfoSetItem.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Top-level groups in order, each the root of a tree of nodes. GetGroupIndex ignores ASCII case, every other look-up by
// name is exact, and an empty name is looked up like any other. Not thread-safe: a set and all its nodes are for one
// thread at a time.
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
    // `group` must be a top-level group of this set.
    void DeleteGroup(const CInfoSetItem& group);
    void DeleteAllGroups();
    // False unless both are positions of groups.
    bool MoveGroup(int from, int to);

    bool IsModified() const { return m_modified; }
    void SetModified(bool modified) { m_modified = modified; }
    // The group that was the first one when groups were last deleted; null when none was left, or none was deleted yet.
    CInfoSetItem* GetSelected() const { return m_selected; }

    // The number that stands for a node of this set outside the library.
    std::uint64_t GetHandle(CInfoSetItem& item) { return item.GetHandle(m_handles); }
    // The living node that has the handle, or null.
    CInfoSetItem* FindItem(std::uint64_t handle) const { return m_handles.Find(handle); }
    // The same in whichever living set has such a node.
    static CInfoSetItem* FindItemOfAnySet(std::uint64_t handle) { return CInfoHandles::FindAny(handle); }

private:
    void GroupsDeleted();

    CInfoHandles m_handles; // before the groups, whose nodes leave it when they go
    CInfoRow m_groups{CInfoRow::Names::OfGroups};
    bool m_modified = false;
    CInfoSetItem* m_selected = nullptr;
};

} // namespace veltaris::velflexlib::dataset
