#include "mfc/ThreadState.h"

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

BOOL CGdiObject::Attach(HGDIOBJ handle)
{
    if (!handle)
        return FALSE;
    DeleteObject();
    m_hObject = handle;
    GetThreadState().gdiObjects.Add(handle, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    if (m_hObject)
        GetThreadState().gdiObjects.Remove(m_hObject, this);
    return std::exchange(m_hObject, nullptr);
}

BOOL CGdiObject::DeleteObject()
{
    return m_hObject && ::DeleteObject(Detach());
}

static std::unique_ptr<CGdiObject> MakeObject(DWORD type)
{
    switch (type)
    {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return std::make_unique<CPen>();
    case OBJ_BRUSH:
        return std::make_unique<CBrush>();
    case OBJ_FONT:
        return std::make_unique<CFont>();
    case OBJ_BITMAP:
        return std::make_unique<CBitmap>();
    case OBJ_PAL:
        return std::make_unique<CPalette>();
    default:
        return std::make_unique<CGdiObject>();
    }
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ handle)
{
    if (!handle)
        return nullptr;
    HandleMap<CGdiObject>& map = GetThreadState().gdiObjects;
    if (CGdiObject* const owner = map.FindPermanent(handle))
        return owner;
    // A number may have been given to an object of another kind since.
    std::unique_ptr<CGdiObject> made = MakeObject(::GetObjectType(handle));
    if (CGdiObject* const found = map.Find(handle); found && typeid(*found) == typeid(*made))
        return found;
    made->m_hObject = handle;
    return map.AddTemporary(handle, std::move(made));
}

void CGdiObject::DeleteTempMap()
{
    GetThreadState().gdiObjects.DeleteTemporary();
}

static void RequireResource(BOOL created)
{
    if (!created)
        AfxThrowResourceException();
}

CPen::CPen(int style, int width, COLORREF color)
{
    RequireResource(CreatePen(style, width, color));
}

CBrush::CBrush(COLORREF color)
{
    RequireResource(CreateSolidBrush(color));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    return Attach(::CreateCompatibleBitmap(dc->m_hDC, width, height));
}

BOOL CPalette::CreateHalftonePalette(CDC* dc)
{
    return Attach(::CreateHalftonePalette(dc->m_hDC));
}

int CPalette::GetEntryCount() const
{
    WORD count = 0;
    GetObject(sizeof(count), &count);
    return count;
}
