#include "afxcmn.h"

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return Create("EDIT", nullptr, style, rect, parent, id);
}

BOOL CStatusBarCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    const INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    return Create(STATUSCLASSNAMEA, nullptr, style, rect, parent, id);
}
