#include "afxcmn.h"

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("EDIT", nullptr, style, rect, parent, id);
}

void CEdit::SetSel(int first, int last, BOOL noScroll)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(first), last);
    if (!noScroll)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::GetSel(int& first, int& last) const
{
    DWORD begin = 0;
    DWORD end = 0;
    ::SendMessage(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    first = static_cast<int>(begin);
    last = static_cast<int>(end);
}

BOOL CStatusBarCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    return Create(STATUSCLASSNAMEA, nullptr, style, rect, parent, id);
}
