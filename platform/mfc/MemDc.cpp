#include "afxcontrolbarutil.h"

CMemDC::CMemDC(CDC& dc, CWnd* wnd) : m_dc(dc)
{
    CRect clip;
    wnd->GetClientRect(&m_rect);
    if (dc.GetClipBox(&clip) != ERROR)
        m_rect.IntersectRect(m_rect, clip);
    Begin();
}

CMemDC::CMemDC(CDC& dc, const CRect& rect) : m_dc(dc), m_rect(rect)
{
    Begin();
}

void CMemDC::Begin()
{
    if (m_rect.IsRectEmpty() || !m_memory.CreateCompatibleDC(&m_dc) ||
        !m_bitmap.CreateCompatibleBitmap(&m_dc, m_rect.Width(), m_rect.Height()))
        return;
    m_oldBitmap = ::SelectObject(m_memory, m_bitmap);
    m_memory.SetViewportOrg(-m_rect.left, -m_rect.top);
    ::SelectObject(m_memory, ::GetCurrentObject(m_dc, OBJ_FONT));
    m_memory.SetTextColor(m_dc.GetTextColor());
    m_memory.SetBkColor(m_dc.GetBkColor());
    m_memory.SetBkMode(::GetBkMode(m_dc));
}

CMemDC::~CMemDC()
{
    if (!IsMemDC())
        return;
    m_memory.SetViewportOrg(0, 0); // whoever painted may have moved it
    m_dc.BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), &m_memory, 0, 0, SRCCOPY);
    ::SelectObject(m_memory, m_oldBitmap);
}
