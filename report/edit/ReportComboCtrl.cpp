#include "ReportComboCtrl.h"

#include "ReportCtrl.h"
#include "qmcommon/QmWindowText.h"
#include "report/edit/EditorWindow.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

constexpr int kListed = 10;                        // choices that an open list shows at once
constexpr WPARAM kField = static_cast<WPARAM>(-1); // of CB_SETITEMHEIGHT: the closed box

ZEMA::WideString Widened(const char* text)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text, std::strlen(text), wide);
    return wide;
}

} // namespace

BEGIN_MESSAGE_MAP(CReportComboCtrl, CComboBox)
    ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

BOOL CReportComboCtrl::Create(CReportCtrl* control, const RECT& rect, DWORD kind)
{
    const int height = std::max(control->GetItemHeight(), 1);
    const HWND combo = ::CreateWindowExW(
        0, L"COMBOBOX", nullptr, WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_AUTOHSCROLL | kind, rect.left,
        rect.top, rect.right - rect.left, rect.bottom - rect.top + kListed * height, *control,
        reinterpret_cast<HMENU>(UINT_PTR{report::kEditorId}), AfxGetInstanceHandle(), nullptr);
    if (!SubclassWideWindow(combo))
    {
        ::DestroyWindow(combo);
        PostNcDestroy();
        return FALSE;
    }
    SendMessage(WM_SETFONT, static_cast<WPARAM>(control->SendMessage(WM_GETFONT)));
    CRect closed;
    GetWindowRect(closed);
    const auto field = static_cast<int>(SendMessage(CB_GETITEMHEIGHT, kField));
    const int wanted = static_cast<int>(rect.bottom - rect.top) - (closed.Height() - field);
    SendMessage(CB_SETITEMHEIGHT, kField, std::max(wanted, 1));
    return TRUE;
}

void CReportComboCtrl::AddChoice(const char* text)
{
    const ZEMA::WideString wide = Widened(text);
    ::SendMessageW(m_hWnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

void CReportComboCtrl::SetText(const char* text)
{
    const ZEMA::WideString wide = Widened(text);
    const LRESULT choice =
        ::SendMessageW(m_hWnd, CB_FINDSTRINGEXACT, kField, reinterpret_cast<LPARAM>(wide.c_str()));
    SendMessage(CB_SETCURSEL, static_cast<WPARAM>(choice));
    QmSetWindowText(m_hWnd, text); // which may differ from the choice in its capitals
}

BOOL CReportComboCtrl::PreTranslateMessage(MSG* message)
{
    if (report::IsEndKey(*message))
    {
        m_endKey = static_cast<UINT>(message->wParam);
        ::SetFocus(::GetParent(m_hWnd));
        return TRUE;
    }
    if (message->message != WM_SYSKEYDOWN || message->wParam != VK_DOWN)
        return CComboBox::PreTranslateMessage(message);
    ShowDropDown(!GetDroppedState());
    // The system has to see that Alt was not pressed alone, or its release would lead into the menu bar.
    ::DefWindowProc(m_hWnd, message->message, message->wParam, message->lParam);
    return TRUE;
}

// What the field tells its box; without a field the box has the focus itself.
BOOL CReportComboCtrl::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const bool isField = reinterpret_cast<HWND>(lParam) == report::TextField(m_hWnd);
    Default();
    if (isField && HIWORD(wParam) == EN_KILLFOCUS)
        LoseFocus();
    return TRUE;
}

void CReportComboCtrl::OnKillFocus(CWnd*)
{
    Default();
    LoseFocus();
}

// From the box to its own field, nothing is lost.
void CReportComboCtrl::LoseFocus()
{
    const HWND focus = ::GetFocus();
    if (m_hWnd && focus != m_hWnd && !::IsChild(m_hWnd, focus))
        report::TellEnd(m_hWnd, std::exchange(m_endKey, 0));
}
