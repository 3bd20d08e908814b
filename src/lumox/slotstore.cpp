#include "lumox/slotstore.h"

#include <boost/throw_exception.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace lumox {

namespace {

// A disconnected slot only waits for its removal: nothing brings it back.
bool ChangeState(slot_state& state, slot_state newState)
{
    if (state == slot_state::disconnected)
        return newState == slot_state::disconnected;
    state = newState;
    return true;
}

} // namespace

// A second slot, even another relay, counts as somebody: one reference is all there is.
void audience::join(const slot_base& slot)
{
    if (slot.behind && !m_behind) {
        m_behind = slot.behind;
        who nobody = who::nobody;
        m_here.compare_exchange_strong(nobody, who::relays, std::memory_order_release);
    } else {
        m_here.store(who::somebody, std::memory_order_release);
    }
}

std::shared_ptr<const audience> audience::of_both(std::shared_ptr<const audience> one,
                                                  std::shared_ptr<const audience> other)
{
    const auto both = std::make_shared<audience>();
    both->m_behind = std::move(one);
    both->m_alsoBehind = std::move(other);
    both->m_here.store(who::relays, std::memory_order_release);
    return both;
}

std::uint32_t slotstore::append(std::shared_ptr<const slot_base> slot)
{
    const std::lock_guard lock(m_mutex);
    m_entries.push_back({std::move(slot), m_nextId, slot_state::pending});
    m_listeners->join(*m_entries.back().slot);
    return m_nextId++;
}

bool slotstore::operate(std::uint32_t id, Operation operation)
{
    const std::lock_guard lock(m_mutex);
    entry* const found = find(id);
    switch (operation) {
    case Operation::IsConnected:
        return found && found->state != slot_state::disconnected;
    case Operation::Disconnect:
        return found && ChangeState(found->state, slot_state::disconnected);
    case Operation::Block:
        return found && ChangeState(found->state, slot_state::blocked);
    case Operation::Unblock:
        return found && ChangeState(found->state, slot_state::active);
    case Operation::IsBlocked:
        return found && found->state == slot_state::blocked;
    case Operation::IsPending:
        return found && found->state == slot_state::pending;
    }
    BOOST_THROW_EXCEPTION(std::runtime_error("Invalid connection operation"));
}

void slotstore::clean_up()
{
    const auto isDisconnected = [](const entry& e) { return e.state == slot_state::disconnected; };
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), isDisconnected), m_entries.end());
    for (entry& e : m_entries) {
        if (e.state == slot_state::pending)
            e.state = slot_state::active;
    }
    arrange(m_entries);
}

slotstore::entry* slotstore::find(std::uint32_t id)
{
    const auto found = std::ranges::find(m_entries, id, &entry::id);
    return found == m_entries.end() ? nullptr : &*found;
}

std::mutex& store_creation_mutex()
{
    static std::mutex mutex;
    return mutex;
}

void ordered_slotstore::arrange(entry_list& entries)
{
    std::ranges::stable_sort(entries, {}, [](const entry& e) { return e.slot->rank; });
}

slotstore::emission::emission(slotstore& store) : m_store(store), m_lock(store.m_mutex)
{
    if (m_store.m_depth++ == 0)
        m_store.clean_up();
}

const slot_base* slotstore::emission::next()
{
    while (m_position < m_store.m_entries.size()) {
        const entry& e = m_store.m_entries[m_position++];
        if (e.state == slot_state::active)
            return e.slot.get();
    }
    return nullptr;
}

} // namespace lumox
