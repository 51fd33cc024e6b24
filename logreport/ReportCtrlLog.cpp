// The message viewer: its life, what a host tells it, its rows.
#include "logreport/PresentMessage.h"
#include "logreport/QmLogDlgEdit.h"
#include "logreport/ReportCtrlLogData.h"
#include "logreport/model/MsgCells.h"
#include "qmcommon/QmCommandMenu.h"
#include "zemacore/Flagged.h"

#include <algorithm>
#include <array>

namespace
{

constexpr UINT_PTR kTimer = 9000;
constexpr UINT kInterval = 500;         // milliseconds
constexpr std::int32_t kListRoom = 500; // messages
constexpr std::int32_t kMaxLogSize = 65536;
constexpr std::uint32_t kHeaderString = 16384; // the format of each header item: a text
constexpr COLORREF kWarning = RGB(200, 200, 0);
constexpr COLORREF kError = RGB(250, 0, 0);

struct Column
{
    ILogMsgDataKind kind;
    int width; // pixels at 96 dots per inch
};

constexpr std::array<Column, kLogMsgKindCount> kSubItems = {{{kLogMsgTimestamp, 150},
                                                             {kLogMsgLevel, 100},
                                                             {kLogMsgTopic, 100},
                                                             {kLogMsgBody, 300},
                                                             {kLogMsgErrorNumber, 80},
                                                             {kLogMsgRuntimeFile, 100},
                                                             {kLogMsgLine, 80},
                                                             {kLogMsgModule, 100},
                                                             {kLogMsgSourceLine, 80},
                                                             {kLogMsgRuntimeContext, 100},
                                                             {kLogMsgSource, 100},
                                                             {kLogMsgWho, 100},
                                                             {kLogMsgSourceColumn, 80}}};
constexpr std::array<ILogMsgDataKind, 3> kFirstColumns = {kLogMsgTimestamp, kLogMsgLevel, kLogMsgBody};

CReportCtrlLog* currentControl = nullptr;
bool isTakingOver = false; // some control is: deliberately one for the process

} // namespace

BEGIN_MESSAGE_MAP(CReportCtrlLog, CReportCtrl)
    ON_WM_DESTROY()
    ON_WM_TIMER()
    ON_WM_SIZE()
    ON_WM_VSCROLL()
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONDOWN()
    ON_WM_CONTEXTMENU()
    ON_NOTIFY(HDN_ITEMCLICKA, 0, &CReportCtrlLog::OnHdnItemClick)
    ON_NOTIFY(HDN_ITEMCLICKW, 0, &CReportCtrlLog::OnHdnItemClick)
    ON_MESSAGE(WM_DPICHANGED_AFTERPARENT, &CReportCtrlLog::OnDpiChanged)
    ON_MESSAGE(logreport::kPreviewWidened, &CReportCtrlLog::OnPreviewWidened)
END_MESSAGE_MAP()

CReportCtrlLog::CReportCtrlLog() : m_data(std::make_unique<Data>(*this)) {}

CReportCtrlLog::~CReportCtrlLog()
{
    DestroyWindow(); // while what its last messages ask for is still there
    m_data->finder->Detach();
}

CReportCtrlLog* CReportCtrlLog::GetCurrent()
{
    return currentControl;
}

void CReportCtrlLog::PreSubclassWindow()
{
    CWnd::ModifyStyle(0, WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | RVS_CALLBACK);
    QmHandler<CReportCtrl>::PreSubclassWindow();
    ModifyStyle(0, WS_BORDER, SWP_FRAMECHANGED);
    ModifyProperty(RVP_EMPTYTEXT, reinterpret_cast<__int64>("No Log message"));
}

BOOL CReportCtrlLog::CreateCommon()
{
    if (!QmHandler<CReportCtrl>::CreateCommon())
        return FALSE;
    m_data->menuDrawer.Attach(GetSafeHwnd());
    SetLogMsgService(nullptr);
    m_data->range.ResetOffset();
    DefineColumns();
    ModifyStyle(RVS_HORIZONTALGRID, RVS_DRAGCOLUMNS | RVS_KEEPSELECTION);
    ModifyProperty(RVP_SHOWPREVIEW, 1);
    ModifyProperty(RVP_KEEPIMAGES, 1);
    ModifyProperty(RVP_FITITEMHEIGHT, 1);
    SetHideRow(1);
    SetShowReport(0);
    InsertColor(logreport::kWarningColor, kWarning);
    InsertColor(logreport::kErrorColor, kError);
    UseResolution();
    if (!m_data->source.isDirect)
    {
        SetTimer(kTimer, kInterval, nullptr);
        currentControl = this;
    }
    return TRUE;
}

