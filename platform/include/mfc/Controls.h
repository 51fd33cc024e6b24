// The system's plain controls.
#pragma once

#include "mfc/Wnd.h"

// Each control's own Create makes a child window of `parent`; FALSE on failure.
class QMPLATFORM_API CStatic : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
};

class QMPLATFORM_API CButton : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE
    int GetCheck() const { return static_cast<int>(::SendMessage(m_hWnd, BM_GETCHECK, 0, 0)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
};

class QMPLATFORM_API CEdit : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Characters from `first` to before `last`; (0, -1) is all of the text.
    void SetSel(int first, int last, BOOL noScroll = FALSE);
    void GetSel(int& first, int& last) const;
    void SetLimitText(UINT length) { SendMessage(EM_SETLIMITTEXT, length); }
    BOOL SetReadOnly(BOOL readOnly = TRUE)
    {
        return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(readOnly)));
    }
};

// OnHScroll and OnVScroll get it for a scroll bar control with an object of its own, else null.
class QMPLATFORM_API CScrollBar : public CWnd
{
};
