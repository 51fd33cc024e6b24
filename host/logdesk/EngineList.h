// The list of a session's rows in an engine.
#pragma once

#include "logdesk/MessageList.h"

namespace logdesk
{

// The list of messages without what goes through all of them one by one: a filter finds texts where a billion
// rows are, and nothing is cleared.
class EngineList : public MessageList
{
public:
    explicit EngineList(Commands commands) : MessageList(std::move(commands), [] {}) {}

    void Scan(IQmCommand& collector) override;

protected:
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()
};

} // namespace logdesk