// Once: a window made again finds what it had.
void CReportCtrlLog::DefineColumns()
{
    if (GetSubItemCount() == 0)
        for (const Column& column : kSubItems)
        {
            _RVSUBITEM definition;
            definition.format = kHeaderString;
            definition.width = MulDiv(column.width, GetResolution(), 96);
            definition.text = LogMsgDataKindText(column.kind);
            DefineSubItem(column.kind, &definition);
        }
    for (const ILogMsgDataKind kind : kFirstColumns)
        ActivateSubItem(kind, -1);
}

void CReportCtrlLog::OnDestroy()
{
    SaveState();
    m_data->finder->OnDestroy();
    KillTimer(kTimer);
    if (currentControl == this)
        currentControl = nullptr;
    QmHandler<CReportCtrl>::OnDestroy();
}

void CReportCtrlLog::SetDirectMode(bool direct)
{
    m_data->source.isDirect = direct;
}

// ---- What a host tells

void CReportCtrlLog::SetLogMsgService(ILogMsgService* service)
{
    if (service == m_data->source.service)
        return;
    m_data->finder->OnServiceChange();
    m_data->source.service = service;
    m_data->source.list.reset();
    FlushCacheMsgData();
}

ILogMsgService* CReportCtrlLog::GetLogMsgService()
{
    return m_data->source.service;
}

std::int32_t CReportCtrlLog::GetMaxLogSize()
{
    return kMaxLogSize;
}

void CReportCtrlLog::AddMsg(std::uint32_t id, ILogMsgData* message)
{
    {
        const ZEMA::Flagged busy(m_data->source.isBusy);
        if (m_data->attached)
            m_data->attached->AddMsg(id, message);
        m_data->range.Announce(id);
    }
    MakeList();
    if (!m_data->source.list || !message)
        return;
    std::unique_ptr<ILogMsgData> clone(message->Clone());
    const std::shared_ptr<ILogMsgList> list = m_data->source.list;
    if (clone && list && list->Add(clone.get()))
        static_cast<void>(clone.release());
}

// The service may call back, and may be taken away meanwhile.
void CReportCtrlLog::MakeList()
{
    ILogMsgService* const service = m_data->source.service;
    if (!service || m_data->source.list || m_data->source.isMakingList)
        return;
    const ZEMA::Flagged making(m_data->source.isMakingList);
    std::shared_ptr<ILogMsgList> list(service->CreateMsgList(kListRoom, 0));
    if (service == m_data->source.service)
        m_data->source.list = std::move(list);
}

void CReportCtrlLog::SetMsgIdRange(std::uint32_t first, std::uint32_t last)
{
    const ZEMA::Flagged busy(m_data->source.isBusy);
    if (m_data->attached)
        m_data->attached->SetMsgIdRange(first, last);
    m_data->range.Announce(last);
    m_data->finder->OnViewChange();
    logreport::MsgCache::Shared().Flush();
    ForgetPreviews();
}

void CReportCtrlLog::Present(std::uint32_t id)
{
    logreport::SendPresentMessage(GetSafeHwnd(), id);
}

CWnd* CReportCtrlLog::GetWnd()
{
    return this;
}

void CReportCtrlLog::SetAttachedViewer(ILogViewer* viewer)
{
    m_data->attached = viewer;
}

// ---- Rows

void CReportCtrlLog::OnTimer(UINT_PTR id)
{
    if (id == kTimer)
        TakeOver();
    else if (id == logreport::MessageFinder::kTimer)
    {
        const std::shared_ptr<logreport::MessageFinder> finder = m_data->finder;
        finder->OnTimer(); // this object may be gone
    }
    else
    {
        QmHandler<CReportCtrl>::OnTimer(id);
        LookWhetherFollowing(); // it may have scrolled
    }
}

