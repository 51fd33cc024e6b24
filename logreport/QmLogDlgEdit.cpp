#include "logreport/QmLogDlgEdit.h"

#include "logreport/OwnDialog.h"
#include "qmcommon/QmClipboard.h"
#include "qmcommon/QmWindowText.h"
#include "resources/qmlog_resource.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "zemacore/AppDataManager.h"
#include "zemacore/WideText.h"

#include <utility>

namespace
{

constexpr char kLayoutName[] = "Log.Edit";
constexpr char kWrapKey[] = "Wrap";
constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshInterval = 500; // milliseconds

struct MessageField
{
    ILogMsgDataKind kind;
    int label, field;
    int column;
};

constexpr MessageField kMessageFields[] = {
    {kLogMsgLevel, IDC_LEVEL_LABEL, IDC_LEVEL, 0},
    {kLogMsgTopic, IDC_TOPIC_LABEL, IDC_TOPIC, 1},
    {kLogMsgTimestamp, IDC_TIMESTAMP_LABEL, IDC_TIMESTAMP, 0},
    {kLogMsgSource, IDC_SOURCE_LABEL, IDC_SOURCE, 1},
    {kLogMsgSourceLine, IDC_SOURCE_LINE_LABEL, IDC_SOURCE_LINE, 0},
    {kLogMsgSourceColumn, IDC_SOURCE_COLUMN_LABEL, IDC_SOURCE_COLUMN, 1},
    {kLogMsgModule, IDC_MODULE_LABEL, IDC_MODULE, 0},
    {kLogMsgRuntimeFile, IDC_RUNTIME_FILE_LABEL, IDC_RUNTIME_FILE, 1},
    {kLogMsgRuntimeContext, IDC_RUNTIME_CONTEXT_LABEL, IDC_RUNTIME_CONTEXT, 0},
    {kLogMsgLine, IDC_LINE_LABEL, IDC_LINE, 1},
    {kLogMsgErrorNumber, IDC_ERROR_NUMBER_LABEL, IDC_ERROR_NUMBER, 0},
    {kLogMsgWho, IDC_WHO_LABEL, IDC_WHO, 1}};
constexpr int kColumns = 2;

IProfileStore* EditProfile()
{
    IAppDataManager* const manager = AppDataManager::LoadAppDataManager();
    return manager ? manager->GetProfileStore() : nullptr;
}

bool IsEditField(HWND window)
{
    char name[8] = "";
    return ::GetClassName(window, name, sizeof(name)) > 0 && ::lstrcmpi(name, "EDIT") == 0;
}

bool HasSelection(HWND edit)
{
    DWORD start = 0;
    DWORD end = 0;
    ::SendMessage(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return start != end;
}

LONG LineHeightOf(HWND edit)
{
    const HDC dc = ::GetDC(edit);
    const HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HFONT>(::SendMessage(edit, WM_GETFONT, 0, 0)));
    TEXTMETRIC metrics = {};
    ::GetTextMetrics(dc, &metrics);
    ::SelectObject(dc, old);
    ::ReleaseDC(edit, dc);
    return metrics.tmHeight;
}

} // namespace

BEGIN_MESSAGE_MAP(CQmLogDlgEdit, CDialog)
    ON_WM_TIMER()
    ON_BN_CLICKED(IDC_PREVIOUS, &CQmLogDlgEdit::OnPrevious)
    ON_BN_CLICKED(IDC_NEXT, &CQmLogDlgEdit::OnNext)
    ON_BN_CLICKED(IDC_WRAP, &CQmLogDlgEdit::OnWrap)
END_MESSAGE_MAP()

CQmLogDlgEdit::CQmLogDlgEdit(logreport::ServiceGetter service, CWnd* owner, std::uint32_t id)
    : m_service(std::move(service)), m_firstId(id), m_sizer(kLayoutName, kColumns)
{
    InitModalIndirect(logreport::FindOwnDialog(IDD_LOG_MESSAGE), owner);
    AddToSizer();
}

CQmLogDlgEdit::~CQmLogDlgEdit()
{
    DestroyWindow(); // while what its last messages ask for is still there
    ::DestroyIcon(m_icon);
}

void CQmLogDlgEdit::AddToSizer()
{
    for (const MessageField& field : kMessageFields)
    {
        m_sizer.Add(field.label, field.column, 0);
        m_sizer.Add(field.field, field.column, kSizerWider);
    }
    m_sizer.Add(IDC_BODY, 0, kSizerWider | kSizerHigher, kColumns);
    m_sizer.Add(IDC_WRAP, 0, kSizerToBottom);
    m_sizer.Add(IDC_NOTICE, 0, kSizerWider | kSizerToBottom, kColumns);
    for (const int button : {IDC_PREVIOUS, IDC_NEXT, IDOK})
        m_sizer.Add(button, 0, kSizerToRight | kSizerToBottom);
}

// ---- The controls

