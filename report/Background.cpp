#include "report/Background.h"

#include "report/DrawingGuards.h"

namespace report
{

void Background::Use(HANDLE bitmap)
{
    m_picture.DeleteObject();
    if (bitmap)
        m_picture.Attach(bitmap);
}

void Background::Draw(CDC& dc, const CRect& rect, const View& view) const
{
    const CRect area(view.report.left, view.report.top, view.report.right, view.report.bottom);
    BITMAP picture = {};
    CRect part;
    if (!m_picture.GetSafeHandle() || !m_picture.GetObject(sizeof(picture), &picture) ||
        picture.bmWidth <= 0 || picture.bmHeight <= 0 || !part.IntersectRect(rect, area))
        return;
    CDC source;
    if (!source.CreateCompatibleDC(&dc))
        return;
    const Selected bitmap(source, m_picture.GetSafeHandle());
    const SavedState saved(dc);
    dc.IntersectClipRect(part);
    const int left = area.left - view.left % picture.bmWidth;
    for (int y = area.top; y < part.bottom; y += picture.bmHeight)
        for (int x = left; x < part.right; x += picture.bmWidth)
            if (x + picture.bmWidth > part.left && y + picture.bmHeight > part.top)
                dc.BitBlt(x, y, picture.bmWidth, picture.bmHeight, &source, 0, 0, SRCCOPY);
}

} // namespace report
