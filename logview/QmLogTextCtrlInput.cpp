// Keys and mouse of the log text window.
#include "QmLogTextCtrl.h"
#include "logview/MarginLayout.h"
#include "logview/MarginZones.h"
#include "logview/ShownRows.h"
#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmWndUpdaterUse.h"

namespace
{

constexpr int kRowEnd = 0x7FFFFFFF; // as a column

}

void CQmLogTextCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags)
{
    if (::GetKeyState(VK_CONTROL) < 0)
    {
        const bool up = key == VK_PRIOR || key == VK_UP;
        const bool down = key == VK_NEXT || key == VK_DOWN;
        const bool otherFile = key == VK_PRIOR || key == VK_NEXT;
        if ((up || down) && Move(up, otherFile))
            return;
    }
    if (key == VK_ESCAPE && CancelFind())
        return;
    CQmTextCtrl::OnKeyDown(key, repeat, flags);
    if (m_followPaused) // the caret may be at the end now, without any scrolling
        UpdateFollowAtCaret();
}

void CQmLogTextCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    const int switched = GetSwitchedRow(point);
    const int bookmark = GetBookmarkRow(point);
    CQmLogRow record;
    if (switched != logview::kNoSwitch)
    {
        SetFocus();
        Switch(switched);
    }
    else if (bookmark >= 0 && ReadStyle(bookmark, record))
    {
        SetFocus();
        m_bookmarkClick(record.time);
    }
    else
        CQmTextCtrl::OnLButtonDown(flags, point);
}

// Whether a client point is in a zone of the wide margin, and beside which row.
bool CQmLogTextCtrl::IsInZone(CPoint point, logview::MarginZone zone, int& row)
{
    int column = 0;
    return m_look.wideMargin && HitTest(point, row, column) && IsInMargin(point) &&
           GetCoveredLine(point) < 0 && GetMarginLayout().ZoneAt(point.x) == zone;
}

// The row whose bookmark a click at a client point sets or removes; below 0 for none.
int CQmLogTextCtrl::GetBookmarkRow(CPoint point)
{
    int row = 0;
    return m_bookmarkClick && IsInZone(point, logview::MarginZone::Bookmark, row) ? row : -1;
}

// The row whose fold mark is under a client point; kNoSwitch for none.
int CQmLogTextCtrl::GetSwitchedRow(CPoint point)
{
    int row = 0;
    int column = 0;
    if (!m_look.wideMargin)
    {
        HitTest(point, row, column);
        const int dy = point.y - (row - GetTopRow()) * GetRowHeight();
        return logview::SwitchedRow(row, column, point.x + GetScrollPos(SB_HORZ), dy, GetRowHeight(),
                                    GetColumnWidth());
    }
    bool expanded = false;
    return IsInZone(point, logview::MarginZone::Fold, row) && GetExpanded(row, expanded) ? row
                                                                                         : logview::kNoSwitch;
}

void CQmLogTextCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    const bool isMark =
        m_look.wideMargin && (GetSwitchedRow(point) != logview::kNoSwitch || GetBookmarkRow(point) >= 0);
    if (isMark || GetCoveredLine(point) >= 0) // the second of two quick clicks is one, too
        return OnLButtonDown(flags, point);
    const CQmWndUpdaterUse updater(this);
    int first = 0;
    int column = 0;
    if (!HitTest(point, first, column))
        return;
    int last = first;
    if (column < 0 && m_rows->showsMerged)
        FindMergedBlock(first, first, last);
    else if (column < 0)
        m_rows->session.FindBlock(m_file, first, first, last);
    Focus(first, 0, false);
    Select(last, kRowEnd);
}

BOOL CQmLogTextCtrl::OnSetCursor(CWnd* wnd, UINT hitTest, UINT message)
{
    if (wnd != this) // a child's own
        return CQmTextCtrl::OnSetCursor(wnd, hitTest, message);
    CPoint point;
    ::GetCursorPos(&point);
    ScreenToClient(&point);
    int row = 0;
    int column = 0;
    HitTest(point, row, column);
    const bool isText = hitTest == HTCLIENT && column >= 0 && GetCoveredLine(point) < 0;
    ::SetCursor(::LoadCursor(nullptr, isText ? IDC_IBEAM : IDC_ARROW));
    return TRUE;
}

void CQmLogTextCtrl::OnTextMenu(CPoint screenPoint)
{
    CQmCommandDefinePopupMenu menu(this);
    menu.Show(screenPoint, this);
}
