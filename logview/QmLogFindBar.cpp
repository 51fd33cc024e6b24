#include "logview/QmLogFindBar.h"

#include "logview/QmLogFinder.h"
#include "qmcommon/QmModule.h"
#include "qmcommon/QmWindowText.h"
#include "resources/qmlog_resource.h"
#include "vkgrafic/WindowColors.h"
#include "zemacore/WideText.h"

#include <algorithm>

using VkGrafic::UiColor;

BEGIN_MESSAGE_MAP(CQmLogFindBar, CDialog)
    ON_WM_SIZE()
    ON_MESSAGE(WM_CTLCOLORDLG, &CQmLogFindBar::OnCtlColor)
    ON_MESSAGE(WM_CTLCOLORSTATIC, &CQmLogFindBar::OnCtlColor)
    ON_MESSAGE(WM_CTLCOLOREDIT, &CQmLogFindBar::OnCtlColor)
    ON_MESSAGE(WM_CTLCOLORLISTBOX, &CQmLogFindBar::OnCtlColor)
END_MESSAGE_MAP()

namespace
{

constexpr int kMostCharacters = 255;
constexpr int kLeastStateWidths = 18; // of the state in the first line, as wide as a line is high

LPCDLGTEMPLATE FindBarTemplate()
{
    static const char place = 0;
    return QmFindDialog(QmModuleOf(&place), IDD_LOG_FIND);
}

} // namespace

CQmLogFindBar::~CQmLogFindBar()
{
    DestroyWindow();
}

bool CQmLogFindBar::Open(CWnd& text)
{
    if (!m_hWnd && !CreateIndirect(FindBarTemplate(), &text))
        return false;
    ShowWindow(SW_SHOW);
    return true;
}

BOOL CQmLogFindBar::OnInitDialog()
{
    CDialog::OnInitDialog();
    QmMakeWideField(::GetDlgItem(m_hWnd, IDC_FIND_WHAT));
    m_buttons[0].SubclassWindow(::GetDlgItem(m_hWnd, IDOK));
    m_buttons[1].SubclassWindow(::GetDlgItem(m_hWnd, IDC_FIND_BACK));
    ::SendDlgItemMessage(m_hWnd, IDC_FIND_WHAT, CB_LIMITTEXT, kMostCharacters, 0);
    CRect rect;
    GetWindowRect(rect);
    m_lineHeight = rect.Height();
    ::GetWindowRect(::GetDlgItem(m_hWnd, IDC_FIND_STATE), rect);
    ScreenToClient(rect);
    m_stateLeft = rect.left;
    m_stateHeight = rect.Height();

    const std::pair<int, const char*> tips[] = {
        {IDOK, "Next match (F3)"},
        {IDC_FIND_BACK, "Previous match (Shift+F3)"},
        {IDC_FIND_CASE, "Capitals and small letters differ"},
        {IDC_FIND_WORDS, "No letter, digit or underscore touches a match"},
        {IDC_FIND_EXPRESSION, "Regular expression, as Perl has them"},
    };
    for (std::size_t i = 0; i < m_tips.size(); ++i)
        m_tips[i].Show(::GetDlgItem(m_hWnd, tips[i].first), tips[i].second);
    return FALSE;
}

// The system's own colours, unless the window is dark.
LRESULT CQmLogFindBar::OnCtlColor(WPARAM dc, LPARAM)
{
    const VkGrafic::WindowColors colors(m_hWnd);
    if (!colors.IsDark())
        return Default();
    const UINT message = GetCurrentMessage()->message;
    const bool isField = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const UiColor ground = isField ? UiColor::Window : UiColor::Face;
    ::SetTextColor(reinterpret_cast<HDC>(dc), colors[isField ? UiColor::WindowText : UiColor::FaceText]);
    ::SetBkColor(reinterpret_cast<HDC>(dc), colors[ground]);
    return reinterpret_cast<LRESULT>(colors.Brush(ground));
}

void CQmLogFindBar::SetText(const std::string& text)
{
    m_isFilling = true;
    QmSetWindowText(::GetDlgItem(m_hWnd, IDC_FIND_WHAT), text);
    m_isFilling = false;
}

void CQmLogFindBar::TakeFocus(const std::string& text)
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    if (!text.empty())
    {
        SetText(text);
        Change();
    }
    ::SetFocus(field);
    ::SendMessage(field, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
}

int CQmLogFindBar::GetHeight(int width) const
{
    const bool hasRoom = width >= m_stateLeft + kLeastStateWidths * m_stateHeight;
    return hasRoom ? m_lineHeight : 2 * m_lineHeight;
}

