// Feeds the watch window with the errors of a store, by their arrival.
#pragma once

#include "QmLogWatch.h"
#include "logdesk/ErrorCount.h"
#include "msgservice/MsgService.h"

namespace logdesk
{

// A service of its own, which neither sorts nor filters nor clears, gives the messages ids that stay: a
// sorted or filtered list does not change what the watch opens.
class ErrorWatch
{
public:
    // `watch` is not owned and outlives this object.
    explicit ErrorWatch(CQmLogWatch& watch);
    ~ErrorWatch();
    ErrorWatch(const ErrorWatch&) = delete;
    ErrorWatch& operator=(const ErrorWatch&) = delete;

    // Takes over what has come; with another store than before all begins again. To be called now and then.
    void Take(const std::shared_ptr<msgservice::MessageStore>& store);

    // Watches for what comes after what was taken last.
    void Clear();

    std::uint32_t Count() const { return m_errors.Count(); } // since it was cleared

private:
    CQmLogWatch& m_watch;
    msgservice::MsgService m_service;
    ErrorCount m_errors;
    std::jthread m_ending; // frees the store before
};

} // namespace logdesk
