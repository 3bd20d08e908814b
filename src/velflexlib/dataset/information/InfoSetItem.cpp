#include "velflexlib/dataset/information/InfoSetItem.h"

#include <boost/range/adaptor/reversed.hpp>
#include <boost/throw_exception.hpp>

#include <stdexcept>

namespace veltaris::velflexlib::dataset {

template class CInfoSiblings<CInfoSetItem>;

CInfoSetItem::CInfoSetItem(std::string name) : m_name(std::move(name)), m_value(groupValue), m_isGroup(true)
{
}

CInfoSetItem::CInfoSetItem(std::string name, std::string value)
    : m_name(std::move(name)), m_value(std::move(value)), m_isGroup(false)
{
}

// Takes the subtree apart from its leaves, so that no destructor of a sub-item finds sub-items of its own.
CInfoSetItem::~CInfoSetItem()
{
    CInfoSetItem* node = this;
    while (node != this || HasSubItems()) {
        if (node->HasSubItems()) {
            node = node->m_subItems->All().back().get();
        } else {
            CInfoRow& row = *node->m_place.row;
            node = row.Parent();
            row.DestroyLast();
        }
    }
}

void CInfoSetItem::SetName(std::string name)
{
    if (m_place.row)
        m_place.row->NameWillChange(*this);
    m_name.swap(name);
    if (m_place.row)
        m_place.row->NameHasChanged(*this);
}

const std::vector<std::unique_ptr<CInfoSetItem>>& CInfoSetItem::GetSubItems() const
{
    static const std::vector<std::unique_ptr<CInfoSetItem>> none;
    return m_subItems ? m_subItems->All() : none;
}

CInfoSetItem* CInfoSetItem::GetNext() const
{
    return m_place.row ? m_place.row->Next(*this) : nullptr;
}

void CInfoSetItem::SetOwner(CInfoSet* owner)
{
    std::vector<CInfoSetItem*> waiting{this};
    while (!waiting.empty()) {
        CInfoSetItem* const node = waiting.back();
        waiting.pop_back();
        node->m_owner = owner;
        for (const auto& item : node->GetSubItems())
            waiting.push_back(item.get());
    }
}

bool CInfoSetItem::InsertSubItem(std::unique_ptr<CInfoSetItem> item, int index)
{
    if (!m_isGroup)
        BOOST_THROW_EXCEPTION(std::runtime_error("Only groups can have sub items"));
    const auto count = static_cast<int>(GetSubItems().size());
    const int position = index == -1 ? count : index;
    if (position < 0 || position > count)
        return false;
    if (!m_subItems)
        m_subItems = std::make_unique<CInfoRow>(CInfoRow::Names::OfItems, this);
    m_subItems->Insert(std::move(item), static_cast<std::size_t>(position));
    return true;
}

bool CInfoSetItem::DeleteSubItem(const CInfoSetItem* node)
{
    const CInfoSetItem* above = node ? node->GetParent() : nullptr;
    while (above && above != this)
        above = above->GetParent();
    if (!above)
        return false;
    CInfoRow& siblings = *node->m_place.row;
    siblings.Erase(siblings.PlaceOf(*node));
    return true;
}

void CInfoSetItem::DeleteLeafItems()
{
    if (m_subItems)
        m_subItems->EraseItems();
}

CInfoSetItem* CInfoSetItem::GetLeaf(std::size_t index) const
{
    return m_subItems ? m_subItems->Item(index) : nullptr;
}

CInfoSetItem* CInfoSetItem::FindLeaf(const std::string& name) const
{
    return m_subItems ? m_subItems->Find(name) : nullptr;
}

std::size_t CInfoSetItem::GetLeafIndex(const CInfoSetItem& leaf) const
{
    return m_subItems->ItemIndexOf(leaf);
}

CInfoSetItem* CInfoSetItem::FindGroup(const std::string& name) const
{
    std::vector<CInfoSetItem*> waiting;
    const auto visitLater = [&](const CInfoSetItem& group) {
        for (const auto& item : boost::adaptors::reverse(group.GetSubItems())) {
            if (item->m_isGroup)
                waiting.push_back(item.get());
        }
    };
    visitLater(*this);
    while (!waiting.empty()) {
        CInfoSetItem* const group = waiting.back();
        if (group->m_name == name)
            return group;
        waiting.pop_back();
        visitLater(*group);
    }
    return nullptr;
}

std::string CInfoSetItem::GetGroupPath(const std::string& suffix) const
{
    if (!m_isGroup)
        BOOST_THROW_EXCEPTION(std::runtime_error("Only groups can have group paths"));
    std::vector<const std::string*> names;
    for (const CInfoSetItem* node = this; node; node = node->GetParent())
        names.push_back(&node->m_name);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path.append(name == names.rbegin() ? "" : "\\").append(**name);
    return suffix.empty() ? path : path.append("\\").append(suffix);
}

} // namespace veltaris::velflexlib::dataset
