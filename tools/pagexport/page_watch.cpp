#include "tools/pagexport/page_watch.h"

namespace tools {

namespace {

// How long the library may take to notice the flag, on a busy machine.
constexpr std::chrono::seconds grace{5};

} // namespace

void PageWatch::begin(fz_cookie &cookie, Clock::duration limit)
{
    const std::lock_guard lock(m_mutex);
    cookie = fz_cookie{};
    m_cookie = &cookie;
    m_deadline = Clock::now() + limit;
    m_expired = false;
}

PageWatch::Outcome PageWatch::end()
{
    const std::lock_guard lock(m_mutex);
    m_cookie = nullptr;
    if (m_abandoned) {
        return Outcome::abandoned;
    }
    return m_expired ? Outcome::expired : Outcome::inTime;
}

bool PageWatch::check(Clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    if (m_cookie == nullptr || m_abandoned || now < m_deadline) {
        return false;
    }
    if (!m_expired) {
        m_expired = true;
        // The library reads the flag without a lock; that is how it is meant to be set.
        __atomic_store_n(&m_cookie->abort, 1, __ATOMIC_RELAXED);
    }
    m_abandoned = now >= m_deadline + grace;
    return m_abandoned;
}

} // namespace tools
