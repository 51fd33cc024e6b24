#include "mfc/ThreadState.h"

CImageList::~CImageList()
{
    DeleteImageList();
}

BOOL CImageList::Create(int cx, int cy, UINT flags, int initial, int grow)
{
    return Attach(::ImageList_Create(cx, cy, flags, initial, grow));
}

BOOL CImageList::Attach(HIMAGELIST list)
{
    if (!list)
        return FALSE;
    DeleteImageList();
    m_hImageList = list;
    GetThreadState().imageLists.Add(list, this);
    return TRUE;
}

HIMAGELIST CImageList::Detach()
{
    if (m_hImageList)
        GetThreadState().imageLists.Remove(m_hImageList, this);
    return std::exchange(m_hImageList, nullptr);
}

BOOL CImageList::DeleteImageList()
{
    return m_hImageList && ::ImageList_Destroy(Detach());
}

CImageList* CImageList::FromHandle(HIMAGELIST list)
{
    if (!list)
        return nullptr;
    HandleMap<CImageList>& map = GetThreadState().imageLists;
    if (CImageList* const found = map.Find(list))
        return found;
    auto made = std::make_unique<CImageList>();
    made->m_hImageList = list;
    return map.AddTemporary(list, std::move(made));
}

void CImageList::DeleteTempMap()
{
    GetThreadState().imageLists.DeleteTemporary();
}

int CImageList::Add(CBitmap* image, CBitmap* mask)
{
    return ::ImageList_Add(m_hImageList, *image, mask ? static_cast<HBITMAP>(*mask) : nullptr);
}

int CImageList::Add(CBitmap* image, COLORREF transparent)
{
    return ::ImageList_AddMasked(m_hImageList, *image, transparent);
}

int CImageList::Add(HICON icon)
{
    return ImageList_AddIcon(m_hImageList, icon);
}

int CImageList::GetImageCount() const
{
    return ::ImageList_GetImageCount(m_hImageList);
}

BOOL CImageList::DrawIndirect(IMAGELISTDRAWPARAMS* drawing)
{
    drawing->himl = m_hImageList;
    return ::ImageList_DrawIndirect(drawing);
}
