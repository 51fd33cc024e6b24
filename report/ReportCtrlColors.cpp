// The report control's colour table, palette and images.
#include "report/ReportCtrlData.h"
#include "report/model/InvalidArgument.h"

#include <new>

int CReportCtrl::InsertColor(int index, COLORREF color)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    try
    {
        return m_data->look.colors.Insert(index, color) && CreatePalette() ? index : -1;
    }
    catch (const std::bad_alloc&)
    {
        return -1;
    }
}

int CReportCtrl::SetColor(int index, COLORREF color)
{
    report::PaintColors& colors = m_data->look.colors;
    if (index < 0 || static_cast<std::size_t>(index) >= colors.Count())
        return 0;
    colors.Set(index, color);
    const int made = CreatePalette();
    m_data->Redraw();
    return made;
}

COLORREF CReportCtrl::GetColor(int index)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    return m_data->look.colors.At(index);
}

int CReportCtrl::DeleteColor(int index)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    if (static_cast<std::size_t>(index) >= m_data->look.colors.Count())
        return 0;
    m_data->look.colors.Delete(index);
    CreatePalette();
    m_data->Redraw();
    return 1;
}

void CReportCtrl::DeleteAllColors()
{
    m_data->look.colors.Clear();
    CreatePalette();
    m_data->Redraw();
}

int CReportCtrl::GetColorCount()
{
    return static_cast<int>(m_data->look.colors.Count());
}

int CReportCtrl::CreatePalette()
{
    return m_data->look.colors.MakePalette(m_data->look.background.Picture());
}

void CReportCtrl::SetImageList(CImageList* items, CImageList* checks)
{
    const auto sizeOf = [](const CImageList* list) {
        int cx = 0;
        int cy = 0;
        return list && ::ImageList_GetIconSize(list->GetSafeHandle(), &cx, &cy) ? CSize(cx, cy) : CSize(0, 0);
    };
    const CSize image = sizeOf(items);
    m_data->sizes.SetImageSize(image.cx, image.cy);
    const CSize check = sizeOf(checks);
    if (check.cx > 0)
        m_data->sizes.SetCheckSize(check.cx, check.cy);
    else if (m_data->look.checkImages) // else boxes are drawn, and keep the size they were given
        m_data->sizes.ResetCheckSize();
    m_data->look.itemImages = items;
    m_data->look.itemCopies.Forget();
    m_data->look.checkImages = checks;
    m_data->LayoutClient();
}

int CReportCtrl::SetBkImage(const char* path)
{
    return m_data->UseBackground(
        path ? ::LoadImage(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)
             : nullptr,
        !path);
}

int CReportCtrl::SetBkImage(unsigned int resourceId)
{
    return m_data->UseBackground(resourceId ? ::LoadImage(AfxGetResourceHandle(), MAKEINTRESOURCE(resourceId),
                                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)
                                            : nullptr,
                                 resourceId == 0);
}

// Takes the bitmap over. 0 when there is none although one was asked for.
int CReportCtrl::Data::UseBackground(HANDLE bitmap, bool none)
{
    look.background.Use(bitmap);
    control.CreatePalette();
    Redraw();
    return bitmap || none;
}
