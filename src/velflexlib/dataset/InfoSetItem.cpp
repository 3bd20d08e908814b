#include "velflexlib/dataset/InfoSetItem.h"

#include "velflexlib/dataset/InfoSet.h"

#include <boost/range/adaptor/reversed.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
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
    while (node != this || !m_subItems.empty()) {
        if (!node->m_subItems.empty()) {
            node = node->m_subItems.back().get();
        } else {
            node = node->m_parent;
            node->m_subItems.pop_back();
        }
    }
    if (m_owner && m_handle != 0)
        m_owner->ForgetHandle(m_handle);
}

void CInfoSetItem::SetOwner(CInfoSet* owner)
{
    std::vector<CInfoSetItem*> waiting{this};
    while (!waiting.empty()) {
        CInfoSetItem* const node = waiting.back();
        waiting.pop_back();
        node->m_owner = owner;
        for (const auto& item : node->m_subItems)
            waiting.push_back(item.get());
    }
}

bool CInfoSetItem::InsertSubItem(std::unique_ptr<CInfoSetItem> item, int index)
{
    if (!m_isGroup)
        BOOST_THROW_EXCEPTION(std::runtime_error("Only groups can have sub items"));
    const auto count = static_cast<int>(m_subItems.size());
    const int position = index == -1 ? count : index;
    if (position < 0 || position > count)
        return false;
    item->m_parent = this;
    item->m_likelyPlace = static_cast<std::size_t>(position);
    const auto inserted = m_subItems.insert(m_subItems.begin() + position, std::move(item));
    m_subGroupCount += (*inserted)->m_isGroup ? 1 : 0;
    return true;
}

bool CInfoSetItem::DeleteSubItem(const CInfoSetItem* node)
{
    const auto isNode = [&](const auto& item) { return item.get() == node; };
    std::vector<CInfoSetItem*> waiting{this};
    while (!waiting.empty()) {
        CInfoSetItem* const group = waiting.back();
        waiting.pop_back();
        auto& items = group->m_subItems;
        if (const auto found = std::ranges::find_if(items, isNode); found != items.end()) {
            group->m_subGroupCount -= (*found)->m_isGroup ? 1 : 0;
            items.erase(found);
            return true;
        }
        for (const auto& item : items) {
            if (item->m_isGroup)
                waiting.push_back(item.get());
        }
    }
    return false;
}

void CInfoSetItem::DeleteLeafItems()
{
    std::erase_if(m_subItems, [](const auto& item) { return !item->m_isGroup; });
}

CInfoSetItem* CInfoSetItem::GetLeaf(std::size_t index) const
{
    if (index >= GetLeafCount())
        return nullptr;
    if (m_subGroupCount == 0)
        return m_subItems[index].get();
    const auto isLast = [&](const auto& item) { return !item->m_isGroup && index-- == 0; };
    return std::ranges::find_if(m_subItems, isLast)->get();
}

CInfoSetItem* CInfoSetItem::FindLeaf(const std::string& name) const
{
    const auto isIt = [&](const auto& item) { return !item->m_isGroup && item->m_name == name; };
    const auto found = std::ranges::find_if(m_subItems, isIt);
    return found == m_subItems.end() ? nullptr : found->get();
}

std::size_t CInfoSetItem::GetLeafIndex(const CInfoSetItem& leaf) const
{
    const auto place = m_subItems.begin() + static_cast<std::ptrdiff_t>(leaf.PlaceAmong(m_subItems));
    return static_cast<std::size_t>(std::count_if(m_subItems.begin(), place, [](auto& i) { return !i->m_isGroup; }));
}

CInfoSetItem* CInfoSetItem::FindGroup(const std::string& name) const
{
    std::vector<CInfoSetItem*> waiting;
    const auto visitLater = [&](const CInfoSetItem& group) {
        for (const auto& item : boost::adaptors::reverse(group.m_subItems)) {
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

std::size_t CInfoSetItem::PlaceAmong(const std::vector<std::unique_ptr<CInfoSetItem>>& siblings) const
{
    const auto isThis = [this](const auto& item) { return item.get() == this; };
    const auto likely = siblings.begin() + static_cast<std::ptrdiff_t>(std::min(m_likelyPlace, siblings.size() - 1));
    // Deletions before this one have moved it towards the front.
    auto found = std::find_if(std::make_reverse_iterator(likely + 1), siblings.rend(), isThis).base();
    if (found == siblings.begin())
        found = std::find_if(likely + 1, siblings.end(), isThis) + 1;
    m_likelyPlace = static_cast<std::size_t>(found - siblings.begin()) - 1;
    return m_likelyPlace;
}

} // namespace veltaris::velflexlib::dataset
