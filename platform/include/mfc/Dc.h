// Device contexts: what one draws on.
#pragma once

#include "mfc/GdiObjects.h"

class CWnd;

// Owns a device context: it is deleted with this object unless detached. SelectObject answers the object that
// was selected before, as CGdiObject::FromHandle does, and null on failure.
class QMPLATFORM_API CDC : public CObject
{
public:
    CDC() = default;
    ~CDC() override;

    // Takes `dc` over; FALSE when it is null. Detach gives it up without deleting it.
    BOOL Attach(HDC dc);
    HDC Detach();

    // Null for a null handle; else the object that owns it, or a temporary one, good until the thread is
    // idle.
    static CDC* FromHandle(HDC dc);
    static void DeleteTempMap();

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }

    // A memory device context like `dc`, like the screen for null.
    BOOL CreateCompatibleDC(CDC* dc) { return Attach(::CreateCompatibleDC(dc ? dc->m_hDC : nullptr)); }
    BOOL DeleteDC() { return m_hDC && ::DeleteDC(Detach()); }

    int SaveDC() { return ::SaveDC(m_hDC); }
    BOOL RestoreDC(int saved) { return ::RestoreDC(m_hDC, saved); }
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }

    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    CGdiObject* SelectStockObject(int index);

    // In the background only colours are used that the display shows already. The palette selected before.
    CPalette* SelectPalette(CPalette* palette, BOOL forceBackground);

    // Has the display show the colours of the selected palette; how many entries changed, GDI_ERROR on
    // failure.
    UINT RealizePalette() { return ::RealizePalette(m_hDC); }

    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }

    BOOL GetTextMetrics(TEXTMETRIC* metrics) const { return ::GetTextMetrics(m_hDC, metrics); }

    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }

    void FillRect(LPCRECT rect, CBrush* brush) { ::FillRect(m_hDC, rect, *brush); }

    // Fills by an opaque empty text, which needs no brush; the background colour is `color` afterwards.
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);

    // A frame one pixel wide within the rectangle.
    void Draw3dRect(LPCRECT rect, COLORREF leftTop, COLORREF rightBottom);
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }
    BOOL DrawFrameControl(LPRECT rect, UINT type, UINT state)
    {
        return ::DrawFrameControl(m_hDC, rect, type, state);
    }

    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD operation)
    {
        return ::BitBlt(m_hDC, x, y, width, height, source ? source->m_hDC : nullptr, sourceX, sourceY,
                        operation);
    }

    int GetClipBox(LPRECT rect) const { return ::GetClipBox(m_hDC, rect); }
    int IntersectClipRect(LPCRECT rect)
    {
        return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }

    CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }

    HDC m_hDC = nullptr;
};

// The three below raise the resource exception when the system has no device context for them.

// Painting, in answer to WM_PAINT: between BeginPaint and EndPaint.
class QMPLATFORM_API CPaintDC : public CDC
{
public:
    explicit CPaintDC(CWnd* wnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps = {};

private:
    HWND m_hWnd;
};

// The client area of a window, of the screen for null.
class QMPLATFORM_API CClientDC : public CDC
{
public:
    explicit CClientDC(CWnd* wnd);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

// A whole window with its frame.
class QMPLATFORM_API CWindowDC : public CDC
{
public:
    explicit CWindowDC(CWnd* wnd);
    ~CWindowDC() override;

private:
    HWND m_hWnd;
};
