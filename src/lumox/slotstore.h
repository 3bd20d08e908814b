// The slots of one signal with their states. All that a signal does apart from calling its slots is here, so that it is
// compiled once and not for every list of arguments.
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

// What an emission does with a slot. A new slot is pending, so that the emission under way does not call it.
enum class slot_state : std::uint8_t
{
    active = 0,
    blocked = 1,
    disconnected = 2, // removed by the clean-up of a later emission, so that a walk never loses its position
    pending = 3,      // connected since the last clean-up, which is to come
};

class slot_base;

// Whether anybody listens to a signal, which is asked for every sample that is written and so must be cheap.
//
// A file may have very many buffers. Mostly a buffer's only slot is a relay to its group, and the group's only slot a
// relay to the data set, to which nobody is connected: an emission would run through that chain for nothing and is left
// out. Each signal therefore has an audience, and one that has nothing but one relay refers to the audience behind it:
//   nobody    no slot was ever connected
//   relays    the only slot relays to one or two signals, and somebody listens here when somebody listens there
//   somebody  there is any other slot, or more than one
// It only ever moves down this list, and stays on `somebody` when slots are disconnected: an emission for nobody is a
// waste, but no fault. A chain of relays must not lead back to its start.
//
// is_present() may be called by any thread and takes no lock. A relay's audience is set before the state says that it
// is there, with release and acquire order, and does not change from then on.
class audience
{
public:
    // NOLINTNEXTLINE(misc-no-recursion): goes as deep as relays to two signals follow each other
    bool is_present() const noexcept
    {
        const audience* at = this;
        who here = at->m_here.load(std::memory_order_acquire);
        while (here == who::relays) {
            if (at->m_alsoBehind && at->m_alsoBehind->is_present())
                return true;
            at = at->m_behind.get();
            here = at->m_here.load(std::memory_order_acquire);
        }
        return here == who::somebody;
    }

    // That of a relay to two signals: somebody listens when somebody listens to either.
    static std::shared_ptr<const audience> of_both(std::shared_ptr<const audience> one,
                                                   std::shared_ptr<const audience> other);

    // A slot was connected. Must not be called by two threads at once: the store's lock sees to that.
    void join(const slot_base& slot);

private:
    enum class who : std::uint8_t
    {
        nobody,
        relays,
        somebody,
    };

    std::atomic<who> m_here = who::nobody;
    std::shared_ptr<const audience> m_behind;     // where the relay leads; set once, before m_here says so
    std::shared_ptr<const audience> m_alsoBehind; // where it leads, too; only set together with the first one
};

// A slot without the arguments that it is called with. It does not change, so that any number of signals and threads
// may share one.
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

    const double rank;                            // by which an ordered store sorts
    const std::shared_ptr<const audience> behind; // of a relay, that of the signal it leads to; else null
};

// This store keeps its slots in the order of connection. May be used by several threads at once: every operation locks
// the store, and an emission keeps it locked from its start to its end. The lock is recursive, so that a slot may emit,
// connect and disconnect on the signal that calls it.
//
// Entries are only removed by the outermost emission before it calls any slot, so that no walk ever loses its position.
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
    // What sigslot_connection describes, for the slot of this number. False when it has been removed.
    bool operate(std::uint32_t id, Operation operation);

    std::shared_ptr<const audience> listeners() const { return m_listeners; }
    // Whether an emission may reach anybody. Takes no lock.
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
    // Puts the entries into the order in which they are called.
    virtual void arrange(entry_list&) {}

    void clean_up();
    entry* find(std::uint32_t id);

    boost::recursive_mutex m_mutex; // the standard one leaves memory behind on Windows
    const std::shared_ptr<audience> m_listeners = std::make_shared<audience>();
    entry_list m_entries;
    std::uint32_t m_nextId = 0;
    unsigned m_depth = 0; // of nested emissions
};

// Held while a signal makes its store. It is one for all signals, as that is rare and short.
std::mutex& store_creation_mutex();

// Keeps its slots by ascending rank, those of equal rank in the order of connection.
class ordered_slotstore : public slotstore
{
    void arrange(entry_list& entries) override;
};

// One walk over the slots of a store, which stays locked as long as this lives. Of nested walks only the outermost one
// removes disconnected slots and makes pending ones active.
class slotstore::emission
{
public:
    explicit emission(slotstore& store);
    emission(const emission&) = delete;
    emission& operator=(const emission&) = delete;
    ~emission() { --m_store.m_depth; }

    // The next active slot, or null at the end. Slots that were connected during the walk are pending and passed over.
    const slot_base* next();

private:
    slotstore& m_store;
    std::lock_guard<boost::recursive_mutex> m_lock;
    std::size_t m_position = 0;
};

} // namespace lumox
