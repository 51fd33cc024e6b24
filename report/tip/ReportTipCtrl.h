// The window that shows the whole text of a cell.
#pragma once

#include "afxwin.h"
#include "report/PaintFonts.h"
#include "report/model/TipLayout.h"

namespace report
{

// A text as a cell shows it.
struct TipContents
{
    std::string_view text;
    unsigned format = 0; // of its subitem
    bool isBold = false;
    COLORREF color = 0;
    COLORREF background = 0;
};

// A popup of the control's top-level window, made for the first text. It takes no focus and lets the mouse
// through. That is not enough where the display is another system's, which sends a click to the window that
// it hits: so the control has the mouse captured while the tip shows. The window text is what it shows.
class CReportTipCtrl : public CWnd
{
public:
    // Shows the text over a rectangle of the control, where EditorRect has it, unless the text is seen there
    // as a whole. `seen` is what is seen of the control. Returns whether the text is shown now; ShowWindow
    // hides it.
    bool Show(CWnd& control, const RECT& rect, const RECT& seen, const TipContents& contents,
              PaintFonts& fonts, int dpi);

    void Hide();

protected:
    afx_msg BOOL OnEraseBkgnd(CDC*) { return TRUE; }
    afx_msg void OnPaint();
    LRESULT OnHitTest(WPARAM, LPARAM) { return HTTRANSPARENT; }
    LRESULT OnMouseActivate(WPARAM, LPARAM) { return MA_NOACTIVATE; }
    LRESULT OnShowWindow(WPARAM shows, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    bool MakeWindow(CWnd& control);

    HWND m_capturing = nullptr; // the control
    Tip m_tip;
    HFONT m_font = nullptr; // the control's, which hides the tip before it takes another one
    GraphicFont m_measures;
    int m_lineHeight = 0;
    COLORREF m_color = 0;
    COLORREF m_background = 0;
    int m_dpi = 96;
};

} // namespace report
