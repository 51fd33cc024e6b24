#include "report/edit/ReportEditCtrl.h"

#include "qmcommon/QmWindowText.h"

namespace report
{

constexpr UINT kCellSeparator = 7;

BEGIN_MESSAGE_MAP(CReportEditCtrl, CEdit)
    ON_WM_KILLFOCUS()
    ON_WM_CHAR()
END_MESSAGE_MAP()

BOOL CReportEditCtrl::Create(const RECT& rect, CWnd& control, HFONT font, const char* text)
{
    const HWND editor =
        ::CreateWindowExW(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, rect.left, rect.top,
                          rect.right - rect.left, rect.bottom - rect.top, control,
                          reinterpret_cast<HMENU>(UINT_PTR{kEditorId}), AfxGetInstanceHandle(), nullptr);
    if (!SubclassWideWindow(editor))
    {
        ::DestroyWindow(editor);
        PostNcDestroy();
        return FALSE;
    }
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font));
    QmSetWindowText(m_hWnd, text);
    return TRUE;
}

void CReportEditCtrl::End(UINT key)
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    const std::string text = QmGetWindowText(m_hWnd);
    _NMRVITEMEDIT record = {};
    record.hdr = {m_hWnd, kEditorId, RVN_ENDITEMEDIT};
    record.item = m_item;
    record.subitem = m_subitem;
    record.editor = m_hWnd;
    record.key = key;
    record.text = text.c_str();
    ::SendMessage(::GetParent(m_hWnd), WM_NOTIFY, kEditorId, reinterpret_cast<LPARAM>(&record));
}

void CReportEditCtrl::OnKillFocus(CWnd*)
{
    Default();
    End(m_endKey);
}

// The byte that separates encoded cells is none of their texts.
void CReportEditCtrl::OnChar(UINT key, UINT, UINT)
{
    if (key != kCellSeparator)
        Default();
}

// The C key copies, with or without Ctrl, so that the letter cannot be typed: as it has always been.
BOOL CReportEditCtrl::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_SYSCHAR)
        return TRUE;
    if (message->message != WM_KEYDOWN)
        return CEdit::PreTranslateMessage(message);
    switch (message->wParam)
    {
    case VK_TAB:
    case VK_RETURN:
    case VK_ESCAPE:
        m_endKey = static_cast<UINT>(message->wParam);
        ::SetFocus(::GetParent(m_hWnd));
        return TRUE;
    case 'C':
        SendMessage(WM_COPY);
        return TRUE;
    default:
        return CEdit::PreTranslateMessage(message);
    }
}

} // namespace report
