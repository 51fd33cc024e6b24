#include "logdesk/DeskFrame.h"

#include "QmLogRow.h"
#include "logdesk/Profile.h"
#include "logdesk/Resource.h"
#include "vkgrafic/DrawingGuards.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr UINT kBrowserId = 100;
constexpr UINT kStatusId = 101;
constexpr UINT kNoticesId = 102;
constexpr UINT_PTR kStatusTimer = 1;
constexpr UINT kStatusInterval = 250; // milliseconds
constexpr unsigned kNoticeTicks = 4;  // of that timer

enum Pane
{
    kSessionPane,
    kCaretPane,
    kRowsPane,
    kFollowPane,
    kPaneCount
};

LPCSTR RegisterFrameClass()
{
    const char* const name = "LogDeskFrame";
    WNDCLASS frame = {};
    frame.lpfnWndProc = ::DefWindowProc;
    frame.hInstance = AfxGetInstanceHandle();
    frame.hIcon = ::LoadIcon(frame.hInstance, MAKEINTRESOURCE(IDI_LOGDESK));
    frame.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    frame.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1);
    frame.lpszClassName = name;
    AfxRegisterClass(&frame);
    return name;
}

} // namespace

BEGIN_MESSAGE_MAP(DeskFrame, CWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_SIZE()
    ON_WM_ACTIVATE()
    ON_WM_SETFOCUS()
    ON_WM_SETTINGCHANGE()
    ON_WM_INITMENUPOPUP()
    ON_WM_TIMER()
END_MESSAGE_MAP()

DeskFrame::DeskFrame(SessionPlace place, SessionState session)
    : m_place(std::move(place)), m_session(session),
      m_fileCommands([this](IQmCommand& collector) { ScanFile(collector); }),
      m_viewCommands([this](IQmCommand& collector) { ScanView(collector); }),
      m_helpCommands([this](IQmCommand& collector) { ScanHelp(collector); })
{
    GetTextCtrl().SetStartSession(session == SessionState::Started);
}

BOOL DeskFrame::CreateFrame(const std::optional<Place>& place)
{
    m_remember = !place;
    const WindowOptions options = m_remember ? ReadWindowOptions() : WindowOptions{*place, false, false};
    m_maximised = options.maximised;
    GetTextCtrl().SetFollowPauses(options.followPauses);

    CMenu bar;
    MakeMenus(bar);
    const BOOL isCreated = CreateEx(0, RegisterFrameClass(), "LogDesk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                                    options.place.left, options.place.top, options.place.width,
                                    options.place.height, nullptr, bar);
    if (!isCreated)
        return FALSE;
    bar.Detach(); // the window's now
    if (m_session == SessionState::Started && !GetTextCtrl().IsSessionStarted())
        m_session = SessionState::Refused;
    SetWindowText(TitleText(m_place.folder, m_session).c_str());
    RefreshNotices();
    RefreshStatus();
    return TRUE;
}

// The caret goes on the log's first row that anything leads to. It stays there, for whoever names a log wants
// to read it and not its end.
void DeskFrame::ShowWantedLog()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
    {
        if (!IsSameLog(CQmLogTextCtrl::GetFilePath(file), m_place.log))
            continue;
        unsigned long before = 0;
        unsigned long after = 0;
        text.GetHiddenRowCounts(file, before, after);
        text.SetFollow(false);
        text.Reveal(file, before);
    }
}

void DeskFrame::ShowFrame(int show)
{
    const bool isUsual = show == SW_SHOWNORMAL || show == SW_SHOWDEFAULT || show == SW_SHOW;
    ShowWindow(m_maximised && isUsual ? SW_SHOWMAXIMIZED : show);
    ShowWantedLog(); // in a window that has its size
    UpdateWindow();
}

int DeskFrame::OnCreate(LPCREATESTRUCT create)
{
    const CRect empty;
    if (!m_browser.Create(WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, empty, this, kBrowserId))
        return -1;
    if (!m_notices.Create(this, kNoticesId))
        return -1;
    if (!m_status.Create(WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, empty, this, kStatusId))
        return -1;
    SetPanes(create->cx); // a pane must be there to keep a text
    SetTimer(kStatusTimer, kStatusInterval, nullptr);
    return 0;
}

