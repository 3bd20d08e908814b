// The nodes of the information that stand beside each other: those of one group, or the top-level ones.
#pragma once

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CInfoSetItem;

// Owns its nodes, and finds each at once: by its position, by its name, and from the node its position. What that
// takes beside the nodes is made when it is first asked for; small rows do without.
class CInfoSiblings
{
public:
    // Which nodes are found by name, and how.
    enum class Names
    {
        OfItems,  // exactly; groups are not found
        OfGroups, // without regard to ASCII case
    };

    explicit CInfoSiblings(Names names);
    CInfoSiblings(const CInfoSiblings&) = delete;
    CInfoSiblings& operator=(const CInfoSiblings&) = delete;
    ~CInfoSiblings();

    const std::vector<std::unique_ptr<CInfoSetItem>>& All() const { return m_nodes; }

    // Positions must be those of nodes, for Insert also the one behind the last.
    void Insert(std::unique_ptr<CInfoSetItem> node, std::size_t place);
    void Erase(std::size_t place);
    void Move(std::size_t from, std::size_t to);
    void EraseItems(); // leaves groups
    void Clear();
    void DestroyLast() { m_nodes.pop_back(); } // of a row that is being taken apart

    // `node` must be one of these.
    std::size_t PlaceOf(const CInfoSetItem& node) const;
    CInfoSetItem* Next(const CInfoSetItem& node) const; // null behind the last one
    void Rename(CInfoSetItem& node, std::string name);

    // The first one of this name, or null.
    CInfoSetItem* Find(std::string_view name) const;

    // Items, that is nodes that are no groups, by position among themselves.
    std::size_t ItemCount() const { return m_nodes.size() - m_groupCount; }
    CInfoSetItem* Item(std::size_t index) const; // null when there is none such
    std::size_t ItemIndexOf(const CInfoSetItem& item) const;

private:
    // The first node of a name, and how many there are.
    struct Named
    {
        mutable CInfoSetItem* first;
        mutable std::size_t count;
    };

    struct NameOf
    {
        using is_transparent = void;
        static std::string_view Of(const Named& named);
        static std::string_view Of(std::string_view name) { return name; }
    };
    struct Hash : NameOf
    {
        std::size_t operator()(const auto& name) const;
    };
    struct Equal : NameOf
    {
        Names names;
        bool operator()(const auto& a, const auto& b) const;
    };
    using Index = boost::unordered_flat_set<Named, Hash, Equal>;

    bool IsFound(const CInfoSetItem& node) const;
    bool HasName(const CInfoSetItem& node, std::string_view name) const;
    CInfoSetItem* Search(std::string_view name, std::size_t from) const;
    void MakeIndex() const;
    void TakeUp(CInfoSetItem& node) noexcept;
    void TakeUpName(CInfoSetItem& node) noexcept;
    void AddName(CInfoSetItem& node) const;
    void RemoveName(const CInfoSetItem& node);
    void Renumber() const;
    const std::vector<std::uint32_t>& ItemPlaces() const;

    std::vector<std::unique_ptr<CInfoSetItem>> m_nodes;
    std::size_t m_groupCount = 0;
    // How far a node may be from where it was last seen: towards the start and towards the end.
    mutable std::size_t m_erased = 0;
    mutable std::size_t m_inserted = 0;
    mutable std::unique_ptr<Index> m_index;
    mutable std::unique_ptr<std::vector<std::uint32_t>> m_itemPlaces; // where items stand among groups
    Names m_names;
};

} // namespace veltaris::velflexlib::dataset
