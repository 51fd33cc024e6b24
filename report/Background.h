// The picture behind the rows of a report control.
#pragma once

#include "afxwin.h"

#include "report/model/View.h"

namespace report
{

class Background
{
public:
    // Takes a bitmap over; null for none.
    void Use(HANDLE bitmap);
    const CBitmap& Picture() const { return m_picture; }

    // Repeats the picture where `rect` and the rows' area meet. It goes with the columns when they are
    // scrolled. Nothing is drawn if there is none.
    void Draw(CDC& dc, const CRect& rect, const View& view) const;

private:
    CBitmap m_picture;
};

} // namespace report
