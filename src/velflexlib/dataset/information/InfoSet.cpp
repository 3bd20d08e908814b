#include "velflexlib/dataset/information/InfoSet.h"

namespace veltaris::velflexlib::dataset {

CInfoSetItem* CInfoSet::GetGroup(std::uint32_t index) const
{
    return index < GetGroups().size() ? GetGroups()[index].get() : nullptr;
}

std::string CInfoSet::GetGroupName(int index) const
{
    const CInfoSetItem* const group = index < 0 ? nullptr : GetGroup(static_cast<std::uint32_t>(index));
    return group ? group->GetName() : std::string();
}

std::uint32_t CInfoSet::GetGroupIndex(const std::string& name) const
{
    const CInfoSetItem* const group = m_groups.Find(name);
    return group ? static_cast<std::uint32_t>(m_groups.PlaceOf(*group)) : noIndex;
}

CInfoSetItem* CInfoSet::FindGroup(const std::string& name, bool recursive) const
{
    for (const auto& group : GetGroups()) {
        if (group->GetName() == name)
            return group.get();
        if (CInfoSetItem* const below = recursive ? group->FindGroup(name) : nullptr)
            return below;
    }
    return nullptr;
}

bool CInfoSet::InsertGroup(std::unique_ptr<CInfoSetItem> group, std::uint32_t index)
{
    const std::size_t position = index == noIndex ? GetGroups().size() : index;
    if (position > GetGroups().size())
        return false;
    group->SetOwner(this);
    m_groups.Insert(std::move(group), position);
    return true;
}

bool CInfoSet::DeleteGroup(const std::string& name)
{
    const CInfoSetItem* const group = FindGroup(name, false);
    if (group)
        DeleteGroup(*group);
    return group;
}

bool CInfoSet::DeleteGroup(std::uint32_t index)
{
    const CInfoSetItem* const group = GetGroup(index);
    if (group)
        DeleteGroup(*group);
    return group;
}

void CInfoSet::DeleteGroup(const CInfoSetItem& group)
{
    m_groups.Erase(m_groups.PlaceOf(group));
    GroupsDeleted();
}

void CInfoSet::DeleteAllGroups()
{
    m_groups.Clear();
    GroupsDeleted();
}

void CInfoSet::GroupsDeleted()
{
    m_selected = GetGroup(0);
    m_modified = true;
    OnChanged.emit();
}

bool CInfoSet::MoveGroup(int from, int to)
{
    const auto isPosition = [&](int index) {
        return index >= 0 && static_cast<std::size_t>(index) < GetGroups().size();
    };
    if (!isPosition(from) || !isPosition(to))
        return false;
    m_groups.Move(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
    m_modified = true;
    OnChanged.emit();
    return true;
}

} // namespace veltaris::velflexlib::dataset
