// The content of one measurement file.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/channels/DataGroup.h"
#include "velflexlib/dataset/information/InfoSet.h"
#include "velflexlib/dataset/processors/ProcessorSet.h"
#include "velflexlib/dataset/views/ViewSet.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

// Groups by id. Every operation may be called from any thread; signals are emitted without the data set's lock, and
// no group is locked while it is held. A group and its channels live on while someone outside holds them.
class CDataSet
{
public:
    static constexpr std::uint64_t invalidGroupId = ~std::uint64_t{0};

    // Emitted after groups were created or deleted.
    lumox::sigslot_unorderedslots<> OnChanged;
    // These relay the signals of every group.
    lumox::sigslot_unorderedslots<const std::string&> OnGroupNameChanged;
    lumox::sigslot_unorderedslots<CDataGroup&> OnGroupChanged;
    lumox::sigslot_unorderedslots<CDataGroup&, CDataBuffer&, std::size_t> OnBufferChanged;

    CDataSet() = default;
    CDataSet(const CDataSet&) = delete;
    CDataSet& operator=(const CDataSet&) = delete;
    ~CDataSet() = default;

    // Result: the id, which is the smallest number from 0 that is free. An empty name becomes "Group" and the id. Of
    // threads that do so at once two may find the same id: the later group replaces the earlier one then.
    int CreateGroup(const std::string& name, std::int64_t bitCount);
    // Stores a group under the given id, in place of one that has it; without a logical id it takes the next one, and
    // only if nothing fails. For loading.
    std::shared_ptr<CDataGroup> InsertGroup(std::uint64_t id, std::optional<std::uint32_t> logicalGroupId,
                                            const std::string& name, std::size_t slotCount, std::int64_t bitCount);
    // False when there is no such group; the invalid id counts as deleted.
    bool DeleteGroup(std::uint64_t id);
    void DeleteAllGroups();

    // These are not guarded by the data set's lock.
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

    // The running number of new groups, from 256 on.
    std::uint32_t TakeLogicalGroupId();
    // Makes the running number continue behind a logical id that came from a file.
    void ReserveLogicalGroupId(std::uint32_t id);

    void PrepareForSave();

    // Whether groups were created or deleted since the data set was loaded or saved.
    bool IsModified() const;
    void SetModified(bool modified);

private:
    std::uint64_t FindFreeId();

    const std::shared_ptr<const CGroupRelays> m_relays = std::make_shared<const CGroupRelays>(
        CGroupRelays{OnGroupNameChanged.relay(), OnGroupChanged.relay(), OnBufferChanged.relay()});
    bool m_modified = false;
    std::uint32_t m_nextLogicalGroupId = firstLogicalGroupId;
    CInfoSet m_infoSet;
    CViewSet m_viewSet;
    CProcessorSet m_processorSet;
    std::map<std::uint64_t, std::shared_ptr<CDataGroup>> m_groups;
    std::uint64_t m_lowestFreeId = 0; // no id below it is free
    mutable std::mutex m_mutex;

    static constexpr std::uint32_t firstLogicalGroupId = 256;
};

} // namespace veltaris::velflexlib::dataset
