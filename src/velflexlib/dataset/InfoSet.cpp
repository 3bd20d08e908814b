#include "velflexlib/dataset/InfoSet.h"

#include "velstdlib/string/FoldedText.h"
#include "velstdlib/util/ContainerHelper.h"

#include <algorithm>
#include <atomic>
#include <limits>

namespace veltaris::velflexlib::dataset {

namespace {

// One counter for all files, so that a handle cannot be mistaken for one of another file.
std::uint64_t NextHandle()
{
    static std::atomic<std::uint64_t> next = 2;
    return next++;
}

} // namespace

CInfoSetItem* CInfoSet::GetGroup(std::uint32_t index) const
{
    return index < m_groups.size() ? m_groups[index].get() : nullptr;
}

std::string CInfoSet::GetGroupName(int index) const
{
    const CInfoSetItem* const group = index < 0 ? nullptr : GetGroup(static_cast<std::uint32_t>(index));
    return group ? group->GetName() : std::string();
}

std::uint32_t CInfoSet::GetGroupIndex(const std::string& name) const
{
    const auto hasName = [&](const auto& group) { return velstdlib::string::EqualFolded(group->GetName(), name); };
    const auto found = std::ranges::find_if(m_groups, hasName);
    return found == m_groups.end() ? noIndex : static_cast<std::uint32_t>(found - m_groups.begin());
}

CInfoSetItem* CInfoSet::FindGroup(const std::string& name, bool recursive) const
{
    for (const auto& group : m_groups) {
        if (group->GetName() == name)
            return group.get();
        if (CInfoSetItem* const below = recursive ? group->FindGroup(name) : nullptr)
            return below;
    }
    return nullptr;
}

bool CInfoSet::InsertGroup(std::unique_ptr<CInfoSetItem> group, std::uint32_t index)
{
    const std::size_t position = index == noIndex ? m_groups.size() : index;
    if (position > m_groups.size())
        return false;
    group->SetOwner(this);
    group->m_likelyPlace = position;
    m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(position), std::move(group));
    return true;
}

bool CInfoSet::DeleteGroup(const std::string& name)
{
    const CInfoSetItem* const group = FindGroup(name, false);
    return group && DeleteGroup(static_cast<std::uint32_t>(group->PlaceAmong(m_groups)));
}

bool CInfoSet::DeleteGroup(std::uint32_t index)
{
    if (index >= m_groups.size())
        return false;
    m_groups.erase(m_groups.begin() + index);
    GroupsDeleted();
    return true;
}

void CInfoSet::DeleteAllGroups()
{
    m_groups.clear();
    GroupsDeleted();
}

void CInfoSet::GroupsDeleted()
{
    m_selected = m_groups.empty() ? nullptr : m_groups.front().get();
    m_modified = true;
    OnChanged.emit();
}

bool CInfoSet::MoveGroup(int from, int to)
{
    const auto isPosition = [&](int index) { return index >= 0 && static_cast<std::size_t>(index) < m_groups.size(); };
    if (!isPosition(from) || !isPosition(to))
        return false;
    velstdlib::util::MoveElement(m_groups, static_cast<std::size_t>(from), static_cast<std::size_t>(to));
    m_modified = true;
    OnChanged.emit();
    return true;
}

std::uint64_t CInfoSet::GetHandle(CInfoSetItem& item)
{
    if (item.m_handle == 0) {
        const std::uint64_t handle = NextHandle();
        m_handles.emplace(handle, &item);
        item.m_handle = handle;
    }
    return item.m_handle;
}

CInfoSetItem* CInfoSet::FindItem(std::uint64_t handle) const
{
    const auto found = m_handles.find(handle);
    return found == m_handles.end() ? nullptr : found->second;
}

} // namespace veltaris::velflexlib::dataset
