// Notifications of a channel that wait until the channel is complete.
#pragma once

#include <utility>

namespace veltaris::velflexlib::dataset {

// While notifications are held, each kind is only noted, however often it comes up.
// Invariant: nothing is noted unless notifications are held.
// Not thread-safe: guarded by the lock of the CDataBuffer that owns it.
class CHeldNotifications
{
public:
    struct CPending
    {
        bool reshaped = false;
        bool changed = false;
    };

    void Hold() { m_isHeld = true; }

    // Whether not to notify now. If so, it is noted that there is something to notify of.
    bool HoldReshaped() { return HoldBack(m_pending.reshaped); }
    bool HoldChanged() { return HoldBack(m_pending.changed); }

    // Holds no longer. Result: what to notify of now.
    CPending Release()
    {
        m_isHeld = false;
        return std::exchange(m_pending, {});
    }

private:
    bool HoldBack(bool& pending) const
    {
        pending = pending || m_isHeld;
        return m_isHeld;
    }

    bool m_isHeld = false;
    CPending m_pending;
};

} // namespace veltaris::velflexlib::dataset
