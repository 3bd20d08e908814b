// A group of channels, for example those that were recorded in one scan direction.
#pragma once

#include "lumox/sigslot.h"
#include "velflexlib/dataset/channels/Databuffer.h"
#include "velstdlib/util/OptionalMutex.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace veltaris::velflexlib::dataset {

class CDataGroup;

// What a data set does when the signals of its groups are emitted. All groups share one of these instead of being
// connected to it: a file may have very many groups, and connections would take more memory than they do. Its slots may
// be called by any thread.
struct CGroupRelays
{
    std::shared_ptr<const lumox::sigslot_unorderedslots<const std::string&>::slot> nameChanged;
    std::shared_ptr<const lumox::sigslot_unorderedslots<CDataGroup&>::slot> changed;
    std::shared_ptr<const lumox::sigslot_unorderedslots<CDataGroup&, CDataBuffer&, std::size_t>::slot> bufferChanged;
    // Counts changes of names, also those that are not announced; groups outlive their data set.
    std::shared_ptr<std::atomic<std::uint64_t>> renamed = std::make_shared<std::atomic<std::uint64_t>>(0);
};

// A row of channel slots, each empty or filled. Always held by shared pointer: a group lives on while somebody holds
// it, but tells its data set nothing more once that is gone. Invariant: every channel bears the group's name, unless it
// was loaded with a frame name of its own. Every operation may be called from any thread, unless the group is made for
// one thread at a time, which its channels then are, too. One lock guards slots, name and id; it is never held while a
// channel is locked, or while a signal is emitted.
class CDataGroup : public std::enable_shared_from_this<CDataGroup>
{
public:
    lumox::sigslot_unorderedslots<const std::string&> OnNameChanged;
    // Emitted after a slot was filled or emptied, or the number of slots changed.
    lumox::sigslot_unorderedslots<CDataGroup&> OnChanged;
    // Relays the OnChanged of every channel.
    lumox::sigslot_unorderedslots<CDataGroup&, CDataBuffer&, std::size_t> OnBufferChanged;

    // `bitCount` is handed to every channel that the group makes.
    CDataGroup(std::uint32_t logicalGroupId, std::string name, std::size_t slotCount, std::int64_t bitCount,
               velstdlib::util::Sharing sharing = velstdlib::util::Sharing::AnyThread);
    CDataGroup(const CDataGroup&) = delete;
    CDataGroup& operator=(const CDataGroup&) = delete;
    ~CDataGroup() = default;

    // Calls these ahead of the slots of the group's own signals from now on. Must be called before anybody else has the
    // group.
    void ReportTo(std::shared_ptr<const CGroupRelays> relays) { m_relays.swap(relays); }

    std::uint32_t GetLogicalGroupId() const;
    void SetLogicalGroupId(std::uint32_t id);

    std::string GetName() const;
    // Gives every channel of the group this name, too.
    void SetName(const std::string& name);
    // Leaves the channels' names alone, since a file gives each channel a frame name of its own. Emits nothing.
    void SetNameOnly(const std::string& name);

    std::size_t GetChannelCount() const;
    // Drops all channels, unless the count is the current one. Throws std::bad_alloc for more slots than there may be.
    void SetChannelCount(std::uint64_t count);

    // Null for an empty slot and for one that does not exist.
    std::shared_ptr<CDataBuffer> GetChannelBuffer(std::uint64_t index) const;
    // The same without a share in the channel, which must not be dropped meanwhile.
    CDataBuffer* FindChannelBuffer(std::uint64_t index) const;
    // One element for each slot.
    std::vector<std::shared_ptr<CDataBuffer>> GetChannelBuffers() const;
    // Gives the slot a channel of this size, and the group as many slots as that takes. When several threads do so at
    // once for an empty slot, each gets a channel of its own, and the slot keeps the last one.
    std::shared_ptr<CDataBuffer> GetOrCreateChannelBuffer(std::uint64_t index, std::uint64_t points,
                                                          std::uint64_t lines);
    // Throws std::out_of_range "invalid vector<T> subscript" when there is no such slot.
    void DeleteChannelBuffer(std::uint64_t index);

    void PrepareForSave();

private:
    using BufferSlot = lumox::sigslot_unorderedslots<CDataBuffer&, std::size_t>::slot;

    void CountRenaming();
    void AnnounceName(const std::string& name);
    void AnnounceChange();
    void AnnounceBufferChange(CDataBuffer& buffer, std::size_t line);
    std::shared_ptr<const BufferSlot> BufferRelay();
    std::shared_ptr<CDataBuffer> MakeBuffer(std::uint64_t points, std::uint64_t lines);
    void StoreInSlot(std::uint64_t index, std::shared_ptr<CDataBuffer> buffer);

    std::uint32_t m_logicalGroupId;
    std::string m_name;
    std::vector<std::shared_ptr<CDataBuffer>> m_buffers;
    std::shared_ptr<const BufferSlot> m_bufferRelay; // one for all channels, made with the first
    std::shared_ptr<const CGroupRelays> m_relays;
    const std::int64_t m_bitCount;
    mutable velstdlib::util::COptionalMutex m_mutex;
};

} // namespace veltaris::velflexlib::dataset
