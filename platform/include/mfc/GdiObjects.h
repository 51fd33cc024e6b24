// Pens, brushes, fonts and bitmaps.
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
