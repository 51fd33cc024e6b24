#include "logdesk/EngineFrame.h"

#include "logdesk/EngineText.h"
#include "logdesk/FrameColours.h"
#include "logdesk/NumberText.h"
#include "logdesk/Resource.h"
#include "logdesk/SelectMessage.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr UINT kEngineStatusId = 101;
constexpr UINT kEngineNoticesId = 102;
constexpr UINT kEngineListId = 104;
constexpr UINT kEnginePublish = WM_APP;
constexpr UINT_PTR kEngineStatusTimer = 1;
constexpr UINT kEngineStatusInterval = 250; // milliseconds
constexpr COLORREF kEngineInactiveHighlight = RGB(200, 220, 240);
constexpr ULONGLONG kSettleWait = 20'000; // milliseconds

LPCSTR RegisterEngineFrameClass()
{
    constexpr LPCSTR kClass = "LogDeskEngineFrame";
    WNDCLASS frame = {};
    frame.lpfnWndProc = ::DefWindowProc;
    frame.hInstance = AfxGetInstanceHandle();
    frame.hIcon = ::LoadIcon(frame.hInstance, MAKEINTRESOURCE(IDI_LOGDESK));
    frame.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    frame.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1);
    frame.lpszClassName = kClass;
    AfxRegisterClass(&frame);
    return kClass;
}

} // namespace

BEGIN_MESSAGE_MAP(EngineFrame, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_CLOSE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_SETTINGCHANGE()
    ON_MESSAGE(WM_DPICHANGED, &ThisClass::OnDpiChanged)
    ON_WM_INITMENUPOPUP()
    ON_WM_TIMER()
    ON_MESSAGE(kEnginePublish, &ThisClass::OnPublish)
END_MESSAGE_MAP()

EngineFrame::EngineFrame(engine::EngineUrl url)
    : m_url(std::move(url)),
      m_list([this](IQmCommand& collector) { ScanMessages(collector); }, [this] { Wake(); }),
      m_status([this] { PressStatusButton(); }, [this] { ShowAllRows(); }, [] {}, [] {}),
      m_fileCommands([this](IQmCommand& collector) {
          m_list.ScanForFile(collector);
          collector.AddSeparator();
          AddCommand(collector, {"E&xit", [this] { PostMessage(WM_CLOSE); }, VK_F4, kQmAlt});
      }),
      m_editCommands([this](IQmCommand& collector) { m_list.ScanEdit(collector); }),
      m_viewCommands([this](IQmCommand& collector) { ScanView(collector); }),
      m_helpCommands([this](IQmCommand& collector) {
          AddCommand(collector, {"&About LogDesk...", [this] { CDialog(IDD_ABOUT, this).DoModal(); }});
      })
{
}

EngineFrame::~EngineFrame() = default;

BOOL EngineFrame::CreateFrame(const std::optional<Place>& place)
{
    m_remember = !place;
    if (m_remember)
        m_options = ReadWindowOptions();
    else
        m_options.place = *place;
    CMenu bar;
    bar.CreateMenu();
    for (const char* const caption : {"&File", "Ed&it", "&Messages", "&View", "He&lp"})
    {
        CMenu popup;
        popup.CreatePopupMenu();
        bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), caption);
    }
    const Place& at = m_options.place;
    if (!CreateEx(0, RegisterEngineFrameClass(), EngineTitle(m_url).c_str(),
                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, at.left, at.top, at.width, at.height, nullptr, bar))
        return FALSE;
    bar.Detach(); // the window's now
    if (m_remember)
        KeepOnScreen(*this);
    Refresh();
    return TRUE;
}

int EngineFrame::OnCreate(LPCREATESTRUCT)
{
    const CRect empty;
    if (!m_notices.Create(this, kEngineNoticesId) ||
        !m_list.Create(WS_CHILD | WS_VISIBLE, empty, this, kEngineListId) ||
        !m_status.Create(this, kEngineStatusId))
        return -1;
    m_hwnd = m_hWnd;
    m_service = std::make_unique<engineview::EngineService>(
        m_url,
        [url = m_url](engine::IsCancelled isCancelled) {
            return engine::MakeHttpClient(url, std::move(isCancelled));
        },
        [this] { Wake(); });
    m_menuDrawer.Attach(*this);
    m_list.SetSavesState(false);
    m_list.UseFirstLook(m_options.place.width);
    m_list.ModifyStyle(0, RVS_TIPS);
    m_list.SetFollowPauses(true);
    m_list.SetGuardsFormulas(m_options.guardFormulas);
    m_list.ShowReport(true);
    m_list.SetShowPreview(false);
    m_service->SetViewer(&m_list);
    UseColours();
    UseResolution();
    SetTimer(kEngineStatusTimer, kEngineStatusInterval, nullptr);
    return 0;
}

void EngineFrame::OnDestroy()
{
    m_service.reset();
    QmHandler<CWnd>::OnDestroy();
    ::PostQuitMessage(0);
}

void EngineFrame::OnClose()
{
    if (m_remember)
        WriteWindowOptions(*this, m_options);
    DestroyWindow();
}

void EngineFrame::ShowFrame(int show)
{
    const bool isUsual = show == SW_SHOWNORMAL || show == SW_SHOWDEFAULT || show == SW_SHOW;
    ShowWindow(m_options.maximised && isUsual ? SW_SHOWMAXIMIZED : show);
    UpdateWindow();
}

// ---- Layout and look

void EngineFrame::OnSize(UINT type, int width, int height)
{
    if (type == SIZE_MINIMIZED || !m_status.GetSafeHwnd())
        return;
    m_status.SendMessage(WM_SIZE, type, MAKELPARAM(width, height));
    LayOut();
    m_status.LayOut();
}

