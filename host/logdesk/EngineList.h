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
    // `scrolled` is called when other rows are painted than before. It must not paint.
    EngineList(Commands commands, std::function<void()> scrolled)
        : MessageList(std::move(commands), [] {}), m_scrolled(std::move(scrolled))
    {
    }

    void Scan(IQmCommand& collector) override;

protected:
    void DrawCtrl(CDC* dc) override;
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()

private:
    std::function<void()> m_scrolled;
    int m_top = 0;     // the first row that was painted
    int m_visible = 0; // how many were
};

} // namespace logdesk