void DeskFrame::OnClose()
{
    if (m_remember)
        WriteWindowOptions(*this, GetTextCtrl().GetFollowPauses());
    DestroyWindow();
}

void DeskFrame::OnSize(UINT type, int width, int height)
{
    if (type == SIZE_MINIMIZED || !m_status.GetSafeHwnd())
        return;
    m_status.SendMessage(WM_SIZE, type, MAKELPARAM(width, height));
    LayOut();
    SetPanes(width);
}

void DeskFrame::LayOut()
{
    CRect client;
    CRect status;
    GetClientRect(client);
    m_status.GetWindowRect(status);
    const int top = m_notices.GetHeight();
    m_notices.MoveWindow(0, 0, client.Width(), top);
    m_browser.MoveWindow(0, top, client.Width(), std::max(0, client.Height() - top - status.Height()));
}

// The session has what the others leave, which is enough for its long text in a window of usual width.
void DeskFrame::SetPanes(int width)
{
    TEXTMETRIC font = {};
    CClientDC dc(&m_status);
    const VkGrafic::Selected selected(dc, m_status.GetFont()->GetSafeHandle());
    dc.GetTextMetrics(&font);

    int rights[kPaneCount] = {};
    rights[kFollowPane] = -1;
    const int column = font.tmAveCharWidth;
    rights[kRowsPane] = std::max(0, width - 22 * column);
    rights[kCaretPane] = std::max(0, rights[kRowsPane] - 18 * column);
    rights[kSessionPane] = std::max(0, rights[kCaretPane] - 36 * column);
    m_status.SetParts(kPaneCount, rights);
}

// The focus returns to where it was within the frame, the find bar as well.
void DeskFrame::OnActivate(UINT state, CWnd*, BOOL)
{
    if (state == WA_INACTIVE)
    {
        const HWND focus = ::GetFocus();
        m_focus = ::IsChild(m_hWnd, focus) ? focus : nullptr;
    }
    else
        SetFocus();
}

void DeskFrame::OnSetFocus(CWnd*)
{
    if (m_focus && ::IsChild(m_hWnd, m_focus) && ::IsWindowVisible(m_focus))
        ::SetFocus(m_focus);
    else if (m_browser.GetSafeHwnd())
        m_browser.SetFocus();
}

void DeskFrame::OnSettingChange(UINT flags, LPCSTR section)
{
    CWnd::OnSettingChange(flags, section);
    SendMessageToDescendants(WM_SETTINGCHANGE, flags, reinterpret_cast<LPARAM>(section));
}

void DeskFrame::OnTimer(UINT_PTR timer)
{
    if (timer != kStatusTimer)
    {
        Default();
        return;
    }
    if (++m_ticks % kNoticeTicks == 0)
        RefreshNotices();
    RefreshStatus();
}

void DeskFrame::RefreshNotices()
{
    const FolderState state = ReadFolderState(GetTextCtrl(), m_place);
    if (state == m_folder)
        return;
    m_folder = state;
    if (m_notices.SetLines(Notices(state)))
        LayOut();
    m_status.SetText(SessionText(m_session, state).c_str(), kSessionPane, 0);
}

ViewState DeskFrame::ReadView()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    ViewState view;
    view.rows = text.GetRowCount();
    view.caretRow = text.GetCaretRow();
    CQmLogRow row = {};
    if (view.caretRow < view.rows && text.ReadStyle(view.caretRow, row))
    {
        view.log = CQmLogTextCtrl::GetFilePath(text.GetRowFile(view.caretRow));
        view.number = row.time;
    }
    if (!text.GetFollow())
        view.follow = FollowState::Off;
    else if (text.IsFollowPaused())
        view.follow = FollowState::Paused;
    return view;
}

void DeskFrame::RefreshStatus()
{
    const ViewState view = ReadView();
    if (view == m_shown)
        return;
    m_shown = view;
    m_status.SetText(CaretText(view).c_str(), kCaretPane, 0);
    m_status.SetText(RowsText(view).c_str(), kRowsPane, 0);
    m_status.SetText(FollowText(view).c_str(), kFollowPane, 0);
}

} // namespace logdesk
