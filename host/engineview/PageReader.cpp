#include "engineview/PageReader.h"

#include <algorithm>

namespace engineview
{

namespace
{

constexpr std::chrono::milliseconds kPause(500); // after a server that does not answer

} // namespace

PageReader::PageReader(const engine::EngineUrl& url, const Connect& connect, std::function<void()> wake)
    : m_wake(std::move(wake)), m_reader(url, connect([this] {
                                            const std::lock_guard lock(m_mutex);
                                            return m_isEnding || !IsWanted();
                                        })),
      m_thread([this](const std::stop_token& stop) { Run(stop); })
{
}

PageReader::~PageReader()
{
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
}

bool PageReader::IsWanted() const
{
    return m_current && m_current->view == m_view &&
           std::any_of(m_wanted.begin(), m_wanted.end(),
                       [&](const PageRequest& page) { return page.index == m_current->request.index; });
}

void PageReader::Want(std::uint64_t view, std::vector<PageRequest> pages)
{
    const std::lock_guard lock(m_mutex);
    m_view = view;
    m_wanted = std::move(pages);
    m_changed.notify_all();
}

std::vector<PageAnswer> PageReader::Take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answers, {});
}

void PageReader::Wait(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, time, [this] { return !m_answers.empty() || m_isLost; });
}

bool PageReader::IsLost() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLost;
}

void PageReader::Run(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, stop, [this] { return !m_wanted.empty(); }) && !stop.stop_requested())
    {
        Fetch(lock);
        if (m_isLost)
            m_changed.wait_for(lock, stop, kPause, [] { return false; });
    }
}

// What was asked for stays wanted while it is fetched: the owner may have named it anew.
void PageReader::Fetch(std::unique_lock<std::mutex>& lock)
{
    m_current = PageAnswer{m_wanted.front(), m_view, {}};
    PageAnswer answer = *m_current;
    lock.unlock();
    bool isHere = false;
    bool isLost = false;
    try
    {
        const PageRequest& request = answer.request;
        answer.rows = m_reader.ReadPage(request.choice,
                                        request.isStretch ? std::vector<std::uint32_t>() : request.numbers);
        isHere = true;
    }
    catch (const engine::EngineError& error)
    {
        isLost = error.Help() != engine::EngineError::Remedy::Cancelled;
    }
    lock.lock();
    m_isLost = isLost;
    if (isHere && IsWanted())
    {
        std::erase_if(m_wanted, [&](const PageRequest& page) { return page.index == answer.request.index; });
        m_answers.push_back(std::move(answer));
    }
    m_current.reset();
    m_changed.notify_all();
    if (!isHere)
        return;
    lock.unlock();
    m_wake();
    lock.lock();
}

} // namespace engineview
