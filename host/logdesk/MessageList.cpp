#include "logdesk/MessageList.h"

#include "qmcommon/QmCommand.h"

#include <algorithm>
#include <string_view>

namespace logdesk
{

namespace
{

constexpr int kAroundColumns = 20; // pixels: frames and borders
constexpr int kWarningColor = 1;   // the base's numbers of these two
constexpr int kErrorColor = 2;
constexpr COLORREF kReadableWarning = RGB(138, 84, 0);
constexpr COLORREF kReadableError = RGB(192, 0, 0);

// Hands on all entries but the one that opens a file.
class WithoutOpen : public IQmCommand
{
public:
    explicit WithoutOpen(IQmCommand& collector) : m_collector(collector) {}

    void Add(std::unique_ptr<IQmEntry> entry) override
    {
        const char* const caption = entry->GetCaption();
        if (!caption || std::string_view(caption) != "&Open...")
            m_collector.Add(std::move(entry));
    }
    void AddSeparator() override { m_collector.AddSeparator(); }

private:
    IQmCommand& m_collector;
};

} // namespace

BEGIN_MESSAGE_MAP(MessageList, CReportCtrlLog)
    ON_WM_CONTEXTMENU()
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

void MessageList::Scan(IQmCommand& collector)
{
    WithoutOpen own(collector);
    CReportCtrlLog::Scan(own);
    collector.AddSeparator();
    m_commands(collector);
}

void MessageList::ScanForFile(IQmCommand& collector)
{
    WithoutOpen own(collector);
    ScanFile(own);
}

void MessageList::OnClear()
{
    m_clear();
}

void MessageList::OnContextMenu(CWnd* wnd, CPoint point)
{
    m_isMenuByKey = point.x == -1 && point.y == -1;
    CReportCtrlLog::OnContextMenu(wnd, point);
    m_isMenuByKey = false;
}

void MessageList::OnMessageMenu(CPoint point)
{
    if (!m_isMenuByKey)
        m_menuCell = CellAt(point);
    CReportCtrlLog::OnMessageMenu(point);
    m_menuCell.reset();
}

MessageList::Cell MessageList::CellAt(CPoint screen)
{
    _RVHITTESTINFO hit = {};
    hit.pt = screen;
    ScreenToClient(&hit.pt);
    HitTest(&hit);
    if (hit.row < 0)
        return {};
    return {hit.row, hit.subitem < 0 ? kLogMsgBody : static_cast<ILogMsgDataKind>(hit.subitem)};
}

MessageList::Cell MessageList::CommandCell()
{
    if (m_menuCell)
        return *m_menuCell;
    const int row = GetCurrentFocus();
    const int column = GetCurrentFocusColumn();
    if (row < 0)
        return {};
    return {row, column < 0 ? kLogMsgBody : static_cast<ILogMsgDataKind>(GetSubItemFromColumn(column))};
}

void MessageList::OnKeyDown(UINT key, UINT repeat, UINT flags)
{
    FocusARow();
    CReportCtrlLog::OnKeyDown(key, repeat, flags);
}

void MessageList::FocusARow()
{
    if (GetCurrentFocus() < 0 && GetRowCount() > 0)
        AdjustFocus(IsFollowing() ? GetRowCount() - 1 : GetTopIndex(), -1);
}

ListRows MessageList::Place()
{
    ListRows rows;
    int first = 0;
    int last = -1;
    GetSelectedRows(&first, &last);
    if (GetRowCount() > 0)
        rows.top = GetTopIndex();
    if (GetCurrentFocus() >= 0)
        rows.focus = GetCurrentFocus();
    if (first <= last)
    {
        rows.first = first;
        rows.last = last;
    }
    return rows;
}

void MessageList::GoTo(const ListRows& rows)
{
    if (rows.first && rows.last)
        SelectRows(*rows.last, *rows.first, 1, 0, 0, 1);
    else
        SelectNone();
    if (rows.focus)
        AdjustFocus(*rows.focus, GetCurrentFocusColumn());
    if (rows.top && !IsFollowing())
        SetScrollPos32(1, *rows.top, 1);
}

void MessageList::UseFirstLook(int width)
{
    SetColor(kWarningColor, kReadableWarning);
    SetColor(kErrorColor, kReadableError);
    ActivateSubItem(kLogMsgTopic, 2);
    int others = ::GetSystemMetrics(SM_CXVSCROLL) + kAroundColumns;
    for (const int subitem : {kLogMsgTimestamp, kLogMsgLevel, kLogMsgTopic})
        others += GetSubItemWidth(subitem);
    SetSubItemWidth(kLogMsgBody, std::max(GetSubItemWidth(kLogMsgBody), width - others));
}

bool MessageList::GetShowPreview()
{
    __int64 shows = 0;
    return GetProperty(RVP_SHOWPREVIEW, &shows) && shows != 0;
}

void MessageList::SetShowPreview(bool show)
{
    ModifyProperty(RVP_SHOWPREVIEW, show ? 1 : 0);
}

void MessageList::ShowReport(bool show)
{
    const bool preview = GetShowPreview();
    SetShowReport(show ? 1 : 0);
    SetShowPreview(preview || !show); // one of them has to show
}

} // namespace logdesk
