// Signals: an object announces a change by emitting one, and every slot connected to it is called. Signals may be used
// by several threads at once. A slot runs on the thread that emits, while its signal is locked: slots that set off
// other signals must do so in one order, or two threads may wait for each other.
#pragma once

#include "lumox/slotstore.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace lumox {

// A function to be called with `Args`.
template <class... Args>
class unordered_slot : public slot_base
{
public:
    explicit unordered_slot(std::function<void(Args...)> function, double slotRank = 0,
                            std::shared_ptr<const audience> audienceBehind = nullptr)
        : slot_base(slotRank, std::move(audienceBehind)), m_function(std::move(function))
    {
    }
    void operator()(Args... args) const { m_function(args...); }

private:
    std::function<void(Args...)> m_function;
};

// A signal whose slots are called with `Args`, in the order that `Store` keeps them in. Its store lives on while a
// connection, a relay or an emission needs it, so that the signal may be destroyed at any time, even by its own slots.
template <class Store, class... Args>
class sigslot_signal
{
public:
    using function = std::function<void(Args...)>;
    using slot = unordered_slot<Args...>;

    sigslot_signal() = default;
    sigslot_signal(const sigslot_signal&) = delete;
    sigslot_signal& operator=(const sigslot_signal&) = delete;
    ~sigslot_signal() = default;

    // Connects a slot, which other signals may share. It is first called by the next emission that begins while no
    // other emission of this signal is under way.
    sigslot_connection connect(std::shared_ptr<const slot> shared)
    {
        const auto& made = store();
        const auto id = made->append(std::move(shared));
        return [store = std::weak_ptr<slotstore>(made), id](Operation operation) {
            const auto alive = store.lock();
            return alive && alive->operate(id, operation);
        };
    }

    sigslot_connection connect(function f, double rank = 0)
    {
        return connect(std::make_shared<const slot>(std::move(f), rank));
    }

    // Calls all active slots. What a slot throws ends the emission and is passed on.
    void emit(Args... args) const
    {
        if (m_hasStore.load(std::memory_order_acquire) && m_store->is_heard())
            emit_on(m_store, args...);
    }

    // The audience of this signal, for slots that relay to it.
    std::shared_ptr<const audience> listeners() const { return store()->listeners(); }

    // A slot that emits this signal, to be connected to others. It does nothing once the signal is gone.
    std::shared_ptr<const slot> relay() const
    {
        const auto pass = [store = std::weak_ptr<slotstore>(store())](Args... args) {
            if (const auto alive = store.lock())
                emit_on(alive, args...);
        };
        return std::make_shared<const slot>(pass, 0, listeners());
    }

private:
    // Made when first needed, as most signals never have a slot, and there are very many of them.
    const std::shared_ptr<slotstore>& store() const
    {
        if (!m_hasStore.load(std::memory_order_acquire)) {
            const std::lock_guard lock(store_creation_mutex());
            if (!m_store)
                m_store = std::make_shared<Store>();
            m_hasStore.store(true, std::memory_order_release);
        }
        return m_store;
    }

    // Takes its own share of the store, so that a slot may destroy the signal.
    static void emit_on(std::shared_ptr<slotstore> alive, // NOLINT(performance-unnecessary-value-param)
                        Args... args)
    {
        slotstore::emission walk(*alive);
        while (const slot_base* next = walk.next())
            (*static_cast<const slot*>(next))(args...);
    }

    mutable std::shared_ptr<slotstore> m_store; // constant once it is there
    mutable std::atomic<bool> m_hasStore = false;
};

template <class... Args>
using sigslot_unorderedslots = sigslot_signal<slotstore, Args...>;

// Slots are called by ascending rank.
template <class... Args>
using sigslot_orderedslots = sigslot_signal<ordered_slotstore, Args...>;

} // namespace lumox
