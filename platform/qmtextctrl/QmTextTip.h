// The tip of a text window: a line that does not fit into it, as a whole.
#pragma once

#include "afxwin.h"
#include "vkgrafic/GraphicText.h"

#include <string>
#include <vector>

// A popup window in the text window's font. The mouse goes through it. Shown and hidden by its owner.
class CQmTextTip : public CWnd
{
public:
    ~CQmTextTip() override;

    struct Look
    {
        HFONT font;
        GraphicFont graphicFont;
        int cellWidth;
        int lineHeight;
        COLORREF background;
        COLORREF text;
    };

    // Shows a text for a row of `owner`, both in pixels of the screen, within the monitor. False when that
    // fails.
    bool Show(CWnd& owner, const std::string& text, const CRect& row, const Look& look);
    void Hide();
    bool IsShown() const;

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg LRESULT OnNcHitTest(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    Look m_look = {};
    std::vector<std::string> m_lines;
};
