// Drawing without flicker.
#pragma once

#include "afxwin.h"

#include <memory>

class PaintPicture;

// A device context in memory whose picture goes to another one, in one copy, when this object ends. It covers
// a rectangle of the other and uses the same coordinates, font and colours of that one's default. Where there
// is no memory for the picture, GetDC is the other device context itself. A thread keeps one picture for its
// next paint: making one costs several times as much as copying it.
class QMPLATFORM_API CMemDC
{
public:
    // Covers the part of the client area that `dc` can paint.
    CMemDC(CDC& dc, CWnd* wnd);
    CMemDC(CDC& dc, const CRect& rect);
    ~CMemDC();
    CMemDC(const CMemDC&) = delete;
    CMemDC& operator=(const CMemDC&) = delete;

    CDC& GetDC();
    BOOL IsMemDC() const { return m_isMemDC; }

    // Copies the picture, and covers another rectangle. What is selected and set stays. Nothing happens where
    // GetDC is the other device context itself.
    void MoveTo(const CRect& rect);

private:
    void Begin();
    void Cover();
    void Copy();

    CDC& m_dc;
    CRect m_rect;
    std::unique_ptr<PaintPicture> m_picture; // null if there was no memory for it
    bool m_isMemDC = false;
};
