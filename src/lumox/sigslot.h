// Signals: an object announces a change by emitting one, and every slot connected to it is called.
#pragma once

#include "lumox/slotstore.h"

#include <functional>
#include <memory>
#include <utility>

namespace lumox {

template <class... Args>
class unordered_slot : public slot_base
{
public:
    explicit unordered_slot(std::function<void(Args...)> function) : m_function(std::move(function)) {}
    void operator()(Args... args) const { m_function(args...); }

private:
    std::function<void(Args...)> m_function;
};

// A signal whose slots are called with `Args`, in the order that `Store` keeps them in.
template <class Store, class... Args>
class sigslot_signal
{
public:
    using function = std::function<void(Args...)>;

    sigslot_signal() = default;
    sigslot_signal(const sigslot_signal&) = delete;
    sigslot_signal& operator=(const sigslot_signal&) = delete;
    ~sigslot_signal() = default;

    // The slot is first called by the next emission that begins while no other of this signal is under way.
    sigslot_connection connect(function f, double rank = 0)
    {
        const auto id = m_store->append(std::make_unique<unordered_slot<Args...>>(std::move(f)), rank);
        return [store = std::weak_ptr<slotstore>(m_store), id](Operation operation) {
            const auto alive = store.lock();
            return alive && alive->operate(id, operation);
        };
    }

    void emit(Args... args) const { emit_on(m_store, args...); }

    // A function that emits this signal, and does nothing once the signal is gone: for slots of other signals.
    function relay() const
    {
        return [store = std::weak_ptr<slotstore>(m_store)](Args... args) {
            if (const auto alive = store.lock())
                emit_on(alive, args...);
        };
    }

private:
    // Takes its own share of the store, so that a slot may destroy the signal.
    static void emit_on(const std::shared_ptr<slotstore> store, Args... args)
    {
        slotstore::emission walk(*store);
        while (const slot_base* slot = walk.next())
            (*static_cast<const unordered_slot<Args...>*>(slot))(args...);
    }

    std::shared_ptr<slotstore> m_store = std::make_shared<Store>();
};

template <class... Args>
using sigslot_unorderedslots = sigslot_signal<slotstore, Args...>;

// Slots are called by ascending rank.
template <class... Args>
using sigslot_orderedslots = sigslot_signal<ordered_slotstore, Args...>;

} // namespace lumox
