// The strip beside the scroll bar of the log text window.
#pragma once

#include "QmLogLook.h"
#include "afxwin.h"
#include "logview/merge/StripMarks.h"

#include <functional>

// The rows that the text window shows, and the colours.
struct QmLogStripLook
{
    int viewTop = 0;
    int viewBottom = 0;
    COLORREF window = 0;
    bool highContrast = false;
    QmLogColors colors = {};
};

// A lane for each log with its errors, between one for bookmarks and one for what is found. It shows what it
// is told, and tells the rows that are clicked.
class CQmLogStrip : public CWnd
{
public:
    explicit CQmLogStrip(std::function<void(int row)> clicked) : m_clicked(std::move(clicked)) {}
    ~CQmLogStrip() override { DestroyWindow(); }

    BOOL Create(CWnd* parent);
    static int GetStripWidth(HWND hwnd); // pixels, by the display's resolution
    int GetHeight() const;

    void Show(const logview::StripMarks& marks, const QmLogStripLook& look);

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    std::function<void(int row)> m_clicked;
    logview::StripMarks m_marks;
    QmLogStripLook m_look;
};
