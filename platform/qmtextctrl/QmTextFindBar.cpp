#include "QmTextFindBar.h"

#include "platform_resource.h"
#include "qmcommon/OwnModule.h"
#include "qmcommon/QmWindowText.h"
#include "qmtextctrl/QmTextCtrl.h"
#include "zemacore/WideText.h"

BEGIN_MESSAGE_MAP(CQmTextFindBar, CDialog)
    ON_BN_CLICKED(IDC_FIND_PREVIOUS, &CQmTextFindBar::OnPrevious)
    ON_EN_CHANGE(IDC_FIND_TEXT, &CQmTextFindBar::OnTextChange)
END_MESSAGE_MAP()

namespace
{
constexpr int kMaxTextLength = 255;
} // namespace

CQmTextFindBar::CQmTextFindBar(CQmTextCtrl& textCtrl) : m_textCtrl(textCtrl) {}

CQmTextFindBar::~CQmTextFindBar() = default;

bool CQmTextFindBar::Open()
{
    if (!m_hWnd)
    {
        if (!CreateIndirect(QmFindDialog(PlatformModule(), IDD_FIND_BAR), &m_textCtrl))
            return false;
        QmMakeWideField(::GetDlgItem(m_hWnd, IDC_FIND_TEXT));
        ::SendDlgItemMessage(m_hWnd, IDC_FIND_TEXT, EM_LIMITTEXT, kMaxTextLength, 0);
        CRect rect;
        GetWindowRect(rect);
        m_height = rect.Height();
    }
    m_open = true;
    return true;
}

void CQmTextFindBar::TakeFocus(const char* text)
{
    const HWND edit = ::GetDlgItem(m_hWnd, IDC_FIND_TEXT);
    QmSetWindowText(edit, text);
    ShowFound(true);
    ShowWindow(SW_SHOW);
    ::SendMessage(edit, EM_SETSEL, 0, -1);
    ::SetFocus(edit);
}

void CQmTextFindBar::Close()
{
    m_open = false;
    ShowWindow(SW_HIDE);
}

int CQmTextFindBar::GetShownHeight() const
{
    return m_hWnd && m_open ? m_height : 0;
}

void CQmTextFindBar::ShowFound(bool found)
{
    if (m_hWnd)
        SetDlgItemText(IDC_FIND_STATUS, found ? "" : "Not found");
}

BOOL CQmTextFindBar::PreTranslateMessage(MSG* message)
{
    const bool inText = message->hwnd == ::GetDlgItem(m_hWnd, IDC_FIND_TEXT);
    const bool finds = message->wParam == VK_F3 || (message->wParam == VK_RETURN && inText);
    if (message->message != WM_KEYDOWN || !finds)
        return CDialog::PreTranslateMessage(message);
    if (::GetKeyState(VK_SHIFT) < 0)
        OnPrevious();
    else
        OnOK();
    return TRUE;
}

BOOL CQmTextFindBar::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int code = HIWORD(wParam);
    if (code == EN_SETFOCUS || code == EN_KILLFOCUS || code == BN_SETFOCUS || code == BN_KILLFOCUS)
        m_textCtrl.Invalidate(FALSE); // the selection's colours tell whether the focus is here
    return CDialog::OnCommand(wParam, lParam);
}

void CQmTextFindBar::OnOK()
{
    m_textCtrl.FindNext();
}

void CQmTextFindBar::OnPrevious()
{
    m_textCtrl.FindPrevious();
}

void CQmTextFindBar::OnCancel()
{
    m_textCtrl.CloseFind();
}

void CQmTextFindBar::OnTextChange()
{
    // The edit control's capitals are those of the user's language, a search's are those of all.
    std::string text = QmGetWindowText(::GetDlgItem(m_hWnd, IDC_FIND_TEXT));
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    ZEMA::ToCapitals(wide);
    ZEMA::FromWide(wide.data(), wide.size(), text);
    m_textCtrl.SetFindText(text.c_str());
    ShowFound(true);
}
