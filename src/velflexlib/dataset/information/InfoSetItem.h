// A node of the tree of measurement information.
#pragma once

#include "velflexlib/dataset/information/InfoHandles.h"
#include "velflexlib/dataset/information/InfoSiblings.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoSet;
class CInfoSetItem;

// Nodes beside each other.
using CInfoRow = CInfoSiblings<CInfoSetItem>;

// A node is a group, which has sub-items, or an item, which has a value, all its life. Each node is owned by the row
// that it stands in, which is its parent's or, for a top-level group, its info set's. Nothing here recurses: a tree may
// be as deep as memory allows. Not thread-safe: a tree is for one thread at a time.
class CInfoSetItem
{
public:
    static constexpr const char* groupValue = "--------";

    // A group.
    explicit CInfoSetItem(std::string name);
    // An item.
    CInfoSetItem(std::string name, std::string value);
    CInfoSetItem(const CInfoSetItem&) = delete;
    CInfoSetItem& operator=(const CInfoSetItem&) = delete;
    ~CInfoSetItem();

    const std::string& GetName() const { return m_name; }
    void SetName(std::string name);
    const std::string& GetValue() const { return m_value; }
    void SetValue(const std::string& value) { m_value = value; }
    bool IsGroup() const { return m_isGroup; }
    // Null for a top-level group.
    CInfoSetItem* GetParent() const { return m_place.row ? m_place.row->Parent() : nullptr; }
    const std::vector<std::unique_ptr<CInfoSetItem>>& GetSubItems() const;
    // The one behind this among its siblings, or null, also while it stands in no info set and no group.
    CInfoSetItem* GetNext() const;

    // The info set that the tree belongs to; null until it was inserted there.
    CInfoSet* GetOwner() const { return m_owner; }
    // Sets the owner of this node and of all below it.
    void SetOwner(CInfoSet* owner);

    // The number that stands for this node outside the library, taken from `table` when it is first asked for.
    std::uint64_t GetHandle(CInfoHandles& table) { return m_handle.Get(table, *this); }
    // For the row that this stands in.
    CInfoPlace<CInfoSetItem>& Place() const { return m_place; }

    // Inserts before the sub-item at `index`; -1, like the count of sub-items, means the end. False, with the item
    // destroyed, for any other index. Throws std::runtime_error "Only groups can have sub items". The owner of what
    // is inserted stays as it is.
    bool InsertSubItem(std::unique_ptr<CInfoSetItem> item, int index);
    bool AddSubItem(std::unique_ptr<CInfoSetItem> item) { return InsertSubItem(std::move(item), -1); }

    // Destroys the node, with all below it, wherever in this subtree it is. False when it is not there, or null.
    bool DeleteSubItem(const CInfoSetItem* node);
    // Destroys all sub-items that are no groups.
    void DeleteLeafItems();

    // The items that stand directly in this group, by position among themselves; groups do not count. Null when there
    // is no such item. FindLeaf gives the first one of exactly this name.
    std::size_t GetLeafCount() const { return m_subItems ? m_subItems->ItemCount() : 0; }
    CInfoSetItem* GetLeaf(std::size_t index) const;
    CInfoSetItem* FindLeaf(const std::string& name) const;
    // `leaf` must be one of these.
    std::size_t GetLeafIndex(const CInfoSetItem& leaf) const;

    // The first group of exactly this name below this node, depth first; null when there is none.
    CInfoSetItem* FindGroup(const std::string& name) const;

    // Names from the top-level group down to this one, and `suffix` if there is one, joined by backslashes. Throws
    // std::runtime_error "Only groups can have group paths".
    std::string GetGroupPath(const std::string& suffix = {}) const;

    // How a top-level group is stored in a file: in the flat list of groups and items, or as a tree.
    bool IsStoredFlat() const { return m_storedFlat; }
    void SetStoredFlat(bool flat) { m_storedFlat = flat; }

private:
    bool HasSubItems() const { return m_subItems && !m_subItems->All().empty(); }

    std::string m_name;
    std::string m_value;
    CInfoSet* m_owner = nullptr;
    std::unique_ptr<CInfoRow> m_subItems; // made with the first one
    mutable CInfoPlace<CInfoSetItem> m_place;
    CInfoHandle m_handle;
    bool m_isGroup;
    bool m_storedFlat = false;
};

extern template class CInfoSiblings<CInfoSetItem>;

} // namespace veltaris::velflexlib::dataset
