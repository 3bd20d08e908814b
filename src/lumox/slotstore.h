// The slots of one signal with their states. All that a signal does apart from calling its slots is here.
#pragma once

#include "lumox/sigslot_connection.h"

#include <boost/container/small_vector.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

namespace lumox {

enum class slot_state : std::uint8_t
{
    active = 0,
    blocked = 1,
    disconnected = 2, // removed by the clean-up of a later emission, so that a walk never loses its position
    pending = 3,      // connected since the last clean-up, which is to come
};

class slot_base;

// Whether a signal has slots, apart from relays to signals that have none. Read without a lock: it may be asked at
// every sample that is written. It never turns back to false.
class audience
{
public:
    bool is_present() const noexcept
    {
        const audience* at = this;
        who here = at->m_here.load(std::memory_order_acquire);
        while (here == who::a_relay) {
            at = at->m_behind.get();
            here = at->m_here.load(std::memory_order_acquire);
        }
        return here == who::somebody;
    }

    // Not to be called by two threads at once.
    void join(const slot_base& slot);

private:
    enum class who : std::uint8_t
    {
        nobody,
        a_relay,
        somebody,
    };

    std::atomic<who> m_here = who::nobody;
    std::shared_ptr<const audience> m_behind; // the relay's: set once, before the relay is here
};

// A slot without the arguments that it is called with. An ordered store goes by its rank. A relay to another signal
// names the audience of that, and is not called as long as there is none.
class slot_base
{
public:
    explicit slot_base(double slotRank, std::shared_ptr<const audience> audienceBehind = nullptr)
        : rank(slotRank), behind(std::move(audienceBehind))
    {
    }
    slot_base(const slot_base&) = delete;
    slot_base& operator=(const slot_base&) = delete;
    virtual ~slot_base() = default;

    const double rank;
    const std::shared_ptr<const audience> behind;
};

// Every operation locks the store; an emission keeps it locked throughout, and the lock is recursive: a slot may
// emit, connect and disconnect on the signal that calls it. This store keeps its slots in the order of connection.
class slotstore
{
public:
    class emission;

    slotstore() = default;
    slotstore(const slotstore&) = delete;
    slotstore& operator=(const slotstore&) = delete;
    virtual ~slotstore() = default;

    // Takes the slot in as pending and returns the number that identifies it here.
    std::uint32_t append(std::shared_ptr<const slot_base> slot);
    bool operate(std::uint32_t id, Operation operation);

    std::shared_ptr<const audience> listeners() const { return m_listeners; }
    // Whether an emission would reach anybody.
    bool is_heard() const noexcept { return m_listeners->is_present(); }

protected:
    struct entry
    {
        std::shared_ptr<const slot_base> slot;
        std::uint32_t id;
        slot_state state;
    };

    // Most signals have one slot, which needs no memory of its own here: a file may have very many groups.
    using entry_list = boost::container::small_vector<entry, 1>;

private:
    virtual void arrange(entry_list&) {}

    void clean_up();
    entry* find(std::uint32_t id);

    boost::recursive_mutex m_mutex; // the standard one leaves memory behind on Windows
    const std::shared_ptr<audience> m_listeners = std::make_shared<audience>();
    entry_list m_entries;
    std::uint32_t m_nextId = 0;
    unsigned m_depth = 0; // of nested emissions
};

// Held while a signal makes its store. One for all signals: that is rare and short.
std::mutex& store_creation_mutex();

// Keeps its slots by ascending rank, those of equal rank in the order of connection.
class ordered_slotstore : public slotstore
{
    void arrange(entry_list& entries) override;
};

// One walk over the slots of a store, which stays locked as long as this lives. Only the outermost walk cleans up.
class slotstore::emission
{
public:
    explicit emission(slotstore& store);
    emission(const emission&) = delete;
    emission& operator=(const emission&) = delete;
    ~emission() { --m_store.m_depth; }

    // The next active slot, or null at the end. Slots connected during the walk are pending, hence passed over.
    const slot_base* next();

private:
    slotstore& m_store;
    std::lock_guard<boost::recursive_mutex> m_lock;
    std::size_t m_position = 0;
};

} // namespace lumox
