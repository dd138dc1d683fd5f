#include "tools/pagexport/pages/page_watch.h"

#include <pthread.h>

#include <algorithm>

namespace tools {

namespace {

// How long the library may take to notice the flag.
constexpr std::chrono::seconds grace{1};
constexpr int wallFactor = 20;
// So long a thread may wait for its turn on a busy machine; short limits are of processor time
// only.
constexpr std::chrono::seconds mostWaiting{1};

PageWatch::Duration timeOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

bool findOwnClock(clockid_t &clock)
{
#ifdef __linux__
    return pthread_getcpuclockid(pthread_self(), &clock) == 0;
#else
    static_cast<void>(clock);
    return false;
#endif
}

} // namespace

void PageWatch::begin(fz_cookie &cookie, Duration limit)
{
    const std::lock_guard lock(m_mutex);
    m_hasClock = m_hasClock || findOwnClock(m_clock);
    cookie = fz_cookie{};
    m_cookie = &cookie;
    m_limit = limit;
    m_wallStart = timeOf(CLOCK_MONOTONIC);
    m_processorStart = m_hasClock ? timeOf(m_clock) : Duration{};
    m_expired = false;
}

PageWatch::Outcome PageWatch::end()
{
    const std::lock_guard lock(m_mutex);
    m_cookie = nullptr;
    m_lastUsed = used();
    if (m_abandoned) {
        return Outcome::abandoned;
    }
    return m_expired ? Outcome::expired : Outcome::inTime;
}

PageWatch::Duration PageWatch::lastUsed()
{
    const std::lock_guard lock(m_mutex);
    return m_lastUsed;
}

PageWatch::Duration PageWatch::used() const noexcept
{
    const Duration wall = timeOf(CLOCK_MONOTONIC) - m_wallStart;
    if (!m_hasClock) {
        return wall;
    }
    const Duration byWall = wall > mostWaiting ? wall / wallFactor : Duration::zero();
    return std::max(timeOf(m_clock) - m_processorStart, byWall);
}

bool PageWatch::check()
{
    const std::lock_guard lock(m_mutex);
    if (m_cookie == nullptr || m_abandoned) {
        return false;
    }
    const Duration time = used();
    if (time >= m_limit && !m_expired) {
        m_expired = true;
        // The library reads the flag without a lock; that is how it is meant to be set.
        __atomic_store_n(&m_cookie->abort, 1, __ATOMIC_RELAXED);
    }
    m_abandoned = time >= m_limit + grace;
    m_lastUsed = time;
    return m_abandoned;
}

} // namespace tools
