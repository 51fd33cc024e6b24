#include "logdesk/DeskFrame.h"

#include "QmLogState.h"
#include "logdesk/NumberText.h"
#include "logdesk/Resource.h"
#include "vkgrafic/Display.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <array>
#include <shellapi.h>

namespace logdesk
{

namespace
{

constexpr UINT kBrowserId = 100;
constexpr UINT kStatusId = 101;
constexpr UINT kNoticesId = 102;
constexpr UINT kSplitterId = 103;
constexpr UINT kMessagesId = 104;
constexpr UINT kToolsId = 105;
constexpr UINT kPublish = WM_APP;
constexpr UINT kStatusInterval = 250; // milliseconds
constexpr int kPreviewLines = 10;
constexpr int kLeastPane = 100; // pixels at 96 an inch, which a pane has in the smallest window

const UINT presentMessage = ::RegisterWindowMessage("QmPresentMessageId");

LPCSTR RegisterFrameClass()
{
    WNDCLASS frame = {};
    frame.lpfnWndProc = ::DefWindowProc;
    frame.hInstance = AfxGetInstanceHandle();
    frame.hIcon = ::LoadIcon(frame.hInstance, MAKEINTRESOURCE(IDI_LOGDESK));
    frame.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    frame.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1);
    frame.lpszClassName = kFrameClass;
    AfxRegisterClass(&frame);
    return kFrameClass;
}

} // namespace

