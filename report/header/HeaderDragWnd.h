// The two windows that are seen while a column is dragged. Both are owned by the header's top-level window
// and take no input.
#pragma once

#include "report/header/HeaderFace.h"

class CFlatHeaderCtrl;

// The dragged column, under the mouse.
class CFHDragWnd : public CWnd
{
public:
    using CWnd::Create;
    // Over `rect` of the screen. The header outlives this window; FALSE on failure.
    BOOL Create(const CRect& rect, CFlatHeaderCtrl& header, int headerItem, HeaderLook look);

    void MoveTo(CPoint topLeft, HeaderLook look);

protected:
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    CFlatHeaderCtrl* m_header = nullptr;
    int m_headerItem = -1;
    HeaderLook m_look = HeaderLook::Plain;
};

// Two arrows, from above and below the header, at the divider where the column would land.
class CFHDropWnd : public CWnd
{
public:
    using CWnd::Create;
    // For a header of this height; FALSE on failure.
    BOOL Create(CWnd& header, int headerHeight);

    // Points at the divider from `top` of the header on, in screen coordinates.
    void ShowAt(CPoint top);
};
