#include "velflexlib/dataset/information/InfoSetItem.h"

#include "velflexlib/dataset/information/InfoSet.h"

#include <boost/range/adaptor/reversed.hpp>
#include <boost/throw_exception.hpp>

#include <stdexcept>

namespace veltaris::velflexlib::dataset {

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
            node = node->m_parent;
            node->m_subItems->DestroyLast();
        }
    }
    if (m_owner && m_handle != 0)
        m_owner->ForgetHandle(m_handle);
}

void CInfoSetItem::SetName(std::string name)
{
    if (CInfoSiblings* const siblings = Siblings())
        siblings->Rename(*this, std::move(name));
    else
        m_name.swap(name);
}

const std::vector<std::unique_ptr<CInfoSetItem>>& CInfoSetItem::GetSubItems() const
{
    static const std::vector<std::unique_ptr<CInfoSetItem>> none;
    return m_subItems ? m_subItems->All() : none;
}

CInfoSiblings* CInfoSetItem::Siblings() const
{
    if (m_parent)
        return m_parent->m_subItems.get();
    return m_owner ? &m_owner->m_groups : nullptr;
}

CInfoSetItem* CInfoSetItem::GetNext() const
{
    const CInfoSiblings* const siblings = Siblings();
    return siblings ? siblings->Next(*this) : nullptr;
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
        m_subItems = std::make_unique<CInfoSiblings>(CInfoSiblings::Names::OfItems);
    item->m_parent = this;
    m_subItems->Insert(std::move(item), static_cast<std::size_t>(position));
    return true;
}

bool CInfoSetItem::DeleteSubItem(const CInfoSetItem* node)
{
    const CInfoSetItem* above = node->m_parent;
    while (above && above != this)
        above = above->m_parent;
    if (!above)
        return false;
    CInfoSiblings& siblings = *node->m_parent->m_subItems;
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
    for (const CInfoSetItem* node = this; node; node = node->m_parent)
        names.push_back(&node->m_name);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path.append(name == names.rbegin() ? "" : "\\").append(**name);
    return suffix.empty() ? path : path.append("\\").append(suffix);
}

} // namespace veltaris::velflexlib::dataset
