#include "mfc/ThreadState.h"
#include "mfc/WndCall.h"

CDC::~CDC()
{
    DeleteDC();
}

BOOL CDC::Attach(HDC dc)
{
    if (!dc)
        return FALSE;
    DeleteDC();
    m_hDC = dc;
    GetThreadState().deviceContexts.Add(dc, this);
    return TRUE;
}

HDC CDC::Detach()
{
    if (m_hDC)
        GetThreadState().deviceContexts.Remove(m_hDC, this);
    return std::exchange(m_hDC, nullptr);
}

CDC* CDC::FromHandle(HDC dc)
{
    if (!dc)
        return nullptr;
    HandleMap<CDC>& map = GetThreadState().deviceContexts;
    if (CDC* const found = map.Find(dc))
        return found;
    auto made = std::make_unique<CDC>();
    made->m_hDC = dc;
    return map.AddTemporary(dc, std::move(made));
}

void CDC::DeleteTempMap()
{
    GetThreadState().deviceContexts.DeleteTemporary();
}

CPen* CDC::SelectObject(CPen* pen)
{
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, *pen)));
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, *brush)));
}

CFont* CDC::SelectObject(CFont* font)
{
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, *font)));
}

CBitmap* CDC::SelectObject(CBitmap* bitmap)
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, *bitmap)));
}

CGdiObject* CDC::SelectStockObject(int index)
{
    return CGdiObject::FromHandle(::SelectObject(m_hDC, ::GetStockObject(index)));
}

CPalette* CDC::SelectPalette(CPalette* palette, BOOL forceBackground)
{
    return CPalette::FromHandle(::SelectPalette(m_hDC, *palette, forceBackground));
}

CPoint CDC::MoveTo(int x, int y)
{
    CPoint old;
    ::MoveToEx(m_hDC, x, y, &old);
    return old;
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color)
{
    ::SetBkColor(m_hDC, color);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color)
{
    FillSolidRect(CRect(x, y, x + width, y + height), color);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF leftTop, COLORREF rightBottom)
{
    const int width = rect->right - rect->left;
    const int height = rect->bottom - rect->top;
    FillSolidRect(rect->left, rect->top, width - 1, 1, leftTop);
    FillSolidRect(rect->left, rect->top, 1, height - 1, leftTop);
    FillSolidRect(rect->right - 1, rect->top, 1, height, rightBottom);
    FillSolidRect(rect->left, rect->bottom - 1, width, 1, rightBottom);
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    CPoint old;
    ::SetViewportOrgEx(m_hDC, x, y, &old);
    return old;
}

CPaintDC::CPaintDC(CWnd* wnd) : m_hWnd(wnd->m_hWnd)
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}

CClientDC::CClientDC(CWnd* wnd) : m_hWnd(HandleOf(wnd))
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* wnd) : m_hWnd(HandleOf(wnd))
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}
