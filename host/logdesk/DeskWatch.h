// The watch window of the status bar.
#pragma once

#include "QmLogWatch.h"
#include "qmcommon/QmTip.h"

#include <functional>
#include <string>

namespace logdesk
{

// The library's watch with a menu and a tip that has the whole line. Its keys: Enter opens, Delete clears,
// and Esc and Tab go back to where the focus was.
class DeskWatch : public CQmLogWatch
{
public:
    // `clear` and `leave` are what the user asks for.
    DeskWatch(std::function<void()> clear, std::function<void()> leave)
        : m_clear(std::move(clear)), m_leave(std::move(leave))
    {
    }

    bool IsShowing() const { return GetShownMsg() > 0; } // a message

    // Brings the tip up to date.
    void UpdateTip();

    void Scan(IQmCommand& collector) override;

protected:
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    void ScanMenu(IQmCommand& collector);

    std::function<void()> m_clear;
    std::function<void()> m_leave;
    std::string m_tipText;
    CQmTip m_tip;
};

} // namespace logdesk
