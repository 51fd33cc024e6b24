#include "report/edit/ReportEditCtrl.h"

#include "report/edit/EditorWindow.h"

#include <utility>

namespace report
{

BEGIN_MESSAGE_MAP(CReportEditCtrl, CEdit)
    ON_WM_KILLFOCUS()
    ON_WM_CHAR()
END_MESSAGE_MAP()

BOOL CReportEditCtrl::Create(const RECT& rect, CWnd& control)
{
    const HWND editor =
        ::CreateWindowExW(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, rect.left, rect.top,
                          rect.right - rect.left, rect.bottom - rect.top, control,
                          reinterpret_cast<HMENU>(UINT_PTR{kEditorId}), AfxGetInstanceHandle(), nullptr);
    if (SubclassWideWindow(editor))
        return TRUE;
    ::DestroyWindow(editor);
    PostNcDestroy();
    return FALSE;
}

void CReportEditCtrl::OnKillFocus(CWnd*)
{
    Default();
    TellEnd(m_hWnd, std::exchange(m_endKey, 0));
}

// What no text of a cell holds is not typed either.
void CReportEditCtrl::OnChar(UINT key, UINT, UINT)
{
    if (key != '\a')
        Default();
}

// The C key copies, with or without Ctrl, so that the letter cannot be typed: as it has always been.
BOOL CReportEditCtrl::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_SYSCHAR)
        return TRUE;
    if (IsEndKey(*message))
    {
        m_endKey = static_cast<UINT>(message->wParam);
        ::SetFocus(::GetParent(m_hWnd));
        return TRUE;
    }
    if (message->message != WM_KEYDOWN || message->wParam != 'C' || m_typesC)
        return CEdit::PreTranslateMessage(message);
    SendMessage(WM_COPY);
    return TRUE;
}

} // namespace report
