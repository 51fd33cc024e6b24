#include "afxcmn.h"

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("EDIT", nullptr, style, rect, parent, id);
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