BEGIN_MESSAGE_MAP(DeskFrame, CWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_SIZE()
    ON_WM_ACTIVATE()
    ON_WM_SETFOCUS()
    ON_WM_SETTINGCHANGE()
    ON_MESSAGE(WM_DPICHANGED, &ThisClass::OnDpiChanged)
    ON_MESSAGE(WM_GETMINMAXINFO, &ThisClass::OnGetMinMaxInfo)
    ON_WM_INITMENUPOPUP()
    ON_WM_TIMER()
    ON_MESSAGE(WM_DROPFILES, &ThisClass::OnDropFiles)
    ON_MESSAGE(kPublish, &ThisClass::OnPublish)
    ON_NOTIFY(NM_CUSTOMDRAW, kToolsId, &ThisClass::OnDrawTools)
    ON_REGISTERED_MESSAGE(presentMessage, &ThisClass::OnPresent)
END_MESSAGE_MAP()

DeskFrame::DeskFrame(SessionPlace place, SessionState session)
    : m_place(std::move(place)), m_session(session), m_splitter([this](int top) { MoveSplitter(top); }),
      m_status([this] { PressStatusButton(); }, [this] { ShowRowsAfterMain(); }, [this] { ClearErrors(); },
               [this] { FocusPane(ActivePane()); }),
      m_errors(m_status.Watch()), m_fileCommands([this](IQmCommand& collector) { ScanFile(collector); }),
      m_logCommands([this](IQmCommand& collector) { ScanLog(collector); }),
      m_editCommands([this](IQmCommand& collector) { m_messages.List().ScanEdit(collector); }),
      m_viewCommands([this](IQmCommand& collector) { ScanView(collector); }),
      m_helpCommands([this](IQmCommand& collector) { ScanHelp(collector); }),
      m_logTextCommands([this](IQmCommand& collector) { ScanLogText(collector); }),
      m_messages([this](IQmCommand& collector) { ScanMessages(collector); }, [this] { ClearErrors(); })
{
    m_browser.SetAllTabs(true);
    GetTextCtrl().SetFoldsAllLogs(true);
    GetTextCtrl().SetPinsHeaders(true);
    GetTextCtrl().SetStartSession(session == SessionState::Started);
    GetTextCtrl().SetFindInAll(true);
    GetTextCtrl().SetCopiesInSteps(true);
    GetTextCtrl().SetCommands(&m_logTextCommands);
    GetTextCtrl().SetBookmarks(
        [this]() -> const std::vector<std::uint32_t>& { return m_bookmarks.Get().Numbers(); });
    GetTextCtrl().SetBookmarkClick([this](std::uint32_t number) { ToggleBookmark(number); });
}

BOOL DeskFrame::CreateFrame(const std::optional<Place>& place, const MessageOptions& messages)
{
    m_remember = !place;
    m_messageOptions = messages;
    if (m_remember)
    {
        m_options = ReadWindowOptions();
        m_recent = ReadRecentFiles();
        GetTextCtrl().SetFindHistory(ReadFindHistory());
        m_recentSessions = ReadRecentSessions();
    }
    else
        m_options.place = *place;
    GetTextCtrl().SetFollowPauses(m_options.followPauses);
    m_split.SetShare(m_options.split);
    m_split.Show(Pane::LogText, m_options.showLogText && m_place.file.empty());
    m_split.Show(Pane::Messages, m_options.showMessages || !m_place.file.empty());

    CMenu bar;
    MakeMenus(bar);
    const Place& at = m_options.place;
    const BOOL isCreated =
        CreateEx(WS_EX_ACCEPTFILES, RegisterFrameClass(), "LogDesk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                 at.left, at.top, at.width, at.height, nullptr, bar);
    if (!isCreated)
        return FALSE;
    bar.Detach(); // the window's now
    if (m_remember)
        KeepOnScreen(*this);
    if (m_session == SessionState::Started && !GetTextCtrl().IsSessionStarted())
        m_session = SessionState::Refused;
    RefreshNotices();
    RefreshStatus();
    return TRUE;
}

// The log's tab with the caret on its first row. It stays there, for whoever names a log wants to read it and
// not its end.
void DeskFrame::ShowWantedLog()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
    {
        if (!IsSameLog(CQmLogTextCtrl::GetFilePath(file), m_place.log))
            continue;
        text.SetFollow(false);
        m_browser.ShowTab(file);
        text.GoTo(file, 0);
    }
}

void DeskFrame::ShowFrame(int show)
{
    const bool isUsual = show == SW_SHOWNORMAL || show == SW_SHOWDEFAULT || show == SW_SHOW;
    ShowWindow(m_options.maximised && isUsual ? SW_SHOWMAXIMIZED : show);
    m_bookmarks.Load(FolderName(m_place.folder), m_remember);
    ShowWantedLog(); // in a window that has its size
    ShowSessionMessages();
    if (m_place.file.empty())
        RememberSession(FolderName(m_place.folder), true);
    else
        Open({m_place.file});
    UpdateWindow();
}

int DeskFrame::OnCreate(LPCREATESTRUCT)
{
    const CRect empty;
    if (!m_browser.Create(WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, empty, this, kBrowserId))
        return -1;
    GetTextCtrl().SetShowsStrip(true);
    if (!m_tools.Create(this, kToolsId, kFirstTool, m_options.showToolBar))
        return -1;
    if (!m_notices.Create(this, kNoticesId) || !m_splitter.Create(this, kSplitterId))
        return -1;
    if (!m_messages.Create(*this, kMessagesId, kPublish, m_messageOptions))
        return -1;
    if (!m_status.Create(this, kStatusId))
        return -1;
    m_menuDrawer.Attach(*this);
    UseSystemNumbers();
    PrepareMessages();
    UseColours();
    UseResolution();
    OpenTimes();
    GetTextCtrl().SetLineTips(true);
    GetTextCtrl().SetZoom([this](int steps) { Zoom(steps); });
    SetTimer(kStatusTimer, kStatusInterval, nullptr);
    return 0;
}

// As the list was left; whoever sees it first sees rows with previews, the logs' names among their columns.
void DeskFrame::PrepareMessages()
{
    MessageList& list = m_messages.List();
    const bool isFirst = !m_remember || !HasListLayout();
    if (!isFirst)
        CQmLogState(&list).Load();
    else
        list.UseFirstLook(m_options.place.width);
    list.ModifyStyle(0, RVS_TIPS);
    list.SetSavesState(m_remember);
    list.SetUseAllFields(m_options.useAllFields);
    list.SetGuardsFormulas(m_options.guardFormulas);
    list.SetPreviewLines(kPreviewLines);
    list.SetFollowPauses(m_options.pauseMessages);
    list.ShowReport(isFirst || list.GetShowReport() != 0);
    list.SetShowPreview(m_options.preview || list.GetShowReport() == 0);
}

void DeskFrame::OnClose()
{
    if (!MayLeave())
        return;
    if (m_remember)
        RememberOptions();
    DestroyWindow();
}

// Whether the log text shows beside a file says nothing of sessions.
void DeskFrame::RememberOptions()
{
    m_options.followPauses = GetTextCtrl().GetFollowPauses();
    m_options.split = m_split.Share();
    m_options.preview = m_messages.List().GetShowPreview();
    m_options.pauseMessages = m_messages.List().GetFollowPauses();
    m_options.useAllFields = m_messages.List().GetUseAllFields();
    m_options.guardFormulas = m_messages.List().GetGuardsFormulas();
    m_options.showToolBar = m_tools.IsShown();
    if (m_place.file.empty())
    {
        m_options.showLogText = m_split.Shows(Pane::LogText);
        m_options.showMessages = m_split.Shows(Pane::Messages);
    }
    WriteWindowOptions(*this, m_options);
    WriteFindHistory(GetTextCtrl().GetFindHistory());
}

// ---- Layout and focus

void DeskFrame::OnSize(UINT type, int width, int height)
{
    if (type == SIZE_MINIMIZED || !m_status.GetSafeHwnd())
        return;
    m_status.SendMessage(WM_SIZE, type, MAKELPARAM(width, height));
    LayOut();
    m_status.LayOut();
}

// The window went to a display of another resolution, where it is to take this place.
LRESULT DeskFrame::OnDpiChanged(WPARAM, LPARAM place)
{
    const CRect wanted = *reinterpret_cast<const RECT*>(place);
    UseResolution();
    MoveWindow(wanted.left, wanted.top, wanted.Width(), wanted.Height());
    LayOut();
    return 0;
}

void DeskFrame::UseResolution()
{
    UseTextFont();
    m_messages.List().SetFont(CFont::FromHandle(VkGrafic::GetGuiFont(m_hWnd)));
    m_tools.LoadImages();
    m_status.UseResolution();
}

void DeskFrame::LayOut()
{
    CRect client;
    CRect status;
    GetClientRect(client);
    m_status.GetWindowRect(status);
    const int width = client.Width();
    m_tools.MoveWindow(0, 0, width, m_tools.GetHeight());
    m_notices.MoveWindow(0, m_tools.GetHeight(), width, m_notices.GetHeight());
    int top = GetPanesTop();
    const PaneSplit::Heights heights = m_split.LayOut(client.Height() - top - status.Height());
    const auto place = [&](CWnd& wnd, int height) {
        wnd.MoveWindow(0, top, width, height);
        wnd.ShowWindow(height > 0 ? SW_SHOWNA : SW_HIDE);
        top += height;
    };
    place(m_browser, heights.logText);
    place(m_splitter, heights.bar);
    place(m_messages.List(), heights.messages);
}

// In a smaller window the menu would take a second line, or texts and buttons would be cut.
LRESULT DeskFrame::OnGetMinMaxInfo(WPARAM wParam, LPARAM sizes)
{
    const LRESULT result = CWnd::DefWindowProc(WM_GETMINMAXINFO, wParam, sizes);
    if (!m_status.GetSafeHwnd() || !m_remember) // the window is being made, or a picture of any size
        return result;
    CRect outer;
    CRect client;
    CRect status;
    GetWindowRect(outer);
    GetClientRect(client);
    m_status.GetWindowRect(status);
    int menuWidth = 0;
    for (UINT i = 0; i < static_cast<UINT>(::GetMenuItemCount(::GetMenu(m_hWnd))); ++i)
    {
        CRect item;
        ::GetMenuItemRect(m_hWnd, ::GetMenu(m_hWnd), i, &item);
        menuWidth += item.Width();
    }
    const int pane = ::MulDiv(kLeastPane, VkGrafic::GetResolution(m_hWnd), 96);
    const bool hasBoth = m_split.Shows(Pane::LogText) && m_split.Shows(Pane::Messages);
    const int panes = hasBoth ? 2 * pane + PaneSplit::kBarHeight : pane;
    POINT& least = reinterpret_cast<MINMAXINFO*>(sizes)->ptMinTrackSize;
    least.x = outer.Width() - client.Width() +
              std::max({menuWidth, m_tools.GetLeastWidth(), m_status.GetLeastWidth()});
    least.y = outer.Height() - client.Height() + GetPanesTop() + panes + status.Height();
    return result;
}

int DeskFrame::GetPanesTop()
{
    return m_tools.GetHeight() + m_notices.GetHeight();
}

void DeskFrame::MoveSplitter(int top)
{
    CRect client;
    CRect status;
    GetClientRect(client);
    m_status.GetWindowRect(status);
    const int begin = GetPanesTop();
    if (top == SplitterBar::kMiddle)
        m_split.SetShare(PaneSplit::kWhole / 2);
    else
        m_split.MoveBar(top - begin, client.Height() - begin - status.Height());
    LayOut();
    UpdateWindow(); // the bar stays under the mouse
}

void DeskFrame::SetSplit(int share)
{
    m_split.SetShare(share);
    LayOut();
}

void DeskFrame::ShowPane(Pane pane, bool show)
{
    if (m_split.Shows(pane) == show)
        return;
    const Pane active = ActivePane();
    m_split.Show(pane, show);
    LayOut();
    RefreshNotices(); // they tell of what is seen
    if (!m_split.Shows(active))
        FocusPane(active == Pane::LogText ? Pane::Messages : Pane::LogText);
}

bool DeskFrame::IsInMessages(HWND hwnd)
{
    MessageList& list = m_messages.List();
    return hwnd && (hwnd == list.m_hWnd || ::IsChild(list, hwnd));
}

// The one that has the focus, will get it back, or had it before the status bar.
Pane DeskFrame::ActivePane()
{
    const HWND focus = ::GetFocus();
    const HWND within = focus && ::IsChild(m_hWnd, focus) ? focus : m_focus;
    if (within && ::IsChild(m_hWnd, within) && !::IsChild(m_status, within))
        m_lastPane = IsInMessages(within) ? Pane::Messages : Pane::LogText;
    if (!m_split.Shows(m_lastPane))
        return m_split.Shows(Pane::LogText) ? Pane::LogText : Pane::Messages;
    return m_lastPane;
}

void DeskFrame::FocusPane(Pane pane)
{
    MessageList& list = m_messages.List();
    if (pane == Pane::Messages)
    {
        list.SetFocus();
        list.FocusARow();
    }
    else
        m_browser.SetFocus();
}

// Log text, messages and watch, and then from the beginning.
void DeskFrame::ChangePane(bool forward)
{
    std::vector<HWND> places;
    for (const Pane pane : {Pane::LogText, Pane::Messages})
        if (m_split.Shows(pane))
            places.push_back(pane == Pane::Messages ? m_messages.List().m_hWnd : m_browser.m_hWnd);
    if (m_status.Watch().IsShowing())
        places.push_back(m_status.Watch());
    const auto hasFocus = [](HWND place) { return ::GetFocus() == place || ::IsChild(place, ::GetFocus()); };
    const auto focused = std::find_if(places.begin(), places.end(), hasFocus);
    const std::size_t at = static_cast<std::size_t>(focused - places.begin()) % places.size();
    const HWND next = places[(at + (forward ? 1 : places.size() - 1)) % places.size()];
    if (next == m_status.Watch().m_hWnd)
        m_status.Watch().SetFocus();
    else
        FocusPane(IsInMessages(next) ? Pane::Messages : Pane::LogText);
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
    else if (m_status.GetSafeHwnd())
        FocusPane(m_split.Shows(Pane::LogText) ? Pane::LogText : Pane::Messages);
}

void DeskFrame::OnSettingChange(UINT flags, LPCSTR section)
{
    CWnd::OnSettingChange(flags, section);
    UseColours(); // which may be the system's
    UseSystemNumbers();
}

void DeskFrame::UseSystemNumbers()
{
    const auto read = [](LCTYPE type, std::string& text) {
        std::array<wchar_t, 20> wide = {};
        const int size =
            ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, wide.data(), static_cast<int>(wide.size()));
        if (size > 0)
            ZEMA::FromWide(wide.data(), static_cast<std::size_t>(size) - 1, text);
    };
    DigitGrouping grouping;
    read(LOCALE_STHOUSAND, grouping.separator);
    read(LOCALE_SGROUPING, grouping.sizes);
    SetDigitGrouping(grouping);
}

} // namespace logdesk
