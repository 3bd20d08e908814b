// The tree of measurement information: groups in groups, and items with values in them.
#pragma once

#include "oxd/library/DataSet.h"

#include <cstdint>
#include <optional>
#include <string>

namespace oxd {

// Refers to a node of a data set, which must outlive it. Copies refer to the same node. Names need not be unique among
// the nodes of a group. Calls throw a LibraryError if the library refuses them.
class MetaNode
{
public:
    static MetaNode Root(const DataSet& dataSet) { return {dataSet, dataSet.Call(GetMetaInfoTreeRootHandle)}; }

    bool IsGroup() const { return m_dataSet->Call(IsMetaInfoItemAGroup, m_node); }
    std::string Name() const { return m_dataSet->Text(GetMetaInfoItemName, m_node); }
    std::string Value() const { return m_dataSet->Text(GetMetaInfoItemValue, m_node); }
    void SetValue(const std::string& value) { m_dataSet->Call(SetMetaInfoItemValue, m_node, value.c_str()); }

    // The calls below are for groups.
    std::uint64_t ChildCount() const { return m_dataSet->Call(GetMetaInfoItemChildCount, m_node); }
    MetaNode AddGroup(const std::string& name) const { return Node(AddMetaInfoItemGroup, name.c_str()); }
    MetaNode AddItem(const std::string& name, const std::string& value) const
    {
        return Node(AddMetaInfoItem, name.c_str(), value.c_str());
    }

    // The first node of that kind and name directly in this group.
    std::optional<MetaNode> FindGroup(const std::string& name) const { return Find(name, true); }
    std::optional<MetaNode> FindItem(const std::string& name) const { return Find(name, false); }

private:
    friend class MetaChildren;

    MetaNode(const DataSet& dataSet, std::uint64_t node) : m_dataSet(&dataSet), m_node(node) {}

    // What a function of the interface gives for this node.
    MetaNode Node(auto function, auto... arguments) const
    {
        return {*m_dataSet, m_dataSet->Call(function, m_node, arguments...)};
    }

    std::optional<MetaNode> Find(const std::string& name, bool group) const;

    const DataSet* m_dataSet;
    std::uint64_t m_node;
};

// Walks through the nodes directly in a group, in their order. None may be added or removed meanwhile.
class MetaChildren
{
public:
    explicit MetaChildren(const MetaNode& group) : m_current(group), m_left(group.ChildCount()) {}

    // The next node, the first one at first; nothing after the last one.
    std::optional<MetaNode> Next();

private:
    MetaNode m_current; // the group itself at first
    std::uint64_t m_left;
    bool m_started = false;
};

} // namespace oxd
