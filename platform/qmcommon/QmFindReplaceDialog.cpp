#include "qmcommon/QmFindReplaceDialog.h"

#include "platform_resource.h"
#include "qmcommon/OwnModule.h"
#include "qmcommon/QmWindowText.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace
{

constexpr std::size_t kMostTexts = 10;
constexpr int kDistance = 4; // pixels from what was covered

// Newest first.
std::vector<std::string>& FoundTexts()
{
    static std::vector<std::string> texts;
    return texts;
}

void Remember(const std::string& text)
{
    std::vector<std::string>& texts = FoundTexts();
    texts.erase(std::remove(texts.begin(), texts.end(), text), texts.end());
    texts.insert(texts.begin(), text);
    texts.resize(std::min(texts.size(), kMostTexts));
}

std::wstring Wide(const std::string& text)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    return wide;
}

CRect WorkAreaOf(HWND hwnd)
{
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    ::GetMonitorInfo(::MonitorFromWindow(hwnd, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

} // namespace

BEGIN_MESSAGE_MAP(CQmFindReplaceDialog, CDialog)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CQmFindReplaceDialog::CQmFindReplaceDialog(IQmFindOwner& owner) : m_owner(owner), m_hook(*this) {}

CQmFindReplaceDialog::~CQmFindReplaceDialog()
{
    DestroyWindow(); // while what its last messages ask for is still there
}

// ---- Its window

bool CQmFindReplaceDialog::Open(CWnd& control, const std::vector<std::string>& places,
                                const QmFindSettings& settings)
{
    if (!m_hWnd)
    {
        m_places = places;
        m_entered = settings;
        m_state.clear();
        m_canFind = true;
        if (!CreateIndirect(QmFindDialog(PlatformModule(), IDD_FIND), &control))
            return false;
        m_hook.Attach(control.GetSafeHwnd());
        CRect over;
        CRect window;
        control.GetWindowRect(over);
        GetWindowRect(window);
        const CRect area = WorkAreaOf(control.GetSafeHwnd());
        SetWindowPos(nullptr, std::max(area.left, std::min(over.right, area.right) - window.Width()),
                     std::max(area.top, std::min(over.bottom, area.bottom) - window.Height()), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    ShowWindow(SW_SHOW);
    ::SetActiveWindow(m_hWnd);
    TakeFocus();
    return true;
}

BOOL CQmFindReplaceDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    QmMakeWideField(::GetDlgItem(m_hWnd, IDC_FIND_WHAT));
    for (const std::string& place : m_places)
        SendDlgItemMessage(IDC_FIND_IN, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(place.c_str()));
    FillTexts();
    Enter(m_entered);
    EnableFind();
    return FALSE;
}

void CQmFindReplaceDialog::TakeFocus()
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    ::SetFocus(field);
    ::SendMessage(field, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
}

void CQmFindReplaceDialog::OnDestroy()
{
    m_hook.Detach();
    CDialog::OnDestroy();
}

// Below the rectangle if there is room, else above it.
void CQmFindReplaceDialog::Uncover(const RECT& rect)
{
    CRect window;
    GetWindowRect(window);
    RECT covered = {};
    if (!m_hWnd || !::IntersectRect(&covered, window, &rect))
        return;
    const CRect area = WorkAreaOf(m_hWnd);
    const bool isBelow = rect.bottom + kDistance + window.Height() <= area.bottom;
    const LONG top = isBelow ? rect.bottom + kDistance : rect.top - kDistance - window.Height();
    if (top >= area.top)
        SetWindowPos(nullptr, window.left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---- What the user enters

// The list changes and the text stays.
void CQmFindReplaceDialog::FillTexts()
{
    const std::string text = m_entered.text;
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    m_isFilling = true;
    const auto selection = static_cast<LPARAM>(::SendMessage(field, CB_GETEDITSEL, 0, 0));
    ::SendMessageW(field, CB_RESETCONTENT, 0, 0);
    for (const std::string& found : FoundTexts())
        ::SendMessageW(field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(found).c_str()));
    QmSetWindowText(field, text);
    ::SendMessage(field, CB_SETEDITSEL, 0, selection);
    m_isFilling = false;
}

// Of an entry of the list, or of the field for -1.
std::string CQmFindReplaceDialog::TextOf(int entry)
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    if (entry < 0)
        return QmGetWindowText(field);
    const auto index = static_cast<WPARAM>(entry);
    const LRESULT size = ::SendMessageW(field, CB_GETLBTEXTLEN, index, 0);
    std::wstring wide(static_cast<std::size_t>(std::max<LRESULT>(size, 0)) + 1, L'\0');
    const LRESULT length = ::SendMessageW(field, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(wide.data()));
    std::string text;
    ZEMA::FromWide(wide.data(), static_cast<std::size_t>(std::max<LRESULT>(length, 0)), text);
    return text;
}

void CQmFindReplaceDialog::Enter(const QmFindSettings& settings)
{
    QmSetWindowText(::GetDlgItem(m_hWnd, IDC_FIND_WHAT), settings.text);
    SendDlgItemMessage(IDC_FIND_IN, CB_SETCURSEL, static_cast<WPARAM>(settings.place));
    ::CheckDlgButton(m_hWnd, IDC_FIND_CASE, settings.matchesCase);
    ::CheckDlgButton(m_hWnd, IDC_FIND_WORD, settings.isWholeWord);
    ::CheckDlgButton(m_hWnd, IDC_FIND_EXPRESSION, settings.isExpression);
    ::CheckRadioButton(m_hWnd, IDC_FIND_UP, IDC_FIND_DOWN, settings.isUp ? IDC_FIND_UP : IDC_FIND_DOWN);
}

// An entry of the list is chosen before it is in the field.
QmFindSettings CQmFindReplaceDialog::Entered(int textEntry)
{
    const auto isChecked = [this](int id) { return ::IsDlgButtonChecked(m_hWnd, id) == BST_CHECKED; };
    QmFindSettings settings;
    settings.text = TextOf(textEntry);
    settings.place = std::max(0, static_cast<int>(SendDlgItemMessage(IDC_FIND_IN, CB_GETCURSEL)));
    settings.isUp = isChecked(IDC_FIND_UP);
    settings.matchesCase = isChecked(IDC_FIND_CASE);
    settings.isWholeWord = isChecked(IDC_FIND_WORD);
    settings.isExpression = isChecked(IDC_FIND_EXPRESSION);
    return settings;
}

BOOL CQmFindReplaceDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    const bool isText = id == IDC_FIND_WHAT;
    const bool isButton = id >= IDC_FIND_CASE && id <= IDC_FIND_DOWN;
    if (m_isFilling)
        return TRUE;
    if (isText && code == CBN_DROPDOWN)
        FillTexts();
    else if ((isText && code == CBN_EDITCHANGE) || (id == IDC_FIND_IN && code == CBN_SELCHANGE) ||
             (isButton && code == BN_CLICKED))
        Changed();
    else if (isText && code == CBN_SELCHANGE)
        Changed(static_cast<int>(SendDlgItemMessage(IDC_FIND_WHAT, CB_GETCURSEL)));
    else
        return CDialog::OnCommand(wParam, lParam);
    return TRUE;
}

void CQmFindReplaceDialog::Changed(int textEntry)
{
    m_entered = Entered(textEntry);
    EnableFind();
    m_owner.OnFindChange(QmFindSettings(m_entered));
}

// ---- Finding

void CQmFindReplaceDialog::SetState(const std::string& state, bool canFind)
{
    m_canFind = canFind;
    if (!m_hWnd)
        return;
    if (state != m_state)
        QmSetWindowText(::GetDlgItem(m_hWnd, IDC_FIND_STATE), state);
    m_state = state;
    EnableFind();
}

// A button that is disabled gives up the focus first, or no key would reach the dialog any more.
void CQmFindReplaceDialog::EnableFind()
{
    const HWND button = ::GetDlgItem(m_hWnd, IDOK);
    const bool isEnabled = m_canFind && !m_entered.text.empty();
    if (isEnabled == (::IsWindowEnabled(button) != FALSE))
        return;
    if (!isEnabled && ::GetFocus() == button)
        TakeFocus();
    ::EnableWindow(button, isEnabled);
}

void CQmFindReplaceDialog::OnOK()
{
    Find(Entered());
}

void CQmFindReplaceDialog::Find(const QmFindSettings& settings)
{
    m_entered = settings;
    if (!m_canFind || settings.text.empty())
        return;
    Remember(settings.text);
    FillTexts();
    m_owner.OnFindNext(settings);
}

BOOL CQmFindReplaceDialog::PreTranslateMessage(MSG* message)
{
    if (message->message != WM_KEYDOWN || message->wParam != VK_F3)
        return CDialog::PreTranslateMessage(message);
    QmFindSettings settings = Entered();
    settings.isUp = ::GetKeyState(VK_SHIFT) < 0;
    Find(settings);
    return TRUE;
}

void CQmFindReplaceDialog::OnCancel()
{
    const HWND control = m_hook.GetHookedWindow();
    DestroyWindow();
    m_owner.OnFindClose();
    ::SetFocus(control); // last: whoever hears of it may end the control, and this with it
}
