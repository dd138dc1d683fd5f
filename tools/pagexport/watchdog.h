#pragma once

#include <mupdf/fitz.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace tools {

/// Ends work on a page that runs past its time, by the library's abort flag. One thread watches
/// over all workers.
class Watchdog
{
public:
    using Milliseconds = std::chrono::milliseconds;

    explicit Watchdog(std::size_t workers);
    ~Watchdog();
    Watchdog(const Watchdog &) = delete;
    Watchdog &operator=(const Watchdog &) = delete;

    /// Starts the time of @p worker. @p cookie is cleared; it must live until end().
    void begin(std::size_t worker, fz_cookie &cookie, Milliseconds limit);
    /// Stops the time. @return true when the work was ended early
    bool end(std::size_t worker);

private:
    struct Slot
    {
        std::mutex mutex;
        fz_cookie *cookie = nullptr;
        bool expired = false;
        int ticksLeft = 0;
    };

    void watch();
    void tick();

    std::vector<Slot> m_slots;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stops = false;
    std::thread m_thread;
};

} // namespace tools
