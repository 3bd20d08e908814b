// The tree of measurement information as the header has it, for commands that need no samples.
#pragma once

#include "oxd/inspection/UntilNul.h"
#include "velflexlib/dataset/DataSet.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace oxd {

// Refers to a node of a data set, which must outlive it, or to the root above all of its groups. Has the calls of a
// MetaNode that only read.
class HeaderNode
{
public:
    using Item = veltaris::velflexlib::dataset::CInfoSetItem;
    using Items = std::vector<std::unique_ptr<Item>>;

    static HeaderNode Root(const veltaris::velflexlib::dataset::CDataSet& dataSet)
    {
        return {nullptr, dataSet.GetInfoSet().GetGroups()};
    }

    bool IsGroup() const { return m_item == nullptr || m_item->IsGroup(); }
    std::string Name() const { return m_item == nullptr ? std::string() : UntilNul(m_item->GetName()); }
    std::string Value() const { return m_item == nullptr ? std::string() : UntilNul(m_item->GetValue()); }

    std::size_t ChildCount() const { return m_children->size(); }
    HeaderNode Child(std::size_t position) const { return Of(*(*m_children)[position]); }

    // The first node of that kind and name directly in this group.
    std::optional<HeaderNode> FindGroup(const std::string& name) const { return Find(name, true); }
    std::optional<HeaderNode> FindItem(const std::string& name) const { return Find(name, false); }

private:
    HeaderNode(const Item* item, const Items& children) : m_item(item), m_children(&children) {}
    static HeaderNode Of(const Item& item) { return {&item, item.GetSubItems()}; }

    std::optional<HeaderNode> Find(const std::string& name, bool group) const;

    const Item* m_item; // null for the root
    const Items* m_children;
};

} // namespace oxd
