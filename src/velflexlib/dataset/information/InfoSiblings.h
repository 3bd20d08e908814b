// The nodes of the information that stand beside each other: those of one group, or the top-level ones.
#pragma once

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoSetItem;
class CInfoSiblings;

// Where a node stands. Each node has one, for the row that it stands in: nobody else changes it.
struct CInfoPlace
{
    CInfoSiblings* row = nullptr; // null while the node stands in no row
    std::size_t lastSeen = 0;     // its position when the row last looked at it
};

// A row owns its nodes and finds each without searching all of them: by its position, by its name, and from the node
// its position.
//
// What makes that fast is kept beside the nodes, is made when it is first needed, and is dropped when it no longer
// holds or when memory is too short to keep it up to date:
// - The position of a node is not corrected when others come and go. The row counts these changes instead: a node now
//   stands between `lastSeen` minus the number of nodes erased and `lastSeen` plus the number of nodes inserted since
//   all nodes were last numbered. When that has become too wide a range, all are numbered anew.
// - The index of names holds the first node of each name and how many nodes have it. Rows of a few nodes have none.
// - The places of items are needed only where groups stand among them.
//
// Not thread-safe, not even where nothing but const functions are called: these make indexes and correct positions.
class CInfoSiblings
{
public:
    // Which nodes are found by name, and how.
    enum class Names : std::uint8_t
    {
        OfItems,  // exactly; groups are not found
        OfGroups, // without regard to ASCII case; items are not found
    };

    // `parent` is the group whose nodes these are, null for the top-level ones.
    explicit CInfoSiblings(Names names, CInfoSetItem* parent = nullptr);
    CInfoSiblings(const CInfoSiblings&) = delete;
    CInfoSiblings& operator=(const CInfoSiblings&) = delete;
    ~CInfoSiblings();

    CInfoSetItem* Parent() const { return m_parent; }
    const std::vector<std::unique_ptr<CInfoSetItem>>& All() const { return m_nodes; }

    // Positions must be those of nodes, for Insert also the one behind the last node.
    void Insert(std::unique_ptr<CInfoSetItem> node, std::size_t place);
    void Erase(std::size_t place);
    void Move(std::size_t from, std::size_t to);
    // Erases all nodes that are no groups.
    void EraseItems();
    void Clear();
    // Destroys the last node of a row that is being destroyed: afterwards it must only be used for the same.
    void DestroyLast() { m_nodes.pop_back(); }

    // `node` must stand in this row.
    std::size_t PlaceOf(const CInfoSetItem& node) const;
    // Null behind the last one.
    CInfoSetItem* Next(const CInfoSetItem& node) const;
    // A node calls these right before and right after it changes its name.
    void NameWillChange(const CInfoSetItem& node) noexcept;
    void NameHasChanged(CInfoSetItem& node) noexcept;

    // The first node of this name, or null.
    CInfoSetItem* Find(std::string_view name) const;

    // Items, that is nodes that are no groups, by position among themselves.
    std::size_t ItemCount() const { return m_nodes.size() - m_groupCount; }
    // Null when there is no such item.
    CInfoSetItem* Item(std::size_t index) const;
    std::size_t ItemIndexOf(const CInfoSetItem& item) const;

private:
    // The first node of a name, and how many there are.
    struct Named
    {
        mutable CInfoSetItem* first;
        mutable std::size_t count;
    };

    struct NameOf
    {
        using is_transparent = void;
        static std::string_view Of(const Named& named);
        static std::string_view Of(std::string_view name) { return name; }
    };
    struct Hash : NameOf
    {
        std::size_t operator()(const auto& name) const;
    };
    struct Equal : NameOf
    {
        Names names;
        bool operator()(const auto& a, const auto& b) const;
    };
    using NameIndex = boost::unordered_flat_set<Named, Hash, Equal>;

    bool IsFoundByName(const CInfoSetItem& node) const;
    bool HasName(const CInfoSetItem& node, std::string_view name) const;
    CInfoSetItem* Search(std::string_view name, std::size_t from) const;
    void MakeNameIndex() const;
    void AddName(CInfoSetItem& node) const;
    void AddPlace(const CInfoSetItem& node, std::size_t place) noexcept;
    void Renumber() const;
    const std::vector<std::uint32_t>& ItemPlaces() const;

    std::vector<std::unique_ptr<CInfoSetItem>> m_nodes;
    CInfoSetItem* m_parent;
    mutable std::size_t m_erased = 0;   // since the last numbering, and so is the next one
    mutable std::size_t m_inserted = 0; // ahead of other nodes; what is inserted at the end moves none
    mutable std::unique_ptr<NameIndex> m_nameIndex;
    mutable std::unique_ptr<std::vector<std::uint32_t>> m_itemPlaces; // positions of items, ascending
    std::uint32_t m_groupCount = 0;
    Names m_names;
};

} // namespace veltaris::velflexlib::dataset
