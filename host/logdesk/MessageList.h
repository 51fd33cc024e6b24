// The list of messages.
#pragma once

#include "ReportCtrlLog.h"
#include "logdesk/ListPlace.h"

#include <functional>
#include <optional>

namespace logdesk
{

// The library's list with LogDesk's commands after its own, in its menu and for its keys. Files are opened by
// LogDesk's own command alone, which knows more of them.
class MessageList : public CReportCtrlLog
{
public:
    using Commands = std::function<void(IQmCommand&)>;
    MessageList(Commands commands, std::function<void()> clear)
        : m_commands(std::move(commands)), m_clear(std::move(clear))
    {
    }

    void Scan(IQmCommand& collector) override;
    void ScanForFile(IQmCommand& collector); // for the menu "File"

    // The rows that the user sees and has chosen, and back there. While the list follows, its top is left to
    // that.
    ListRows Place();
    void GoTo(const ListRows& rows);

    // What a command for one cell is for: while the list's menu is open by the mouse the cell that was
    // clicked, else the focused one. Where a whole row has the focus, and on a preview, it is the body.
    struct Cell
    {
        int row = -1; // -1 for none
        ILogMsgDataKind field = kLogMsgBody;
    };
    Cell CommandCell();

    // Gives a list without a focused row one, so that keys go on from what is seen.
    void FocusARow();

    // Whether the last row is scrolled into view when messages arrive.
    bool IsFollowing() { return GetFollow() != 0 && !IsFollowPaused(); }

    // For whoever sees it first: columns for a window of `width` pixels, with the topic and long bodies, and
    // colours of warnings and errors that can be read.
    void UseFirstLook(int width);

    bool GetShowPreview();
    void SetShowPreview(bool show);

    // FALSE shows the messages' bodies alone. Whether previews show is another question, unlike in the base.
    void ShowReport(bool show);

protected:
    void OnClear() override;
    void OnMessageMenu(CPoint point) override;
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()

private:
    Cell CellAt(CPoint screen);

    Commands m_commands;
    std::optional<Cell> m_menuCell;
    bool m_isMenuByKey = false;
    std::function<void()> m_clear;
};

} // namespace logdesk