BOOL CQmLogDlgEdit::OnInitDialog()
{
    MakeFieldsWide();
    CDialog::OnInitDialog();
    m_previous.SetWindowText("&Previous");
    m_previous.SetImage("DisplayPrevious.ico");
    m_previous.SetTip("Previous message");
    m_next.SetImage("DisplayNext.ico");
    m_next.SetTip("Next message");
    m_images.Load(VkGrafic::GetResolution(m_hWnd));
    MakeBodyFont();
    m_sizer.Start(m_hWnd);
    IProfileStore* const profile = EditProfile();
    if (profile && profile->GetInteger(kLayoutName, kWrapKey, 0) != 0)
    {
        ::CheckDlgButton(m_hWnd, IDC_WRAP, BST_CHECKED);
        WrapBody(true);
    }
    m_message.Show(m_service(), m_firstId);
    ShowMessage(Place::Top);
    SetTimer(kRefreshTimer, kRefreshInterval, nullptr);
    ::SetFocus(::GetDlgItem(m_hWnd, IDC_BODY));
    return FALSE;
}

void CQmLogDlgEdit::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_PREVIOUS, m_previous);
    DDX_Control(exchange, IDC_NEXT, m_next);
}

// The dialog's own fields know the characters of the code page only.
void CQmLogDlgEdit::MakeFieldsWide()
{
    for (const MessageField& field : kMessageFields)
        MakeFieldAgain(field.field, ES_AUTOHSCROLL);
    WrapBody(false);
}

// With other styles: the field lives on by id, place, font and position in the tab order.
HWND CQmLogDlgEdit::MakeFieldAgain(int id, DWORD styles)
{
    const HWND former = ::GetDlgItem(m_hWnd, id);
    const DWORD border = static_cast<DWORD>(::GetWindowLong(former, GWL_STYLE)) & WS_BORDER;
    CRect place;
    ::GetWindowRect(former, place);
    ScreenToClient(place);
    const HWND field =
        ::CreateWindowExW(static_cast<DWORD>(::GetWindowLong(former, GWL_EXSTYLE)), L"EDIT", L"",
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | border | ES_READONLY | styles, place.left,
                          place.top, place.Width(), place.Height(), m_hWnd,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), logreport::OwnModule(), nullptr);
    if (!field)
        return former;
    ::SendMessage(field, WM_SETFONT, static_cast<WPARAM>(::SendMessage(former, WM_GETFONT, 0, 0)), FALSE);
    ::SetWindowPos(field, former, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (::GetFocus() == former)
        ::SetFocus(field);
    ::DestroyWindow(former);
    return field;
}

void CQmLogDlgEdit::MakeBodyFont()
{
    const int dpi = VkGrafic::GetResolution(m_hWnd);
    LOGFONT font = {};
    ::GetObject(::GetStockObject(ANSI_FIXED_FONT), sizeof(font), &font);
    font.lfHeight = ::MulDiv(font.lfHeight, dpi, 96);
    font.lfWidth = 0;
    ::lstrcpy(font.lfFaceName, "Courier New"); // the stock font has no larger sizes
    if (dpi == 96 || !m_bodyFont.CreateFontIndirect(&font))
        m_bodyFont.CreateStockObject(ANSI_FIXED_FONT);
    GetDlgItem(IDC_BODY)->SetFont(&m_bodyFont);
}

// ---- The message

void CQmLogDlgEdit::ShowMessage(Place place)
{
    for (const MessageField& field : kMessageFields)
        QmSetWindowText(::GetDlgItem(m_hWnd, field.field), m_message.Text(field.kind));
    SetBody(place);
    SetDlgItemText(IDC_NOTICE, m_message.IsInView() ? "" : "No longer in the view");
    ShowIcon();
    ShowSteps();
}

void CQmLogDlgEdit::SetBody(Place place)
{
    const LRESULT line = SendDlgItemMessage(IDC_BODY, EM_GETFIRSTVISIBLELINE);
    const std::string text = m_message.Text(kLogMsgBody);
    QmSetWindowText(::GetDlgItem(m_hWnd, IDC_BODY), text);
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, m_bodyFont);
    const bool isIn = GraphicFont(dc).Has(dc, text.data(), static_cast<int>(text.size()));
    const HFONT font = isIn ? m_bodyFont : VkGrafic::GetGuiFont(m_hWnd); // which has all scripts
    SendDlgItemMessage(IDC_BODY, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (place == Place::Kept)
        SendDlgItemMessage(IDC_BODY, EM_LINESCROLL, 0, line);
}

void CQmLogDlgEdit::ShowIcon()
{
    const HICON icon = ::ImageList_GetIcon(m_images.List()->GetSafeHandle(), m_message.Image(), ILD_NORMAL);
    SendDlgItemMessage(IDC_LEVEL_ICON, STM_SETICON, reinterpret_cast<WPARAM>(icon));
    ::DestroyIcon(std::exchange(m_icon, icon));
}

