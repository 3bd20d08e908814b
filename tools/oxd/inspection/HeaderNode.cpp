#include "oxd/inspection/HeaderNode.h"

#include <algorithm>

namespace oxd {

std::optional<HeaderNode> HeaderNode::Find(const std::string& name, bool group) const
{
    const auto found = std::find_if(m_children->begin(), m_children->end(), [&](const std::unique_ptr<Item>& child) {
        return child->IsGroup() == group && UntilNul(child->GetName()) == name;
    });
    return found == m_children->end() ? std::nullopt : std::optional(Of(**found));
}

} // namespace oxd
