#include "afxcontrolbarutil.h"

#include "mfc/ThreadState.h"

#include <utility>

namespace
{

BITMAP Describe(const CBitmap& bitmap)
{
    BITMAP description = {};
    ::GetObject(bitmap.GetSafeHandle(), sizeof(description), &description);
    return description;
}

bool Covers(const CBitmap& bitmap, CSize size)
{
    const BITMAP described = Describe(bitmap);
    return described.bmWidth >= size.cx && described.bmHeight >= size.cy;
}

// A bitmap of at least this size, the thread's own where it will do; null when there is no memory.
std::unique_ptr<CBitmap> TakeBitmap(CDC& dc, CSize size)
{
    std::unique_ptr<CBitmap> bitmap = std::exchange(GetThreadState().paintBitmap, nullptr);
    if (bitmap && Covers(*bitmap, size))
        return bitmap;
    bitmap = std::make_unique<CBitmap>();
    if (!bitmap->CreateCompatibleBitmap(&dc, size.cx, size.cy))
        return nullptr;
    return bitmap;
}

} // namespace

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
    if (m_rect.IsRectEmpty() || !m_memory.CreateCompatibleDC(&m_dc))
        return;
    Cover();
    ::SelectObject(m_memory, ::GetCurrentObject(m_dc, OBJ_FONT));
    m_memory.SetTextColor(m_dc.GetTextColor());
    m_memory.SetBkColor(m_dc.GetBkColor());
    m_memory.SetBkMode(::GetBkMode(m_dc));
}

// Selecting a bitmap makes the system look at everything that is selected: it is done only if it must be.
void CMemDC::Cover()
{
    if (!m_bitmap || !Covers(*m_bitmap, m_rect.Size()))
    {
        Deselect();
        m_bitmap = TakeBitmap(m_dc, m_rect.Size());
        m_oldBitmap = m_bitmap ? ::SelectObject(m_memory, *m_bitmap) : nullptr;
    }
    m_memory.SetViewportOrg(0, 0); // whoever painted may have moved it
    ::SelectClipRgn(m_memory, nullptr);
    m_memory.IntersectClipRect(CRect(0, 0, m_rect.Width(), m_rect.Height()));
    m_memory.SetViewportOrg(-m_rect.left, -m_rect.top);
}

void CMemDC::Copy()
{
    m_memory.SetViewportOrg(0, 0);
    m_dc.BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), &m_memory, 0, 0, SRCCOPY);
}

void CMemDC::Deselect()
{
    if (IsMemDC())
        ::SelectObject(m_memory, std::exchange(m_oldBitmap, nullptr));
}

void CMemDC::MoveTo(const CRect& rect)
{
    if (!IsMemDC())
        return;
    Copy();
    m_rect = rect;
    Cover();
}

CMemDC::~CMemDC()
{
    if (!IsMemDC())
        return;
    Copy();
    Deselect();
    GetThreadState().paintBitmap = std::move(m_bitmap);
}
