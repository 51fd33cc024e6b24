// Pens, brushes, fonts, bitmaps, palettes and regions.
#pragma once

#include "afx.h"
#include "atltypes.h"

class CDC;

// Owns a drawing object of the system: it is deleted with this object unless detached. FromHandle answers the
// object that owns the handle, or a temporary one that owns nothing and is good until the thread is idle.
class QMPLATFORM_API CGdiObject : public CObject
{
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    // Takes `handle` over; FALSE when it is null.
    BOOL Attach(HGDIOBJ handle);

    // One of the system's own objects, such as DEFAULT_GUI_FONT; it stays where it is deleted.
    BOOL CreateStockObject(int index) { return Attach(::GetStockObject(index)); }

    // Gives the handle up without deleting it.
    HGDIOBJ Detach();

    // Deletes the handle; FALSE when there is none or it is still selected.
    BOOL DeleteObject();

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    int GetObject(int size, LPVOID record) const { return ::GetObject(m_hObject, size, record); }

    static CGdiObject* FromHandle(HGDIOBJ handle);
    static void DeleteTempMap();

    HGDIOBJ m_hObject = nullptr;
};

// The constructors that create raise the resource exception on failure.
class QMPLATFORM_API CPen : public CGdiObject
{
public:
    CPen() = default;
    CPen(int style, int width, COLORREF color);

    BOOL CreatePen(int style, int width, COLORREF color) { return Attach(::CreatePen(style, width, color)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* FromHandle(HPEN handle) { return static_cast<CPen*>(CGdiObject::FromHandle(handle)); }
};

class QMPLATFORM_API CBrush : public CGdiObject
{
public:
    CBrush() = default;
    explicit CBrush(COLORREF color);

    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* FromHandle(HBRUSH handle) { return static_cast<CBrush*>(CGdiObject::FromHandle(handle)); }
};

class QMPLATFORM_API CFont : public CGdiObject
{
public:
    BOOL CreateFontIndirect(const LOGFONT* font) { return Attach(::CreateFontIndirect(font)); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT handle) { return static_cast<CFont*>(CGdiObject::FromHandle(handle)); }
};

class QMPLATFORM_API CBitmap : public CGdiObject
{
public:
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitCount, const void* bits)
    {
        return Attach(::CreateBitmap(width, height, planes, bitCount, bits));
    }
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* FromHandle(HBITMAP handle)
    {
        return static_cast<CBitmap*>(CGdiObject::FromHandle(handle));
    }
};

// The colours that a drawing uses, for displays that show only so many at a time.
class QMPLATFORM_API CPalette : public CGdiObject
{
public:
    BOOL CreatePalette(LPLOGPALETTE palette) { return Attach(::CreatePalette(palette)); }

    // 256 colours spread over all there are, for the device of `dc`.
    BOOL CreateHalftonePalette(CDC* dc);

    int GetEntryCount() const;

    // Copies up to `count` entries from `first` on; how many there were.
    UINT GetPaletteEntries(UINT first, UINT count, LPPALETTEENTRY entries) const
    {
        return ::GetPaletteEntries(*this, first, count, entries);
    }
    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    static CPalette* FromHandle(HPALETTE handle)
    {
        return static_cast<CPalette*>(CGdiObject::FromHandle(handle));
    }
};

// A part of a window or device.
class QMPLATFORM_API CRgn : public CGdiObject
{
public:
    // What lies within the polygon; `mode` is ALTERNATE or WINDING.
    BOOL CreatePolygonRgn(const POINT* points, int count, int mode)
    {
        return Attach(::CreatePolygonRgn(points, count, mode));
    }

    // Becomes `a` and `b` combined (RGN_OR and its like); the kind of region that it is, or ERROR.
    int CombineRgn(const CRgn* a, const CRgn* b, int mode) { return ::CombineRgn(*this, *a, *b, mode); }
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
};
