// A node of the tree of measurement information.
#pragma once

#include "velflexlib/dataset/information/InfoSiblings.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoSet;

// A group, which has sub-items, or an item, which has a value. Each node is owned by its parent, a top-level group by
// its info set. Nothing here recurses: a tree may be as deep as memory allows.
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
    CInfoSetItem* GetParent() const { return m_parent; }
    const std::vector<std::unique_ptr<CInfoSetItem>>& GetSubItems() const;
    // The one behind this among its siblings, or null. There are none while it belongs to no info set and no group.
    CInfoSetItem* GetNext() const;

    // The info set that the tree belongs to; null until it was inserted there.
    CInfoSet* GetOwner() const { return m_owner; }
    // Of this node and all below it.
    void SetOwner(CInfoSet* owner);

    // Inserts before the sub-item at `index`; -1, like the count of sub-items, means the end. False, with the item
    // destroyed, for any other index. Throws std::runtime_error "Only groups can have sub items". The owner of what
    // is inserted stays as it is.
    bool InsertSubItem(std::unique_ptr<CInfoSetItem> item, int index);
    bool AddSubItem(std::unique_ptr<CInfoSetItem> item) { return InsertSubItem(std::move(item), -1); }

    // Destroys that living node, with all below it, wherever in this subtree it is. False when it is not there.
    bool DeleteSubItem(const CInfoSetItem* node);
    // Destroys all sub-items that are no groups.
    void DeleteLeafItems();

    // Items directly in this group, not counting groups, by position among themselves. Null when there is none such.
    std::size_t GetLeafCount() const { return m_subItems ? m_subItems->ItemCount() : 0; }
    CInfoSetItem* GetLeaf(std::size_t index) const;
    CInfoSetItem* FindLeaf(const std::string& name) const;
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
    friend class CInfoSet;
    friend class CInfoSiblings;

    CInfoSiblings* Siblings() const;
    bool HasSubItems() const { return m_subItems && !m_subItems->All().empty(); }

    std::string m_name;
    std::string m_value;
    CInfoSet* m_owner = nullptr;
    CInfoSetItem* m_parent = nullptr;
    std::unique_ptr<CInfoSiblings> m_subItems; // made with the first one
    std::uint64_t m_handle = 0;                // given by the owner when someone asks
    mutable std::size_t m_place = 0;           // where this was last seen among its siblings
    bool m_isGroup;
    bool m_storedFlat = false;
};

} // namespace veltaris::velflexlib::dataset