// While another one is at it, of whichever control, it is left out.
void CReportCtrlLog::TakeOver()
{
    if (isTakingOver || !m_hWnd)
        return;
    const ZEMA::Flagged takingOver(isTakingOver);
    const std::optional<int> rows = m_data->range.Tick();
    if (!rows)
        return;
    SetItemCount(*rows);
    if (m_data->following.mode && !IsFollowPaused())
        EnsureVisible(*rows - 1, TRUE);
}

void CReportCtrlLog::Clear()
{
    m_data->range.Clear(GetItemCount());
}

void CReportCtrlLog::ShowCleared()
{
    m_data->range.ShowCleared();
}

std::uint32_t CReportCtrlLog::GetMessageOffset()
{
    return m_data->range.Offset();
}

std::uint32_t CReportCtrlLog::GetLastMessage()
{
    return m_data->range.Last();
}

void CReportCtrlLog::SelectMsg(std::uint32_t id)
{
    const std::optional<int> row = m_data->range.RowOf(id, GetRowCount());
    if (!row)
        return;
    SetSelection(*row, *row);
    EnsureVisible(*row, TRUE);
    LookWhetherFollowing();
}

void CReportCtrlLog::SetSelection(int first, int last)
{
    SelectRows(last, first, 1, 0, 0, 1);
    SetAnchor(first);
}

const ILogMsgData* CReportCtrlLog::FindCacheMsgData(std::uint32_t id)
{
    const std::shared_ptr<ILogMsgList> list = m_data->source.list;
    return logreport::MsgCache::Shared().Find(id, m_data->source.Origin());
}

void CReportCtrlLog::FlushCacheMsgData()
{
    logreport::MsgCache::Shared().Flush();
    ForgetPreviews();
    if (m_hWnd)
        RedrawRows(-1, GetRowCount(), 0);
}

ZEMA::String CReportCtrlLog::GetStatusText()
{
    int first = 0;
    int last = -1;
    GetSelectedRows(&first, &last);
    return logreport::StatusText(GetRowCount(), last - first + 1, GetCurrentFocus()).c_str();
}

// ---- Following

void CReportCtrlLog::SetFollow(int follow)
{
    m_data->following.mode = follow;
    m_data->following.isPaused = false;
}

int CReportCtrlLog::GetFollow()
{
    return m_data->following.mode;
}

void CReportCtrlLog::SetFollowPauses(bool pauses)
{
    m_data->following.pauses = pauses;
    m_data->following.isPaused = false;
}

bool CReportCtrlLog::GetFollowPauses()
{
    return m_data->following.pauses;
}

bool CReportCtrlLog::IsFollowPaused()
{
    return m_data->following.pauses && m_data->following.isPaused;
}

// After the user has moved: whoever sees the last row follows.
void CReportCtrlLog::LookWhetherFollowing()
{
    int first = 0;
    int last = -1;
    const int rows = m_hWnd ? GetRowCount() : 0;
    GetVisibleRows(GetTopIndex(), &first, &last, 0);
    m_data->following.isPaused = rows > 0 && last < rows - 1;
}

void CReportCtrlLog::OnVScroll(UINT code, UINT position, CScrollBar* bar)
{
    QmHandler<CReportCtrl>::OnVScroll(code, position, bar);
    LookWhetherFollowing();
}

void CReportCtrlLog::OnKeyDown(UINT key, UINT repeat, UINT flags)
{
    if (key == VK_F3)
        return ::GetKeyState(VK_SHIFT) < 0 ? FindPrevious() : FindNext();
    QmHandler<CReportCtrl>::OnKeyDown(key, repeat, flags);
    LookWhetherFollowing();
}

void CReportCtrlLog::OnLButtonDown(UINT flags, CPoint point)
{
    QmHandler<CReportCtrl>::OnLButtonDown(flags, point);
    LookWhetherFollowing();
}

void CReportCtrlLog::OnSize(UINT type, int cx, int cy)
{
    QmHandler<CReportCtrl>::OnSize(type, cx, cy);
    if (m_data->following.pauses && m_data->following.mode && !m_data->following.isPaused)
        EnsureVisible(GetRowCount() - 1, TRUE);
}

