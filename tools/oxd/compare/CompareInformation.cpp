#include "oxd/compare/CompareInformation.h"

#include "oxd/compare/Pairs.h"
#include "oxd/library/MetaNode.h"

#include <algorithm>

namespace oxd {

namespace {

struct Child
{
    MetaNode node;
    std::string name;
    bool isGroup;
};

struct GroupPair
{
    MetaNode a;
    MetaNode b;
    std::string name;
};

std::vector<Child> ChildrenOf(const MetaNode& group)
{
    std::vector<Child> children;
    MetaChildren rest(group);
    for (auto child = rest.Next(); child; child = rest.Next()) {
        children.push_back({*child, child->Name(), child->IsGroup()});
    }
    return children;
}

// What nodes are paired by: an item is never paired with a group.
std::vector<std::string> Keys(const std::vector<Child>& children)
{
    std::vector<std::string> keys;
    std::transform(children.begin(), children.end(), std::back_inserter(keys),
                   [](const Child& child) { return (child.isGroup ? "group " : "item ") + child.name; });
    return keys;
}

const char* KindOf(const Child& child)
{
    return child.isGroup ? "group" : "item";
}

// A group has no value.
std::string ValueOf(const Child& child)
{
    return child.isGroup ? std::string() : child.node.Value();
}

// Walks through both trees at once. The groups that lead to the current ones are on a stack made here, because a file
// may nest groups deeper than calls can be nested.
class InformationComparison
{
public:
    explicit InformationComparison(Recorder& recorder) : m_recorder(recorder) {}

    void Run(const DataSet& a, const DataSet& b)
    {
        std::vector<std::vector<GroupPair>> pending{CompareChildren(MetaNode::Root(a), MetaNode::Root(b))};
        while (!pending.empty()) {
            if (pending.back().empty()) {
                pending.pop_back();
                m_place.path.resize(pending.empty() ? 0 : pending.size() - 1);
                continue;
            }
            const GroupPair next = std::move(pending.back().back());
            pending.back().pop_back();
            m_place.path.push_back(next.name);
            pending.push_back(CompareChildren(next.a, next.b));
        }
    }

private:
    // Gives the groups that both have, the last one first.
    std::vector<GroupPair> CompareChildren(const MetaNode& a, const MetaNode& b)
    {
        const std::vector<Child> ofA = ChildrenOf(a);
        const std::vector<Child> ofB = ChildrenOf(b);
        std::vector<GroupPair> common;
        for (const Pair& pair : PairByName(Keys(ofA), Keys(ofB))) {
            if (pair.a && pair.b) {
                const Child& first = ofA[*pair.a];
                const Child& second = ofB[*pair.b];
                Compare("value", first, ValueOf(first), ValueOf(second));
                if (first.isGroup) {
                    common.push_back({first.node, second.node, first.name});
                }
            } else if (pair.a) {
                const Child& only = ofA[*pair.a];
                Compare(KindOf(only), only, ValueOf(only), {});
            } else if (pair.b) {
                const Child& only = ofB[*pair.b];
                Compare(KindOf(only), only, {}, ValueOf(only));
            }
        }
        return {std::make_move_iterator(common.rbegin()), std::make_move_iterator(common.rend())};
    }

    void Compare(const char* what, const Child& any, Content a, Content b)
    {
        m_place.path.push_back(any.name);
        m_recorder.Compare(Aspect::Information, what, m_place, std::move(a), std::move(b));
        m_place.path.pop_back();
    }

    Recorder& m_recorder;
    Place m_place; // of the current groups
};

} // namespace

void CompareInformation(const DataSet& a, const DataSet& b, Recorder& recorder)
{
    if (recorder.Wants(Aspect::Information)) {
        InformationComparison(recorder).Run(a, b);
    }
}

} // namespace oxd
