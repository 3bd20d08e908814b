#include "velflexlib/dataset/DataSet.h"

#include <algorithm>

namespace veltaris::velflexlib::dataset {

int CDataSet::CreateGroup(const std::string& name, std::int64_t bitCount)
{
    const std::uint64_t id = FindFreeId();
    const std::string givenName = name.empty() ? "Group" + std::to_string(id) : name;
    InsertGroup(id, std::nullopt, givenName, 0, bitCount);
    return static_cast<int>(id);
}

std::shared_ptr<CDataGroup> CDataSet::InsertGroup(std::uint64_t id, std::optional<std::uint32_t> logicalGroupId,
                                                  const std::string& name, std::size_t slotCount, std::int64_t bitCount)
{
    auto group =
        std::make_shared<CDataGroup>(logicalGroupId.value_or(0), name, slotCount, bitCount, m_mutex.GetSharing());
    group->ReportTo(m_relays);
    decltype(m_groups) inserted{{id, group}};
    if (!logicalGroupId) // only now, when nothing can fail any more
        group->SetLogicalGroupId(TakeLogicalGroupId());
    decltype(m_groups)::node_type dropped;
    {
        const std::lock_guard lock(m_mutex);
        dropped = m_groups.extract(id);
        m_groups.merge(inserted);
        ++*m_relays->renamed;
        m_modified = true;
    }
    OnChanged.emit();
    return group;
}

bool CDataSet::DeleteGroup(std::uint64_t id)
{
    if (id == invalidGroupId)
        return true;
    decltype(m_groups)::node_type dropped;
    {
        const std::lock_guard lock(m_mutex);
        dropped = m_groups.extract(id);
        if (dropped.empty())
            return false;
        m_lowestFreeId = std::min(m_lowestFreeId, id);
        ++*m_relays->renamed;
        m_modified = true;
    }
    OnChanged.emit();
    return true;
}

void CDataSet::DeleteAllGroups()
{
    decltype(m_groups) dropped;
    {
        const std::lock_guard lock(m_mutex);
        m_groups.swap(dropped);
        ++*m_relays->renamed;
        m_lowestFreeId = 0;
        m_nextLogicalGroupId = firstLogicalGroupId;
        m_modified = true;
    }
    OnChanged.emit();
}

std::size_t CDataSet::GetGroupCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_groups.size();
}

std::vector<int> CDataSet::GetAllGroupIds() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<int> ids;
    ids.reserve(m_groups.size());
    for (const auto& [id, group] : m_groups)
        ids.push_back(static_cast<int>(id));
    return ids;
}

std::vector<std::shared_ptr<CDataGroup>> CDataSet::GetAllGroups() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::shared_ptr<CDataGroup>> groups;
    groups.reserve(m_groups.size());
    for (const auto& [id, group] : m_groups)
        groups.push_back(group);
    return groups;
}

int CDataSet::GetGroupId(const std::string& name) const
{
    const std::uint64_t state = *m_relays->renamed; // before any name is read
    bool isWorthAnIndex = false;
    {
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_names.Find(name, state))
            return *found;
        isWorthAnIndex = m_names.IsSearchedAgain(state);
    }
    return isWorthAnIndex ? IndexGroupNames(name, state) : SearchGroupId(name);
}

int CDataSet::SearchGroupId(const std::string& name) const
{
    for (const int id : GetAllGroupIds()) {
        const auto group = GetGroup(static_cast<std::uint64_t>(id));
        if (group && group->GetName() == name)
            return id;
    }
    return -1;
}

int CDataSet::IndexGroupNames(const std::string& name, std::uint64_t state) const
{
    CGroupNames::Index index;
    for (const int id : GetAllGroupIds()) {
        if (const auto group = GetGroup(static_cast<std::uint64_t>(id)))
            index.emplace(group->GetName(), id); // unless a group before it has the name
    }
    const auto found = index.find(name);
    const int id = found == index.end() ? -1 : found->second;
    const std::lock_guard lock(m_mutex);
    m_names.Keep(index, state);
    return id;
}

std::shared_ptr<CDataGroup> CDataSet::GetGroup(std::uint64_t id) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_groups.find(id);
    return found == m_groups.end() ? nullptr : found->second;
}

CDataGroup* CDataSet::FindGroup(std::uint64_t id) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_groups.find(id);
    return found == m_groups.end() ? nullptr : found->second.get();
}

std::uint32_t CDataSet::TakeLogicalGroupId()
{
    const std::lock_guard lock(m_mutex);
    return m_nextLogicalGroupId++;
}

void CDataSet::ReserveLogicalGroupId(std::uint32_t id)
{
    const std::lock_guard lock(m_mutex);
    if (id >= m_nextLogicalGroupId && id < 0x7FFF'FFFF)
        m_nextLogicalGroupId = id + 1;
}

void CDataSet::PrepareForSave()
{
    for (const auto& group : GetAllGroups())
        group->PrepareForSave();
}

bool CDataSet::IsModified() const
{
    const std::lock_guard lock(m_mutex);
    return m_modified;
}

void CDataSet::SetModified(bool modified)
{
    const std::lock_guard lock(m_mutex);
    m_modified = modified;
}

std::uint64_t CDataSet::FindFreeId()
{
    const std::lock_guard lock(m_mutex);
    for (auto group = m_groups.find(m_lowestFreeId); group != m_groups.end() && group->first == m_lowestFreeId; ++group)
        ++m_lowestFreeId;
    return m_lowestFreeId;
}

} // namespace veltaris::velflexlib::dataset
