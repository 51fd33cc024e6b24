#include "msgservice/view/ViewWorker.h"

#include <exception>
#include <utility>

namespace msgservice
{

ViewWorker::ViewWorker(std::function<void()> ready) : m_ready(std::move(ready)) {}

ViewWorker::~ViewWorker()
{
    Cancel();
}

void ViewWorker::Start(Maker maker)
{
    Cancel();
    auto job = std::make_shared<Job>();
    job->maker = std::move(maker);
    if (!m_thread.joinable())
        m_thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
    const std::lock_guard lock(m_mutex);
    m_job = std::move(job);
    m_waiting = true;
    m_running = true;
    m_changed.notify_all();
}

void ViewWorker::Cancel()
{
    const std::lock_guard lock(m_mutex);
    if (m_job)
        m_job->work.Cancel();
    m_job.reset();
    m_waiting = false;
    m_running = false;
}

double ViewWorker::Progress() const
{
    const std::lock_guard lock(m_mutex);
    return m_job ? m_job->work.Progress() : 1;
}

std::unique_ptr<View> ViewWorker::TakeResult(std::string& fault)
{
    const std::lock_guard lock(m_mutex);
    if (!m_job || !m_job->done)
        return nullptr;
    fault = m_job->fault;
    std::unique_ptr<View> result = std::move(m_job->result);
    m_job.reset();
    m_running = false;
    return result;
}

void ViewWorker::Wait()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_job || m_job->done; });
}

void ViewWorker::Run(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, stop, [this] { return m_waiting; }))
    {
        m_waiting = false;
        const std::shared_ptr<Job> job = m_job;
        lock.unlock();
        Make(*job);
        lock.lock();
        job->done = true;
        m_changed.notify_all();
        lock.unlock();
        m_ready();
        lock.lock();
    }
}

void ViewWorker::Make(Job& job)
{
    try
    {
        job.result = job.maker(job.work);
    }
    catch (const Cancelled&)
    {
    }
    catch (const std::exception& exception)
    {
        job.fault = exception.what();
    }
}

} // namespace msgservice