void EngineFrame::LayOut()
{
    CRect client;
    CRect status;
    GetClientRect(client);
    m_status.GetWindowRect(status);
    const int top = m_notices.GetHeight();
    m_notices.MoveWindow(0, 0, client.Width(), top);
    m_list.MoveWindow(0, top, client.Width(), std::max(0, client.Height() - top - status.Height()));
}

void EngineFrame::OnSetFocus(CWnd*)
{
    if (!m_list.GetSafeHwnd())
        return;
    m_list.SetFocus();
    m_list.FocusARow();
}

void EngineFrame::OnSettingChange(UINT flags, LPCSTR section)
{
    CWnd::OnSettingChange(flags, section);
    UseColours();
}

LRESULT EngineFrame::OnDpiChanged(WPARAM, LPARAM place)
{
    const CRect wanted = *reinterpret_cast<const RECT*>(place);
    UseResolution();
    MoveWindow(wanted.left, wanted.top, wanted.Width(), wanted.Height());
    LayOut();
    return 0;
}

void EngineFrame::UseResolution()
{
    m_list.SetFont(CFont::FromHandle(VkGrafic::GetGuiFont(m_hWnd)));
    m_status.UseResolution();
}

void EngineFrame::UseColours()
{
    UseFrameColours(m_hWnd, IsDark(m_options.look.colours, IsSystemDark()));
    const bool hasOwn = VkGrafic::IsHighContrast() || VkGrafic::WindowColors(m_list).IsDark();
    m_list.ModifyProperty(RVP_INACTIVEHIGHLIGHT, hasOwn ? -1 : std::int64_t{kEngineInactiveHighlight});
}

// ---- What comes from the engine

// On any thread. One message is enough however often it is called.
void EngineFrame::Wake()
{
    if (!m_isWoken.exchange(true))
        ::PostMessage(m_hwnd, kEnginePublish, 0, 0);
}

LRESULT EngineFrame::OnPublish(WPARAM, LPARAM)
{
    Publish();
    return 0;
}

// Focus and selection stay with their rows when another view comes.
void EngineFrame::Publish()
{
    if (!m_service)
        return;
    m_isWoken = false;
    const ListTags place = TagsOf(m_list.Place(), m_list.GetMessageOffset(), *m_service);
    const engineview::EngineService::News news = m_service->Publish();
    if (news.isOtherView || news.hasCome)
        m_list.FlushCacheMsgData();
    if (news.isOtherView)
    {
        m_list.SetRedraw(0);
        m_list.TakeOver();
        m_list.RefreshHeader();
        const ListRows rows = RowsOf(place, m_list.GetMessageOffset(), *m_service);
        m_list.GoTo(rows);
        if (rows.focus && rows.first == rows.last) // in sight, even where the list follows
            SelectMessage(m_list, m_list.GetMessageOffset() + static_cast<std::uint32_t>(*rows.focus));
        else if (m_service->IsSorted() && !rows.focus)
            m_list.SetScrollPos32(1, 0, 1); // what sorts first
        m_list.SetRedraw(1);
        Refresh();
    }
    const auto top = static_cast<std::uint32_t>(std::max(0, m_list.GetTopIndex()));
    m_service->SetSeen(top, top + static_cast<std::uint32_t>(std::max(1, m_list.GetVisibleCount(TRUE))));
}

void EngineFrame::OnTimer(UINT_PTR timer)
{
    if (timer != kEngineStatusTimer)
    {
        Default();
        return;
    }
    ++m_ticks;
    Publish();
    Refresh();
}

void EngineFrame::Tell(const std::string& text)
{
    m_answer.Clear();
    m_answer.Add(text, m_ticks, kTellTicks);
    Refresh();
}

void EngineFrame::Refresh()
{
    if (!m_service)
        return;
    m_told.Add(m_service->TakeNotices(), m_ticks, kServiceTicks);
    std::vector<std::string> lines = m_answer.Lines(m_ticks);
    for (const std::string& told : m_told.Lines(m_ticks))
        lines.push_back(told);
    if (m_notices.SetLines(lines))
        LayOut();

    StatusTexts texts;
    const std::string bounds = EngineBoundsText(m_service->GetBounds());
    texts.session = bounds.empty() ? EngineSessionText(m_url) : bounds + ". Whole session";
    texts.link = bounds.empty() ? "" : "Whole session";
    if (const engine::ShippedRow* const row = m_service->RowOf(FocusedId()))
        texts.place = row->log + ", number " + std::to_string(row->number);
    texts.messages = EngineRowsText(m_service->GetState());
    if (m_service->IsBusy())
        texts.button = "Cancel";
    else if (m_service->IsFiltered() && bounds.empty())
        texts.button = "Remove filters";
    texts.follow = m_list.IsFollowing() ? "Following"
                   : m_list.GetFollow() ? "Following paused"
                                        : "Not following";
    m_status.SetTexts(texts);
}

void EngineFrame::Settle()
{
    const ULONGLONG end = ::GetTickCount64() + kSettleWait;
    engineview::EngineService::State state;
    do
    {
        MSG message = {};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
        ::Sleep(10);
        Publish();
        m_list.TakeOver();
        state = m_service->GetState();
    } while (
        ::GetTickCount64() < end && !state.isLost &&
        (state.isBusy || !m_service->IsHere() ||
         (state.span && state.searchedTo > 0 && !state.isCutOff && state.searchedTo < state.span->last)));
    Refresh();
}

} // namespace logdesk
