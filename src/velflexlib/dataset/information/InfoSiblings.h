// The nodes of the information that stand beside each other: those of one group, or the top-level ones.
#pragma once

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/ContainerHelper.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace veltaris::velflexlib::dataset {

template <class Node>
class CInfoSiblings;

// Where a node stands. Each node has one, for the row that it stands in: nobody else changes it.
template <class Node>
struct CInfoPlace
{
    CInfoSiblings<Node>* row = nullptr; // null while the node stands in no row
    std::size_t lastSeen = 0;           // its position when the row last looked at it
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
// `Node` has GetName(), IsGroup(), and Place(), which gives its CInfoPlace<Node>. The row knows nothing else of it, so
// that a node can have a row of nodes in turn.
//
// Not thread-safe, not even where nothing but const functions are called: these make indexes and correct positions.
template <class Node>
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
    explicit CInfoSiblings(Names names, Node* parent = nullptr) : m_parent(parent), m_names(names) {}
    CInfoSiblings(const CInfoSiblings&) = delete;
    CInfoSiblings& operator=(const CInfoSiblings&) = delete;
    ~CInfoSiblings() = default;

    Node* Parent() const { return m_parent; }
    const std::vector<std::unique_ptr<Node>>& All() const { return m_nodes; }

    // Positions must be those of nodes, for Insert also the one behind the last node.
    void Insert(std::unique_ptr<Node> node, std::size_t place);
    void Erase(std::size_t place);
    void Move(std::size_t from, std::size_t to);
    // Erases all nodes that are no groups.
    void EraseItems();
    void Clear();
    // Destroys the last node of a row that is being destroyed: afterwards it must only be used for the same.
    void DestroyLast() { m_nodes.pop_back(); }

    // `node` must stand in this row.
    std::size_t PlaceOf(const Node& node) const;
    // Null behind the last one.
    Node* Next(const Node& node) const;
    // A node calls these right before and right after it changes its name.
    void NameWillChange(const Node& node) noexcept;
    void NameHasChanged(Node& node) noexcept;

    // The first node of this name, or null.
    Node* Find(std::string_view name) const;

    // Items, that is nodes that are no groups, by position among themselves.
    std::size_t ItemCount() const { return m_nodes.size() - m_groupCount; }
    // Null when there is no such item.
    Node* Item(std::size_t index) const;
    std::size_t ItemIndexOf(const Node& item) const;

private:
    static constexpr std::size_t longestSearch = 16;   // of a row without an index of names
    static constexpr std::size_t widestSearch = 1'024; // around the position where a node was last seen

    // The first node of a name, and how many there are.
    struct Named
    {
        mutable Node* first;
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

    bool IsFoundByName(const Node& node) const;
    bool HasName(const Node& node, std::string_view name) const;
    Node* Search(std::string_view name, std::size_t from) const;
    void MakeNameIndex() const;
    void AddName(Node& node) const;
    void AddPlace(const Node& node, std::size_t place) noexcept;
    void Renumber() const;
    const std::vector<std::uint32_t>& ItemPlaces() const;

    std::vector<std::unique_ptr<Node>> m_nodes;
    Node* m_parent;
    mutable std::size_t m_erased = 0;   // since the last numbering, and so is the next one
    mutable std::size_t m_inserted = 0; // ahead of other nodes; what is inserted at the end moves none
    mutable std::unique_ptr<NameIndex> m_nameIndex;
    mutable std::unique_ptr<std::vector<std::uint32_t>> m_itemPlaces; // positions of items, ascending
    std::uint32_t m_groupCount = 0;
    Names m_names;
};

template <class Node>
std::string_view CInfoSiblings<Node>::NameOf::Of(const Named& named)
{
    return named.first->GetName();
}

// Names that differ only in case share a hash, also where they are not equal.
template <class Node>
std::size_t CInfoSiblings<Node>::Hash::operator()(const auto& name) const
{
    return velstdlib::string::HashFolded(NameOf::Of(name));
}

template <class Node>
bool CInfoSiblings<Node>::Equal::operator()(const auto& a, const auto& b) const
{
    return names == Names::OfGroups ? velstdlib::string::EqualFolded(NameOf::Of(a), NameOf::Of(b))
                                    : NameOf::Of(a) == NameOf::Of(b);
}

template <class Node>
void CInfoSiblings<Node>::Insert(std::unique_ptr<Node> node, std::size_t place)
{
    const auto inserted = m_nodes.insert(m_nodes.begin() + static_cast<std::ptrdiff_t>(place), std::move(node));
    (*inserted)->Place() = {this, place};
    m_groupCount += (*inserted)->IsGroup() ? 1 : 0;
    m_inserted += place + 1 < m_nodes.size() ? 1 : 0;
    NameHasChanged(**inserted);
    AddPlace(**inserted, place);
}

template <class Node>
void CInfoSiblings<Node>::AddPlace(const Node& node, std::size_t place) noexcept
try {
    if (place + 1 < m_nodes.size())
        m_itemPlaces.reset();
    else if (m_itemPlaces && !node.IsGroup())
        m_itemPlaces->push_back(static_cast<std::uint32_t>(place));
} catch (const std::bad_alloc&) {
    m_itemPlaces.reset();
}

template <class Node>
void CInfoSiblings<Node>::Erase(std::size_t place)
{
    NameWillChange(*m_nodes[place]); // to none at all
    m_groupCount -= m_nodes[place]->IsGroup() ? 1 : 0;
    m_itemPlaces.reset();
    ++m_erased;
    m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(place));
}

// Which of several nodes of one name comes first may be another one then.
template <class Node>
void CInfoSiblings<Node>::Move(std::size_t from, std::size_t to)
{
    velstdlib::util::MoveElement(m_nodes, from, to);
    m_nodes[to]->Place().lastSeen = to;
    m_itemPlaces.reset();
    m_nameIndex.reset();
    ++m_erased;
    ++m_inserted;
}

template <class Node>
void CInfoSiblings<Node>::EraseItems()
{
    m_nameIndex.reset();
    m_itemPlaces.reset();
    std::erase_if(m_nodes, [](const auto& node) { return !node->IsGroup(); });
    Renumber();
}

template <class Node>
void CInfoSiblings<Node>::Clear()
{
    m_nameIndex.reset();
    m_itemPlaces.reset();
    m_groupCount = 0;
    m_nodes.clear();
}

template <class Node>
std::size_t CInfoSiblings<Node>::PlaceOf(const Node& node) const
{
    const auto isNode = [&](const auto& other) { return other.get() == &node; };
    if (m_erased + m_inserted > widestSearch)
        Renumber();
    std::size_t& seen = node.Place().lastSeen;
    if (seen >= m_nodes.size() || !isNode(m_nodes[seen])) {
        const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(seen - std::min(seen, m_erased));
        seen = static_cast<std::size_t>(std::find_if(first, m_nodes.end(), isNode) - m_nodes.begin());
    }
    return seen;
}

template <class Node>
Node* CInfoSiblings<Node>::Next(const Node& node) const
{
    const std::size_t place = PlaceOf(node) + 1;
    if (place == m_nodes.size())
        return nullptr;
    m_nodes[place]->Place().lastSeen = place; // which is where a walk asks next
    return m_nodes[place].get();
}

template <class Node>
void CInfoSiblings<Node>::Renumber() const
{
    for (std::size_t place = 0; place < m_nodes.size(); ++place)
        m_nodes[place]->Place().lastSeen = place;
    m_erased = 0;
    m_inserted = 0;
}

template <class Node>
void CInfoSiblings<Node>::NameWillChange(const Node& node) noexcept
{
    if (!m_nameIndex || !IsFoundByName(node))
        return;
    const auto named = m_nameIndex->find(std::string_view(node.GetName()));
    if (named->count == 1) {
        m_nameIndex->erase(named);
        return;
    }
    --named->count;
    if (named->first == &node)
        named->first = Search(node.GetName(), PlaceOf(node) + 1);
}

// An index that lacks the memory for the name is dropped: it is made again when it is needed.
template <class Node>
void CInfoSiblings<Node>::NameHasChanged(Node& node) noexcept
try {
    if (m_nameIndex)
        AddName(node);
} catch (const std::bad_alloc&) {
    m_nameIndex.reset();
}

template <class Node>
Node* CInfoSiblings<Node>::Find(std::string_view name) const
{
    if (m_nodes.size() <= longestSearch)
        return Search(name, 0);
    if (!m_nameIndex)
        MakeNameIndex();
    const auto found = m_nameIndex->find(name);
    return found == m_nameIndex->end() ? nullptr : found->first;
}

template <class Node>
bool CInfoSiblings<Node>::IsFoundByName(const Node& node) const
{
    return node.IsGroup() == (m_names == Names::OfGroups);
}

template <class Node>
bool CInfoSiblings<Node>::HasName(const Node& node, std::string_view name) const
{
    return IsFoundByName(node) && Equal{{}, m_names}(std::string_view(node.GetName()), name);
}

template <class Node>
Node* CInfoSiblings<Node>::Search(std::string_view name, std::size_t from) const
{
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found = std::find_if(first, m_nodes.end(), [&](const auto& node) { return HasName(*node, name); });
    return found == m_nodes.end() ? nullptr : found->get();
}

template <class Node>
void CInfoSiblings<Node>::MakeNameIndex() const
try {
    m_nameIndex = std::make_unique<NameIndex>(m_nodes.size(), Hash{}, Equal{{}, m_names});
    for (const auto& node : m_nodes)
        AddName(*node);
} catch (const std::bad_alloc&) {
    m_nameIndex.reset();
    throw;
}

template <class Node>
void CInfoSiblings<Node>::AddName(Node& node) const
{
    if (!IsFoundByName(node))
        return;
    const auto [named, isNew] = m_nameIndex->insert(Named{&node, 1});
    if (isNew)
        return;
    ++named->count;
    if (PlaceOf(node) < PlaceOf(*named->first))
        named->first = &node;
}

template <class Node>
Node* CInfoSiblings<Node>::Item(std::size_t index) const
{
    if (index >= ItemCount())
        return nullptr;
    return m_nodes[m_groupCount == 0 ? index : ItemPlaces()[index]].get();
}

template <class Node>
std::size_t CInfoSiblings<Node>::ItemIndexOf(const Node& item) const
{
    const std::size_t place = PlaceOf(item);
    if (m_groupCount == 0)
        return place;
    return static_cast<std::size_t>(std::ranges::lower_bound(ItemPlaces(), place) - ItemPlaces().begin());
}

template <class Node>
const std::vector<std::uint32_t>& CInfoSiblings<Node>::ItemPlaces() const
{
    if (!m_itemPlaces) {
        auto places = std::make_unique<std::vector<std::uint32_t>>();
        places->reserve(ItemCount());
        for (std::size_t place = 0; place < m_nodes.size(); ++place) {
            if (!m_nodes[place]->IsGroup())
                places->push_back(static_cast<std::uint32_t>(place));
        }
        m_itemPlaces = std::move(places);
    }
    return *m_itemPlaces;
}

} // namespace veltaris::velflexlib::dataset
