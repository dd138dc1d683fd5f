#include "tools/pagexport/watchdog.h"

namespace tools {

namespace {

constexpr Watchdog::Milliseconds tickLength{50};

} // namespace

Watchdog::Watchdog(std::size_t workers) : m_slots(workers), m_thread([this] { watch(); }) {}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stops = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void Watchdog::begin(std::size_t worker, fz_cookie &cookie, Milliseconds limit)
{
    Slot &slot = m_slots[worker];
    const std::lock_guard lock(slot.mutex);
    cookie = fz_cookie{};
    slot.cookie = &cookie;
    slot.expired = false;
    slot.ticksLeft = static_cast<int>(limit / tickLength) + 1;
}

bool Watchdog::end(std::size_t worker)
{
    Slot &slot = m_slots[worker];
    const std::lock_guard lock(slot.mutex);
    slot.cookie = nullptr;
    return slot.expired;
}

void Watchdog::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, tickLength, [this] { return m_stops; })) {
        tick();
    }
}

void Watchdog::tick()
{
    for (Slot &slot : m_slots) {
        const std::lock_guard lock(slot.mutex);
        if (slot.cookie != nullptr && --slot.ticksLeft <= 0) {
            slot.expired = true;
            // The library reads the flag without a lock; that is how it is meant to be set.
            __atomic_store_n(&slot.cookie->abort, 1, __ATOMIC_RELAXED);
        }
    }
}

} // namespace tools
