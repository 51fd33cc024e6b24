// The common controls.
#pragma once

#include "afxwin.h"

#include <commctrl.h>

// A status bar at the bottom of its parent, in one or several panes counted from 0.
class QMPLATFORM_API CStatusBarCtrl : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // `rights` are the panes' right edges in client pixels; -1 reaches to the window's.
    BOOL SetParts(int count, int* rights)
    {
        return static_cast<BOOL>(
            SendMessage(SB_SETPARTS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(rights)));
    }

    // `type` is 0 or one of the SBT flags.
    BOOL SetText(LPCSTR text, int pane, int type)
    {
        return static_cast<BOOL>(
            SendMessage(SB_SETTEXTA, static_cast<WPARAM>(pane | type), reinterpret_cast<LPARAM>(text)));
    }
};
