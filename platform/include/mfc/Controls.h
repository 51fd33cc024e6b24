// The system's plain controls.
#pragma once

#include "mfc/Wnd.h"

// A field for text.
class QMPLATFORM_API CEdit : public CWnd
{
public:
    using CWnd::Create;
    // A child of `parent`; FALSE on failure.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
};

// OnHScroll and OnVScroll get it for a scroll bar control with an object of its own, else null.
class QMPLATFORM_API CScrollBar : public CWnd
{
};
