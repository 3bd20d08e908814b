#include "api/LastError.h"

#include "VELOxdDll.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

namespace {

// May be used by several threads at once.
class CLastError
{
public:
    // Takes memory for ordinary texts ahead, so that a lack of memory can be reported.
    CLastError()
    {
        m_latest.reserve(4096);
        m_read.reserve(4096);
    }

    void Store(std::string_view text) noexcept
    {
        const std::lock_guard lock(m_mutex);
        m_isPending = true;
        try {
            m_latest.assign(text);
        } catch (const std::bad_alloc&) {
            m_latest.assign(text, 0, m_latest.capacity());
        }
    }

    // The text stays as it is until Read is called after another failure.
    const char* Read()
    {
        const std::lock_guard lock(m_mutex);
        if (m_isPending.exchange(false))
            m_latest.swap(m_read);
        return m_read.c_str();
    }

    bool IsPending() const { return m_isPending; }

private:
    std::mutex m_mutex;
    std::string m_latest; // the caller has `m_read`, so that failures do not change what is being read
    std::string m_read;
    std::atomic<bool> m_isPending = false; // of the latest one, whether it has not been read; set under the lock
};

CLastError lastError;

} // namespace

void StoreLastError(const char* text) noexcept
{
    lastError.Store(text);
}

const char* VELGetLastError()
{
    return lastError.Read();
}

bool VELHasLastError()
{
    return lastError.IsPending();
}
