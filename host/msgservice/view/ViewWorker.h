// The thread that makes views.
#pragma once

#include "msgservice/view/View.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace msgservice
{

// Makes one view at a time; to start another breaks off the one before. All operations are for one thread,
// the owner's.
class ViewWorker
{
public:
    using Maker = std::function<std::unique_ptr<View>(Work& work)>;

    // `ready` is called on the worker's thread when there is a result to be taken. It must not throw.
    explicit ViewWorker(std::function<void()> ready);
    ~ViewWorker(); // breaks off
    ViewWorker(const ViewWorker&) = delete;
    ViewWorker& operator=(const ViewWorker&) = delete;

    // Runs `maker` on the worker's thread, which is made at the first time. Throws std::system_error if the
    // system gives none.
    void Start(Maker maker);
    void Cancel();

    // From Start until the result is taken or the work is cancelled.
    bool IsRunning() const { return m_running; }
    double Progress() const; // 0 to 1

    // What the maker answered, if it has; null if not, and with a reason in `fault` if it failed.
    std::unique_ptr<View> TakeResult(std::string& fault);

    // Until TakeResult has something to take.
    void Wait();

private:
    struct Job
    {
        Maker maker;
        Work work;
        std::unique_ptr<View> result;
        std::string fault;
        bool done = false;
    };

    void Run(const std::stop_token& stop);
    static void Make(Job& job);

    std::function<void()> m_ready;
    bool m_running = false;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::shared_ptr<Job> m_job; // the newest, done or not
    bool m_waiting = false;     // it has not been begun
    std::jthread m_thread;
};

} // namespace msgservice
