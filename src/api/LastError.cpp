#include "api/LastError.h"

#include "VELOxdDll.h"

#include <cstring>
#include <new>
#include <string>
#include <string_view>

namespace {

class CLastError
{
public:
    // Takes memory for ordinary texts ahead, so that a lack of memory can be reported.
    CLastError() { m_text.reserve(4096); }

    void Store(std::string_view text) noexcept
    {
        m_pending = true;
        try {
            m_text.assign(text);
        } catch (const std::bad_alloc&) {
            m_text.assign(text, 0, m_text.capacity());
        }
    }

    const char* Read()
    {
        m_pending = false;
        return m_text.c_str();
    }

    bool IsPending() const { return m_pending; }

private:
    std::string m_text;
    bool m_pending = false;
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
