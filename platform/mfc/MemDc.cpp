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

// A bitmap of at least this size, the thread's own where it will do; null when there is no memory.
std::unique_ptr<CBitmap> TakeBitmap(CDC& dc, CSize size)
{
    std::unique_ptr<CBitmap> bitmap = std::exchange(GetThreadState().paintBitmap, nullptr);
    if (bitmap)
    {
        const BITMAP kept = Describe(*bitmap);
        if (kept.bmWidth >= size.cx && kept.bmHeight >= size.cy)
            return bitmap;
    }
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
    m_bitmap = TakeBitmap(m_dc, m_rect.Size());
    if (!m_bitmap)
        return;
    m_oldBitmap = ::SelectObject(m_memory, *m_bitmap);
    if (!m_oldBitmap)
        return;
    m_memory.IntersectClipRect(CRect(0, 0, m_rect.Width(), m_rect.Height()));
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
    GetThreadState().paintBitmap = std::move(m_bitmap);
}
