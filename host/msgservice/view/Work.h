// Long work that can be watched and broken off from another thread.
#pragma once

#include <atomic>
#include <cstddef>

namespace msgservice
{

// Thrown out of work that was broken off.
struct Cancelled
{
};

class Work
{
public:
    // Any thread. The work ends with Cancelled soon after.
    void Cancel() { m_cancelled = true; }

    // Any thread: how much is done, 0 to 1, and never less than before.
    double Progress() const { return m_progress; }

    // The working thread, every few thousand steps. `done` of `all` steps of the part of the work that lies
    // between the two shares of the whole.
    void Check(std::size_t done, std::size_t all, double from, double to)
    {
        if (m_cancelled.load(std::memory_order_relaxed))
            throw Cancelled();
        const double progress =
            all > 0 ? from + (to - from) * static_cast<double>(done) / static_cast<double>(all) : 0;
        if (progress > m_progress.load(std::memory_order_relaxed))
            m_progress.store(progress, std::memory_order_relaxed);
    }

private:
    std::atomic<bool> m_cancelled = false;
    std::atomic<double> m_progress = 0;
};

} // namespace msgservice
