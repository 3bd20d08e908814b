#include "velflexlib/dataset/information/InfoSiblings.h"

#include "velflexlib/dataset/information/InfoSetItem.h"
#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/ContainerHelper.h"

#include <algorithm>
#include <new>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

constexpr std::size_t longestSearch = 16;    // of a row without an index
constexpr std::size_t farthestChange = 1024; // that a node is looked for around the place where it was last seen

} // namespace

std::string_view CInfoSiblings::NameOf::Of(const Named& named)
{
    return named.first->GetName();
}

// Names that differ in case only share a hash; which of them are equal is not its business.
std::size_t CInfoSiblings::Hash::operator()(const auto& name) const
{
    return velstdlib::string::HashFolded(Of(name));
}

bool CInfoSiblings::Equal::operator()(const auto& a, const auto& b) const
{
    return names == Names::OfGroups ? velstdlib::string::EqualFolded(Of(a), Of(b)) : Of(a) == Of(b);
}

CInfoSiblings::CInfoSiblings(Names names) : m_names(names)
{
}

CInfoSiblings::~CInfoSiblings() = default;

void CInfoSiblings::Insert(std::unique_ptr<CInfoSetItem> node, std::size_t place)
{
    const auto inserted = m_nodes.insert(m_nodes.begin() + static_cast<std::ptrdiff_t>(place), std::move(node));
    (*inserted)->m_place = place;
    m_groupCount += (*inserted)->IsGroup() ? 1 : 0;
    m_inserted += place + 1 < m_nodes.size() ? 1 : 0;
    TakeUp(**inserted);
}

// The node is there: what cannot take it up is dropped, and made again when it is needed.
void CInfoSiblings::TakeUp(CInfoSetItem& node) noexcept
try {
    TakeUpName(node);
    if (node.m_place + 1 < m_nodes.size())
        m_itemPlaces.reset();
    else if (m_itemPlaces && !node.IsGroup())
        m_itemPlaces->push_back(static_cast<std::uint32_t>(node.m_place));
} catch (const std::bad_alloc&) {
    m_itemPlaces.reset();
}

void CInfoSiblings::TakeUpName(CInfoSetItem& node) noexcept
try {
    if (m_index)
        AddName(node);
} catch (const std::bad_alloc&) {
    m_index.reset();
}

void CInfoSiblings::Erase(std::size_t place)
{
    RemoveName(*m_nodes[place]);
    m_groupCount -= m_nodes[place]->IsGroup() ? 1 : 0;
    m_itemPlaces.reset();
    ++m_erased;
    m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(place));
}

// Which of several nodes of one name comes first may be another one then.
void CInfoSiblings::Move(std::size_t from, std::size_t to)
{
    velstdlib::util::MoveElement(m_nodes, from, to);
    m_nodes[to]->m_place = to;
    m_itemPlaces.reset();
    m_index.reset();
    ++m_erased;
    ++m_inserted;
}

void CInfoSiblings::EraseItems()
{
    m_index.reset();
    m_itemPlaces.reset();
    std::erase_if(m_nodes, [](const auto& node) { return !node->IsGroup(); });
    Renumber();
}

void CInfoSiblings::Clear()
{
    m_index.reset();
    m_itemPlaces.reset();
    m_groupCount = 0;
    m_nodes.clear();
}

std::size_t CInfoSiblings::PlaceOf(const CInfoSetItem& node) const
{
    const auto isNode = [&](const auto& other) { return other.get() == &node; };
    if (m_erased + m_inserted > farthestChange)
        Renumber();
    const std::size_t seen = node.m_place;
    if (seen >= m_nodes.size() || !isNode(m_nodes[seen])) {
        const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(seen - std::min(seen, m_erased));
        node.m_place = static_cast<std::size_t>(std::find_if(first, m_nodes.end(), isNode) - m_nodes.begin());
    }
    return node.m_place;
}

CInfoSetItem* CInfoSiblings::Next(const CInfoSetItem& node) const
{
    const std::size_t place = PlaceOf(node) + 1;
    if (place == m_nodes.size())
        return nullptr;
    m_nodes[place]->m_place = place; // so that whoever walks on need not look for it
    return m_nodes[place].get();
}

void CInfoSiblings::Renumber() const
{
    for (std::size_t place = 0; place < m_nodes.size(); ++place)
        m_nodes[place]->m_place = place;
    m_erased = 0;
    m_inserted = 0;
}

void CInfoSiblings::Rename(CInfoSetItem& node, std::string name)
{
    RemoveName(node);
    node.m_name.swap(name);
    TakeUpName(node);
}

CInfoSetItem* CInfoSiblings::Find(std::string_view name) const
{
    if (m_nodes.size() <= longestSearch)
        return Search(name, 0);
    if (!m_index)
        MakeIndex();
    const auto found = m_index->find(name);
    return found == m_index->end() ? nullptr : found->first;
}

bool CInfoSiblings::IsFound(const CInfoSetItem& node) const
{
    return node.IsGroup() == (m_names == Names::OfGroups);
}

bool CInfoSiblings::HasName(const CInfoSetItem& node, std::string_view name) const
{
    return IsFound(node) && Equal{{}, m_names}(std::string_view(node.GetName()), name);
}

CInfoSetItem* CInfoSiblings::Search(std::string_view name, std::size_t from) const
{
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found = std::find_if(first, m_nodes.end(), [&](const auto& node) { return HasName(*node, name); });
    return found == m_nodes.end() ? nullptr : found->get();
}

void CInfoSiblings::MakeIndex() const
try {
    m_index = std::make_unique<Index>(m_nodes.size(), Hash{}, Equal{{}, m_names});
    for (const auto& node : m_nodes)
        AddName(*node);
} catch (const std::bad_alloc&) {
    m_index.reset();
    throw;
}

void CInfoSiblings::AddName(CInfoSetItem& node) const
{
    if (!IsFound(node))
        return;
    const auto [named, isNew] = m_index->insert(Named{&node, 1});
    if (isNew)
        return;
    ++named->count;
    if (PlaceOf(node) < PlaceOf(*named->first))
        named->first = &node;
}

void CInfoSiblings::RemoveName(const CInfoSetItem& node)
{
    if (!m_index || !IsFound(node))
        return;
    const auto named = m_index->find(std::string_view(node.GetName()));
    if (named->count == 1) {
        m_index->erase(named);
        return;
    }
    --named->count;
    if (named->first == &node)
        named->first = Search(node.GetName(), PlaceOf(node) + 1);
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
