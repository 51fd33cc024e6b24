#include "logdesk/ErrorWatch.h"

namespace logdesk
{

ErrorWatch::ErrorWatch(CQmLogWatch& watch) : m_watch(watch)
{
    m_watch.SetLogMsgService(&m_service);
}

ErrorWatch::~ErrorWatch()
{
    m_watch.SetLogMsgService(nullptr);
}

// The store before may be large, and this the last that had it.
void ErrorWatch::Take(const std::shared_ptr<msgservice::MessageStore>& store)
{
    if (store != m_service.Store())
    {
        auto before = m_service.Store();
        m_service.SetStore(store);
        m_ending = std::jthread([before = std::move(before)] {});
        m_errors.Restart();
        m_watch.Clear();
    }
    m_service.Publish();
    if (const auto last = m_errors.Take(*store, m_service.GetMsgCount()))
        m_watch.AddMsg(*last + 1, m_service.GetMsg(*last + 1));
}

void ErrorWatch::Clear()
{
    m_errors.Clear();
    m_watch.Clear();
}

} // namespace logdesk
