// Keeps a window from redrawing while it changes.
#pragma once

#include "afxwin.h"
#include "zemacore/ZemaApi.h"

// A guard over a window: while there is one, redrawing is suspended; when the window's last guard goes, the
// window is redrawn at once. Guards nest. The window may be hidden, and may be destroyed meanwhile.
class QMPLATFORM_API CQmWndUpdaterUse
{
public:
    // `wnd` is not owned; null, or no window, is allowed.
    explicit CQmWndUpdaterUse(CWnd* wnd);
    ~CQmWndUpdaterUse();
    CQmWndUpdaterUse(const CQmWndUpdaterUse&) = delete;
    CQmWndUpdaterUse& operator=(const CQmWndUpdaterUse&) = delete;

private:
    HWND m_hWnd;
    bool m_suspended; // by this guard
};