void CQmLogFindBar::OnSize(UINT, int width, int height)
{
    const HWND state = ::GetDlgItem(m_hWnd, IDC_FIND_STATE);
    if (!state || m_lineHeight == 0)
        return;
    const bool isBelow = height > m_lineHeight;
    CRect label;
    ::GetWindowRect(::GetDlgItem(m_hWnd, IDC_FIND_LABEL), label);
    ScreenToClient(label);
    const int border = static_cast<int>(label.left);
    const int left = isBelow ? border : m_stateLeft;
    const int top = static_cast<int>(label.top) + (isBelow ? m_lineHeight - 1 : 0);
    ::MoveWindow(state, left, top, std::max(width - left - border, 0), m_stateHeight, TRUE);
}

void CQmLogFindBar::ShowState(const std::string& state)
{
    if (!m_hWnd || state == m_state)
        return;
    m_state = state;
    QmSetWindowText(::GetDlgItem(m_hWnd, IDC_FIND_STATE), state);
    m_stateTip.Show(::GetDlgItem(m_hWnd, IDC_FIND_STATE), state.c_str());
}

// An entry of the list, or the field for -1.
std::string CQmLogFindBar::TextOf(int entry)
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    const std::vector<std::string>& history = m_finder.History();
    if (entry >= 0 && static_cast<std::size_t>(entry) < history.size())
        return history[static_cast<std::size_t>(entry)];
    return QmGetWindowText(field);
}

// The list changes and the text stays.
void CQmLogFindBar::FillHistory()
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    const std::string text = TextOf(-1);
    const auto selection = static_cast<LPARAM>(::SendMessage(field, CB_GETEDITSEL, 0, 0));
    m_isFilling = true;
    ::SendMessageW(field, CB_RESETCONTENT, 0, 0);
    for (const std::string& each : m_finder.History())
    {
        ZEMA::WideString wide;
        ZEMA::ToWide(each.data(), each.size(), wide);
        ::SendMessageW(field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str()));
    }
    QmSetWindowText(field, text);
    ::SendMessage(field, CB_SETEDITSEL, 0, selection);
    m_isFilling = false;
}

void CQmLogFindBar::Change(int entry)
{
    const auto isChecked = [this](int id) { return ::IsDlgButtonChecked(m_hWnd, id) == BST_CHECKED; };
    m_finder.Enter(TextOf(entry),
                   {isChecked(IDC_FIND_CASE), isChecked(IDC_FIND_WORDS), isChecked(IDC_FIND_EXPRESSION)});
}

BOOL CQmLogFindBar::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (m_isFilling)
        return TRUE;
    if (id == IDC_FIND_WHAT && code == CBN_DROPDOWN)
        FillHistory();
    else if (id == IDC_FIND_WHAT && code == CBN_EDITCHANGE)
        Change();
    else if (id == IDC_FIND_WHAT && code == CBN_SELCHANGE) // it is not in the field yet
        Change(static_cast<int>(::SendDlgItemMessage(m_hWnd, IDC_FIND_WHAT, CB_GETCURSEL, 0, 0)));
    else if (id >= IDC_FIND_CASE && id <= IDC_FIND_EXPRESSION && code == BN_CLICKED)
        Change();
    else if (id == IDC_FIND_BACK && code == BN_CLICKED)
        m_finder.Go(false);
    else if (code == BN_SETFOCUS || code == BN_KILLFOCUS || code == CBN_SETFOCUS || code == CBN_KILLFOCUS)
        m_finder.Redraw(); // the selection's colours tell whether the focus is here
    else
        return CDialog::OnCommand(wParam, lParam);
    return TRUE;
}

BOOL CQmLogFindBar::PreTranslateMessage(MSG* message)
{
    const HWND field = ::GetDlgItem(m_hWnd, IDC_FIND_WHAT);
    const bool isInField = message->hwnd == field || ::IsChild(field, message->hwnd);
    const bool isOpen = ::SendMessage(field, CB_GETDROPPEDSTATE, 0, 0) != 0;
    const bool finds = message->wParam == VK_F3 || (message->wParam == VK_RETURN && isInField && !isOpen);
    if (message->message != WM_KEYDOWN || !finds)
        return CDialog::PreTranslateMessage(message);
    m_finder.Go(::GetKeyState(VK_SHIFT) >= 0);
    return TRUE;
}

void CQmLogFindBar::OnOK()
{
    m_finder.Go(true);
}

void CQmLogFindBar::OnCancel()
{
    if (!m_finder.Cancel())
        m_finder.Close();
}
