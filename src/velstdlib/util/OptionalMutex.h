// A mutex for objects that are mostly used by one thread at a time.
#pragma once

#include <cstdint>
#include <mutex>

namespace veltaris::velstdlib::util {

// Who may use an object.
enum class Sharing : std::uint8_t
{
    AnyThread, // any number of threads at once
    OneThread, // one thread at a time: whoever has the object sees to that
};

// Excludes threads from each other if the object that it guards is for any thread, and does nothing otherwise: as soon
// as a program has a second thread, a lock costs more than reading a sample does.
class COptionalMutex
{
public:
    explicit COptionalMutex(Sharing sharing) : m_isUsed(sharing == Sharing::AnyThread) {}
    COptionalMutex(const COptionalMutex&) = delete;
    COptionalMutex& operator=(const COptionalMutex&) = delete;
    ~COptionalMutex() = default;

    // As std::mutex has them.
    void lock()
    {
        if (m_isUsed)
            m_mutex.lock();
    }
    void unlock()
    {
        if (m_isUsed)
            m_mutex.unlock();
    }

    Sharing GetSharing() const { return m_isUsed ? Sharing::AnyThread : Sharing::OneThread; }

private:
    std::mutex m_mutex;
    const bool m_isUsed;
};

} // namespace veltaris::velstdlib::util
