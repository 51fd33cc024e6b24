#include "afxcmn.h"

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("EDIT", nullptr, style, rect, parent, id);
}

BOOL CButton::Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("BUTTON", caption, style, rect, parent, id);
}

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("COMBOBOX", nullptr, style, rect, parent, id);
}

void CComboBox::GetLBText(int index, CString& text) const
{
    const int length = GetLBTextLen(index);
    if (length < 0)
        AfxThrowInvalidArgException();
    ::SendMessage(m_hWnd, CB_GETLBTEXT, static_cast<WPARAM>(index),
                  reinterpret_cast<LPARAM>(text.GetBuffer(length + 1)));
    text.ReleaseBuffer();
}

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("LISTBOX", nullptr, style, rect, parent, id);
}

void CListBox::GetText(int index, CString& text) const
{
    const int length = GetTextLen(index);
    if (length < 0)
        AfxThrowInvalidArgException();
    ::SendMessage(m_hWnd, LB_GETTEXT, static_cast<WPARAM>(index),
                  reinterpret_cast<LPARAM>(text.GetBuffer(length + 1)));
    text.ReleaseBuffer();
}

static void RegisterControls(DWORD which)
{
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), which};
    ::InitCommonControlsEx(&classes);
}

BOOL CStatusBarCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    RegisterControls(ICC_BAR_CLASSES);
    return Create(STATUSCLASSNAMEA, nullptr, style, rect, parent, id);
}

BOOL CHeaderCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    RegisterControls(ICC_LISTVIEW_CLASSES);
    return Create(WC_HEADERA, nullptr, style, rect, parent, id);
}
