// The content of one measurement file.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/GroupNames.h"
#include "velflexlib/dataset/channels/DataGroup.h"
#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/processors/ProcessorSet.h"
#include "velflexlib/dataset/views/ViewSet.h"
#include "velstdlib/util/OptionalMutex.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Groups by id, the meta-information, and the views and processors that the file lists. A group and its channels live
// on while someone outside holds them.
// Invariants: no id below m_lowestFreeId is free, and no logical id that was taken or reserved is given out again
// before all groups are deleted. Every operation may be called from any thread, unless the data set is made for one
// thread at a time, which its groups and channels then are, too. One lock guards the groups, ids, the index of names
// and the modified flag; while it is held no signal is emitted and no group is locked.
class CDataSet
{
public:
    static constexpr std::uint64_t invalidGroupId = ~std::uint64_t{0};

    // Emitted after groups were created or deleted.
    lumox::sigslot_unorderedslots<> OnChanged;
    // These are emitted with the signals of every group, before the slots of the group's own signal are called.
    lumox::sigslot_unorderedslots<const std::string&> OnGroupNameChanged;
    lumox::sigslot_unorderedslots<CDataGroup&> OnGroupChanged;
    lumox::sigslot_unorderedslots<CDataGroup&, CDataBuffer&, std::size_t> OnBufferChanged;

    explicit CDataSet(velstdlib::util::Sharing sharing = velstdlib::util::Sharing::AnyThread) : m_mutex(sharing) {}
    CDataSet(const CDataSet&) = delete;
    CDataSet& operator=(const CDataSet&) = delete;
    ~CDataSet() = default;

    // Returns the id, which is the smallest free number. An empty name becomes "Group" and the id. Two threads that
    // create groups at once may find the same id; then the later group replaces the earlier one.
    int CreateGroup(const std::string& name, std::int64_t bitCount);
    // For loading: stores a group under the given id and replaces a group that has it. Without a logical id the group
    // takes the next one, but only if nothing fails.
    std::shared_ptr<CDataGroup> InsertGroup(std::uint64_t id, std::optional<std::uint32_t> logicalGroupId,
                                            const std::string& name, std::size_t slotCount, std::int64_t bitCount);
    // Returns false when there is no such group. The invalid id counts as deleted.
    bool DeleteGroup(std::uint64_t id);
    void DeleteAllGroups();

    // These parts are not thread-safe: the data set's lock does not guard them.
    CInfoSet& GetInfoSet() { return m_infoSet; }
    const CInfoSet& GetInfoSet() const { return m_infoSet; }
    CViewSet& GetViewSet() { return m_viewSet; }
    CProcessorSet& GetProcessorSet() { return m_processorSet; }

    std::size_t GetGroupCount() const;
    // In ascending order, like the groups.
    std::vector<int> GetAllGroupIds() const;
    std::vector<std::shared_ptr<CDataGroup>> GetAllGroups() const;
    // The first group of exactly this name, or -1.
    int GetGroupId(const std::string& name) const;
    // Null when there is no such group.
    std::shared_ptr<CDataGroup> GetGroup(std::uint64_t id) const;
    // The same without a share in the group, which must not be deleted meanwhile.
    CDataGroup* FindGroup(std::uint64_t id) const;

    // The next logical id for a new group; they begin at 256.
    std::uint32_t TakeLogicalGroupId();
    // Makes the logical ids of new groups continue behind one that came from a file.
    void ReserveLogicalGroupId(std::uint32_t id);

    void PrepareForSave();

    // Whether groups were created or deleted since the data set was loaded or saved.
    bool IsModified() const;
    void SetModified(bool modified);

private:
    std::uint64_t FindFreeId();
    int SearchGroupId(const std::string& name) const;
    int IndexGroupNames(const std::string& name, std::uint64_t state) const;

    const std::shared_ptr<const CGroupRelays> m_relays = std::make_shared<const CGroupRelays>(
        CGroupRelays{OnGroupNameChanged.relay(), OnGroupChanged.relay(), OnBufferChanged.relay()});
    bool m_modified = false;
    std::uint32_t m_nextLogicalGroupId = firstLogicalGroupId;
    CInfoSet m_infoSet;
    CViewSet m_viewSet;
    CProcessorSet m_processorSet;
    std::map<std::uint64_t, std::shared_ptr<CDataGroup>> m_groups;
    std::uint64_t m_lowestFreeId = 0; // a lower bound, from which the search for a free id starts
    mutable CGroupNames m_names;
    mutable velstdlib::util::COptionalMutex m_mutex;

    static constexpr std::uint32_t firstLogicalGroupId = 256;
};

} // namespace veltaris::velflexlib::dataset
