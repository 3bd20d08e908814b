#include "velflexlib/dataset/information/InfoSiblings.h"

#include "velflexlib/dataset/information/InfoSetItem.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/ContainerHelper.h"

#include <algorithm>
#include <new>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

constexpr std::size_t longestSearch = 16;   // of a row without an index of names
constexpr std::size_t widestSearch = 1'024; // around the position where a node was last seen

} // namespace

std::string_view CInfoSiblings::NameOf::Of(const Named& named)
{
    return named.first->GetName();
}

// Names that differ only in case share a hash, also where they are not equal.
std::size_t CInfoSiblings::Hash::operator()(const auto& name) const
{
    return velstdlib::string::HashFolded(Of(name));
}

bool CInfoSiblings::Equal::operator()(const auto& a, const auto& b) const
{
    return names == Names::OfGroups ? velstdlib::string::EqualFolded(Of(a), Of(b)) : Of(a) == Of(b);
}

CInfoSiblings::CInfoSiblings(Names names, CInfoSetItem* parent) : m_parent(parent), m_names(names)
{
}

CInfoSiblings::~CInfoSiblings() = default;

void CInfoSiblings::Insert(std::unique_ptr<CInfoSetItem> node, std::size_t place)
{
    const auto inserted = m_nodes.insert(m_nodes.begin() + static_cast<std::ptrdiff_t>(place), std::move(node));
    (*inserted)->Place() = {this, place};
    m_groupCount += (*inserted)->IsGroup() ? 1 : 0;
    m_inserted += place + 1 < m_nodes.size() ? 1 : 0;
    NameHasChanged(**inserted);
    AddPlace(**inserted, place);
}

void CInfoSiblings::AddPlace(const CInfoSetItem& node, std::size_t place) noexcept
try {
    if (place + 1 < m_nodes.size())
        m_itemPlaces.reset();
    else if (m_itemPlaces && !node.IsGroup())
        m_itemPlaces->push_back(static_cast<std::uint32_t>(place));
} catch (const std::bad_alloc&) {
    m_itemPlaces.reset();
}

void CInfoSiblings::Erase(std::size_t place)
{
    NameWillChange(*m_nodes[place]); // to none at all
    m_groupCount -= m_nodes[place]->IsGroup() ? 1 : 0;
    m_itemPlaces.reset();
    ++m_erased;
    m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(place));
}

// Which of several nodes of one name comes first may be another one then.
void CInfoSiblings::Move(std::size_t from, std::size_t to)
{
    velstdlib::util::MoveElement(m_nodes, from, to);
    m_nodes[to]->Place().lastSeen = to;
    m_itemPlaces.reset();
    m_nameIndex.reset();
    ++m_erased;
    ++m_inserted;
}

void CInfoSiblings::EraseItems()
{
    m_nameIndex.reset();
    m_itemPlaces.reset();
    std::erase_if(m_nodes, [](const auto& node) { return !node->IsGroup(); });
    Renumber();
}

void CInfoSiblings::Clear()
{
    m_nameIndex.reset();
    m_itemPlaces.reset();
    m_groupCount = 0;
    m_nodes.clear();
}

std::size_t CInfoSiblings::PlaceOf(const CInfoSetItem& node) const
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

CInfoSetItem* CInfoSiblings::Next(const CInfoSetItem& node) const
{
    const std::size_t place = PlaceOf(node) + 1;
    if (place == m_nodes.size())
        return nullptr;
    m_nodes[place]->Place().lastSeen = place; // which is where a walk asks next
    return m_nodes[place].get();
}

void CInfoSiblings::Renumber() const
{
    for (std::size_t place = 0; place < m_nodes.size(); ++place)
        m_nodes[place]->Place().lastSeen = place;
    m_erased = 0;
    m_inserted = 0;
}

void CInfoSiblings::NameWillChange(const CInfoSetItem& node) noexcept
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
void CInfoSiblings::NameHasChanged(CInfoSetItem& node) noexcept
try {
    if (m_nameIndex)
        AddName(node);
} catch (const std::bad_alloc&) {
    m_nameIndex.reset();
}

CInfoSetItem* CInfoSiblings::Find(std::string_view name) const
{
    if (m_nodes.size() <= longestSearch)
        return Search(name, 0);
    if (!m_nameIndex)
        MakeNameIndex();
    const auto found = m_nameIndex->find(name);
    return found == m_nameIndex->end() ? nullptr : found->first;
}

bool CInfoSiblings::IsFoundByName(const CInfoSetItem& node) const
{
    return node.IsGroup() == (m_names == Names::OfGroups);
}

bool CInfoSiblings::HasName(const CInfoSetItem& node, std::string_view name) const
{
    return IsFoundByName(node) && Equal{{}, m_names}(std::string_view(node.GetName()), name);
}

CInfoSetItem* CInfoSiblings::Search(std::string_view name, std::size_t from) const
{
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found = std::find_if(first, m_nodes.end(), [&](const auto& node) { return HasName(*node, name); });
    return found == m_nodes.end() ? nullptr : found->get();
}

void CInfoSiblings::MakeNameIndex() const
try {
    m_nameIndex = std::make_unique<NameIndex>(m_nodes.size(), Hash{}, Equal{{}, m_names});
    for (const auto& node : m_nodes)
        AddName(*node);
} catch (const std::bad_alloc&) {
    m_nameIndex.reset();
    throw;
}

void CInfoSiblings::AddName(CInfoSetItem& node) const
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

CInfoSetItem* CInfoSiblings::Item(std::size_t index) const
{
    if (index >= ItemCount())
        return nullptr;
    return m_nodes[m_groupCount == 0 ? index : ItemPlaces()[index]].get();
}

std::size_t CInfoSiblings::ItemIndexOf(const CInfoSetItem& item) const
{
    const std::size_t place = PlaceOf(item);
    if (m_groupCount == 0)
        return place;
    return static_cast<std::size_t>(std::ranges::lower_bound(ItemPlaces(), place) - ItemPlaces().begin());
}

const std::vector<std::uint32_t>& CInfoSiblings::ItemPlaces() const
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