// ---- Clicks

LRESULT CReportCtrlLog::Notify(_NMREPORTVIEW* notification)
{
    const UINT code = notification->hdr.code;
    const int item = notification->item;
    const CPoint point = notification->point;
    const LRESULT answer = QmHandler<CReportCtrl>::Notify(notification);
    if (code == RVN_COLUMNCLICK)
        m_data->columnClick = answer;
    if (!m_hWnd || answer != 0)
        return answer;
    if (code == RVN_ITEMDBLCLICK)
        OpenMessageOf(item);
    if (code != RVN_ITEMRCLICK)
        return answer;
    SelectForMenu(item);
    CPoint screen = point;
    ClientToScreen(&screen);
    OnMessageMenu(screen);
    return 1; // the menu was the answer
}

// A menu is for the selected rows: one that is clicked outside of them is selected instead.
void CReportCtrlLog::SelectForMenu(int row)
{
    int first = 0;
    int last = -1;
    GetSelectedRows(&first, &last);
    if (row >= 0 && row < GetRowCount() && (row < first || row > last))
        SetSelection(row, row);
}

// The key for menus opens it at the focused row.
void CReportCtrlLog::OnContextMenu(CWnd* wnd, CPoint point)
{
    if (point.x != -1 || point.y != -1)
    {
        QmHandler<CReportCtrl>::OnContextMenu(wnd, point);
        return;
    }
    CRect row;
    CPoint place(0, 0);
    if (GetRowRect(GetCurrentFocus(), -1, row, RVRC_WHOLE))
        place = CPoint(std::max(0L, row.left), row.bottom);
    ClientToScreen(&place);
    OnMessageMenu(place);
}

void CReportCtrlLog::OpenMessageOf(int row)
{
    if (row < 0 || !m_data->source.service || m_data->source.isBusy)
        return;
    const std::uint32_t id = m_data->range.IdOf(row);
    if (m_data->source.service->GetMsg(id))
        OnOpenMessage(id);
}

void CReportCtrlLog::OnOpenMessage(std::uint32_t id)
{
    if (m_data->source.service && !m_data->source.service->IsBusy())
        CQmLogDlgEdit(logreport::ServiceOf(*this), this, id).DoModal();
}

void CReportCtrlLog::OnMessageMenu(CPoint point)
{
    CQmCommandDefinePopupMenu(this).Show(point, this);
}

void CReportCtrlLog::OnClear()
{
    Clear();
}

// The parent is told first. A second click on a column reverses the order.
void CReportCtrlLog::OnHdnItemClick(NMHDR* header, LRESULT* result)
{
    const int subitem = GetHeaderCtrl()->GetSubItem(reinterpret_cast<NMHEADER*>(header)->iItem);
    m_data->columnClick = 0;
    QmHandler<CReportCtrl>::OnHdnItemClick(header, result);
    ILogMsgService* const service = m_data->source.service;
    if (!m_hWnd || m_data->columnClick != 0 || m_data->source.isDirect || !service || service->IsBusy())
        return;
    LogMsgSortKey key;
    service->GetSortKeys(&key, 1);
    const bool isOther = key.field != subitem;
    key.field = static_cast<ILogMsgDataKind>(subitem);
    key.ascending = isOther || key.ascending == 0;
    service->SetSortKeys(&key, 1);
    service->Apply();
    RefreshHeader();
}

void CReportCtrlLog::RefreshHeader()
{
    ILogMsgService* const service = m_data->source.service;
    if (!service || !m_hWnd)
        return;
    LogMsgSortKey key;
    service->GetSortKeys(&key, 1);
    if (key.field == kLogMsgNone || !SetSortSettings(key.field, key.ascending))
        ClearSortSettings();
    std::array<LogMsgFilter, 3> filters;
    service->GetFilters(filters.data(), static_cast<std::int32_t>(filters.size()));
    CReportHeaderCtrl& header = *GetHeaderCtrl();
    for (int item = 0; item < header.GetItemCount(); ++item)
    {
        const int subitem = header.GetSubItem(item);
        header.SetItemFiltered(
            item, std::any_of(filters.begin(), filters.end(),
                              [subitem](const auto& filter) { return filter.field == subitem; }));
    }
}
