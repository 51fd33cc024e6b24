#include "afxcontrolbarutil.h"

#include "mfc/PaintPicture.h"
#include "mfc/ThreadState.h"

#include <utility>

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
    if (m_rect.IsRectEmpty())
        return;
    m_picture = std::exchange(GetThreadState().paintPicture, nullptr);
    if (!m_picture)
        m_picture = std::make_unique<PaintPicture>();
    if (!m_picture->Begin(m_dc, m_rect.Size()))
    {
        m_picture.reset();
        return;
    }
    m_isMemDC = true;
    CDC& memory = m_picture->GetDC();
    ::SelectObject(memory, ::GetCurrentObject(m_dc, OBJ_FONT));
    memory.SetTextColor(m_dc.GetTextColor());
    memory.SetBkColor(m_dc.GetBkColor());
    memory.SetBkMode(::GetBkMode(m_dc));
    Cover();
}

CDC& CMemDC::GetDC()
{
    return m_isMemDC ? m_picture->GetDC() : m_dc;
}

void CMemDC::Cover()
{
    CDC& memory = m_picture->GetDC();
    memory.SetViewportOrg(0, 0); // whoever painted may have moved it
    ::SelectClipRgn(memory, nullptr);
    memory.IntersectClipRect(CRect(0, 0, m_rect.Width(), m_rect.Height()));
    memory.SetViewportOrg(-m_rect.left, -m_rect.top);
}

void CMemDC::Copy()
{
    CDC& memory = m_picture->GetDC();
    memory.SetViewportOrg(0, 0);
    m_dc.BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), &memory, 0, 0, SRCCOPY);
}

void CMemDC::MoveTo(const CRect& rect)
{
    if (!m_isMemDC)
        return;
    Copy();
    m_rect = rect;
    m_isMemDC = m_picture->Enlarge(m_dc, m_rect.Size());
    if (m_isMemDC)
        Cover();
}

CMemDC::~CMemDC()
{
    if (!m_picture)
        return;
    if (m_isMemDC)
        Copy();
    m_picture->End();
    GetThreadState().paintPicture = std::move(m_picture);
}
