#include "oxd/library/MetaNode.h"

namespace oxd {

std::optional<MetaNode> MetaNode::Find(const std::string& name, bool group) const
{
    MetaChildren children(*this);
    auto child = children.Next();
    while (child && (child->IsGroup() != group || child->Name() != name)) {
        child = children.Next();
    }
    return child;
}

std::optional<MetaNode> MetaChildren::Next()
{
    if (m_left == 0) {
        return std::nullopt;
    }
    --m_left;
    m_current = m_current.Node(m_started ? SelectNextMetaInfoItem : SelectFirstChildMetaInfoItem);
    m_started = true;
    return m_current;
}

} // namespace oxd