// A button that is disabled gives up the focus first, or no key would reach the dialog any more.
void CQmLogDlgEdit::ShowSteps()
{
    ILogMsgService* const service = m_service();
    for (const auto& [button, direction] :
         {std::pair(&m_previous, Direction::Previous), std::pair(&m_next, Direction::Next)})
    {
        const bool isThere = m_message.Neighbour(service, direction).has_value();
        if (isThere == (button->IsWindowEnabled() != FALSE))
            continue;
        if (::GetFocus() == button->m_hWnd)
            SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(::GetDlgItem(m_hWnd, IDC_BODY)), TRUE);
        button->EnableWindow(isThere);
    }
}

// Messages may have arrived, and the view may be another one.
void CQmLogDlgEdit::OnTimer(UINT_PTR id)
{
    if (id != kRefreshTimer)
        return CDialog::OnTimer(id);
    if (m_message.Refresh(m_service()))
        ShowMessage(Place::Kept);
    else
        ShowSteps();
}

void CQmLogDlgEdit::Step(Direction direction)
{
    m_message.Refresh(m_service());
    const std::optional<std::uint32_t> id = m_message.Neighbour(m_service(), direction);
    const bool isOther = id && m_message.Show(m_service(), *id);
    ShowMessage(isOther ? Place::Top : Place::Kept);
}

void CQmLogDlgEdit::OnPrevious()
{
    Step(Direction::Previous);
}

void CQmLogDlgEdit::OnNext()
{
    Step(Direction::Next);
}

// ---- The body

void CQmLogDlgEdit::OnWrap()
{
    const bool wrap = ::IsDlgButtonChecked(m_hWnd, IDC_WRAP) == BST_CHECKED;
    WrapBody(wrap);
    if (IProfileStore* const profile = EditProfile())
        profile->SetInteger(kLayoutName, kWrapKey, wrap);
}

// A field cannot change its wrapping while it lives. What was at the top stays there.
void CQmLogDlgEdit::WrapBody(bool wrap)
{
    const LRESULT line = SendDlgItemMessage(IDC_BODY, EM_GETFIRSTVISIBLELINE);
    const LRESULT top = SendDlgItemMessage(IDC_BODY, EM_LINEINDEX, static_cast<WPARAM>(line));
    const DWORD across = wrap ? 0 : ES_AUTOHSCROLL | WS_HSCROLL;
    MakeFieldAgain(IDC_BODY, ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL | across);
    SetBody(Place::Top);
    const LRESULT shown = SendDlgItemMessage(IDC_BODY, EM_LINEFROMCHAR, static_cast<WPARAM>(top));
    SendDlgItemMessage(IDC_BODY, EM_LINESCROLL, 0, shown);
}

bool CQmLogDlgEdit::BodyScrolls() const
{
    const HWND body = ::GetDlgItem(m_hWnd, IDC_BODY);
    CRect client;
    ::GetClientRect(body, client);
    return ::SendMessage(body, EM_GETLINECOUNT, 0, 0) * LineHeightOf(body) > client.Height();
}

// ---- Keys

BOOL CQmLogDlgEdit::PreTranslateMessage(MSG* message)
{
    const bool isKey = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (isKey && (OnStepKey(*message) || OnTextKey(*message)))
        return TRUE;
    return CDialog::PreTranslateMessage(message);
}

bool CQmLogDlgEdit::OnStepKey(const MSG& message)
{
    const bool isAlt = message.message == WM_SYSKEYDOWN;
    const WPARAM key = message.wParam;
    const bool isArrowUp = isAlt && (key == VK_LEFT || key == VK_UP);
    const bool isArrowDown = isAlt && (key == VK_RIGHT || key == VK_DOWN);
    const bool isPage = key == VK_PRIOR || key == VK_NEXT;
    if (!isArrowUp && !isArrowDown && !isPage)
        return false;
    if (isPage && !isAlt && ::GetFocus() == ::GetDlgItem(m_hWnd, IDC_BODY) && BodyScrolls())
        return false;
    Step(isArrowUp || key == VK_PRIOR ? Direction::Previous : Direction::Next);
    return true;
}

// In a field they are for its text, elsewhere for the body.
bool CQmLogDlgEdit::OnTextKey(const MSG& message)
{
    if (message.message != WM_KEYDOWN || ::GetKeyState(VK_CONTROL) >= 0)
        return false;
    const HWND focused = ::GetFocus();
    const HWND body = ::GetDlgItem(m_hWnd, IDC_BODY);
    const HWND field = IsEditField(focused) ? focused : body;
    if (message.wParam == 'A')
    {
        ::SetFocus(field);
        ::SendMessage(field, EM_SETSEL, 0, -1);
        return true;
    }
    if (message.wParam != 'C' || HasSelection(field))
        return false;
    ZEMA::WideString text;
    const std::string shown = m_message.Text(kLogMsgBody);
    ZEMA::ToWide(shown.data(), shown.size(), text);
    QmSetClipboard(m_hWnd, CF_UNICODETEXT, text.c_str(), (text.size() + 1) * sizeof(ZEMA::WideChar));
    return true;
}
