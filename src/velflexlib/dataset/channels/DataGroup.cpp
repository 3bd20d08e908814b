#include "velflexlib/dataset/channels/DataGroup.h"

#include "velstdlib/util/ContainerHelper.h"
#include "velstdlib/util/Limits.h"

#include <algorithm>
#include <new>
#include <utility>

namespace veltaris::velflexlib::dataset {

namespace {

void CheckSlotCount(std::uint64_t count)
{
    if (count > velstdlib::util::limits::channelSlots)
        throw std::bad_alloc();
}

} // namespace

CDataGroup::CDataGroup(std::uint32_t logicalGroupId, std::string name, std::size_t slotCount, std::int64_t bitCount,
                       velstdlib::util::Sharing sharing)
    : m_logicalGroupId(logicalGroupId), m_name(std::move(name)), m_buffers(slotCount), m_bitCount(bitCount),
      m_mutex(sharing)
{
}

// The relays come first, as if they had been connected before anybody else's slots.

void CDataGroup::AnnounceName(const std::string& name)
{
    if (m_relays)
        (*m_relays->nameChanged)(name);
    OnNameChanged.emit(name);
}

void CDataGroup::AnnounceChange()
{
    if (m_relays)
        (*m_relays->changed)(*this);
    OnChanged.emit(*this);
}

void CDataGroup::AnnounceBufferChange(CDataBuffer& buffer, std::size_t line)
{
    if (m_relays)
        (*m_relays->bufferChanged)(*this, buffer, line);
    OnBufferChanged.emit(*this, buffer, line);
}

std::uint32_t CDataGroup::GetLogicalGroupId() const
{
    const std::lock_guard lock(m_mutex);
    return m_logicalGroupId;
}

void CDataGroup::SetLogicalGroupId(std::uint32_t id)
{
    const std::lock_guard lock(m_mutex);
    m_logicalGroupId = id;
}

std::string CDataGroup::GetName() const
{
    const std::lock_guard lock(m_mutex);
    return m_name;
}

void CDataGroup::SetName(const std::string& name)
{
    std::vector<std::shared_ptr<CDataBuffer>> buffers;
    std::vector<std::string> copies; // made ahead, so that either all are renamed or none
    {
        const std::lock_guard lock(m_mutex);
        if (m_name == name)
            return;
        buffers = m_buffers;
        std::erase(buffers, nullptr);
        copies.assign(buffers.size() + 1, name);
        m_name.swap(copies.back());
        CountRenaming();
    }
    for (std::size_t i = 0; i < buffers.size(); ++i)
        buffers[i]->SetGroupName(std::move(copies[i]));
    AnnounceName(name);
}

void CDataGroup::SetNameOnly(const std::string& name)
{
    const std::lock_guard lock(m_mutex);
    m_name = name;
    CountRenaming();
}

void CDataGroup::CountRenaming()
{
    if (m_relays)
        ++*m_relays->renamed;
}

std::size_t CDataGroup::GetChannelCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_buffers.size();
}

void CDataGroup::SetChannelCount(std::uint64_t count)
{
    CheckSlotCount(count);
    std::vector<std::shared_ptr<CDataBuffer>> slots;
    {
        const std::lock_guard lock(m_mutex);
        if (count == m_buffers.size())
            return;
        slots.resize(count);
        m_buffers.swap(slots);
    }
    AnnounceChange();
}

std::shared_ptr<CDataBuffer> CDataGroup::GetChannelBuffer(std::uint64_t index) const
{
    const std::lock_guard lock(m_mutex);
    return index < m_buffers.size() ? m_buffers[index] : nullptr;
}

CDataBuffer* CDataGroup::FindChannelBuffer(std::uint64_t index) const
{
    const std::lock_guard lock(m_mutex);
    return index < m_buffers.size() ? m_buffers[index].get() : nullptr;
}

std::vector<std::shared_ptr<CDataBuffer>> CDataGroup::GetChannelBuffers() const
{
    const std::lock_guard lock(m_mutex);
    return m_buffers;
}

std::shared_ptr<CDataBuffer> CDataGroup::GetOrCreateChannelBuffer(std::uint64_t index, std::uint64_t points,
                                                                  std::uint64_t lines)
{
    if (auto existing = GetChannelBuffer(index)) {
        existing->SetXYDimension(points, lines);
        return existing;
    }
    auto buffer = MakeBuffer(points, lines);
    StoreInSlot(index, buffer);
    AnnounceChange();
    return buffer;
}

std::shared_ptr<CDataBuffer> CDataGroup::MakeBuffer(std::uint64_t points, std::uint64_t lines)
{
    auto buffer = std::make_shared<CDataBuffer>(m_bitCount, points, lines, m_mutex.GetSharing());
    buffer->SetGroupName(GetName());
    buffer->OnChanged.connect(BufferRelay());
    return buffer;
}

auto CDataGroup::BufferRelay() -> std::shared_ptr<const BufferSlot>
{
    const std::lock_guard lock(m_mutex);
    if (!m_bufferRelay) {
        const auto pass = [weak = weak_from_this()](CDataBuffer& changed, std::size_t line) {
            if (const auto group = weak.lock())
                group->AnnounceBufferChange(changed, line);
        };
        auto listeners = OnBufferChanged.listeners();
        if (m_relays)
            listeners = lumox::audience::of_both(std::move(listeners), m_relays->bufferChanged->behind);
        m_bufferRelay = std::make_shared<BufferSlot>(pass, 0, std::move(listeners));
    }
    return m_bufferRelay;
}

void CDataGroup::StoreInSlot(std::uint64_t index, std::shared_ptr<CDataBuffer> buffer)
{
    const std::lock_guard lock(m_mutex);
    if (index >= m_buffers.size()) {
        CheckSlotCount(std::max(index, index + 1)); // the last of all numbers has no next one
        m_buffers.resize(index + 1);
    }
    m_buffers[index].swap(buffer);
}

void CDataGroup::DeleteChannelBuffer(std::uint64_t index)
{
    std::shared_ptr<CDataBuffer> dropped;
    {
        const std::lock_guard lock(m_mutex);
        velstdlib::util::CheckedAt(m_buffers, index).swap(dropped);
    }
    AnnounceChange();
}

void CDataGroup::PrepareForSave()
{
    for (const auto& buffer : GetChannelBuffers()) {
        if (buffer)
            buffer->PrepareForSave();
    }
}

} // namespace veltaris::velflexlib::dataset
