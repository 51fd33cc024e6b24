// The report control's colour table, palette and images.
#include "report/ReportCtrlData.h"
#include "report/model/InvalidArgument.h"

#include <new>
#include <stdexcept>
#include <vector>

namespace
{

constexpr std::size_t kMaxPalette = 256;
constexpr int kMaxColors = 1 << 24; // there are no more

PALETTEENTRY EntryOf(COLORREF color)
{
    return {GetRValue(color), GetGValue(color), GetBValue(color), 0};
}

// The colours of a bitmap; the count alone when there are more than a palette holds.
std::size_t ReadColors(const CBitmap& bitmap, std::vector<PALETTEENTRY>& entries)
{
    DIBSECTION section = {};
    if (!bitmap.GetSafeHandle() || bitmap.GetObject(sizeof(section), &section) != sizeof(section))
        return 0;
    const BITMAPINFOHEADER& header = section.dsBmih;
    const std::size_t count = header.biClrUsed ? header.biClrUsed : std::size_t{1} << header.biBitCount;
    if (count > kMaxPalette)
        return count;

    std::vector<RGBQUAD> colors(count);
    CDC dc;
    if (!dc.CreateCompatibleDC(nullptr))
        return 0;
    const HGDIOBJ old = ::SelectObject(dc, bitmap.GetSafeHandle());
    const UINT read = ::GetDIBColorTable(dc, 0, static_cast<UINT>(count), colors.data());
    ::SelectObject(dc, old);
    colors.resize(read);
    for (const RGBQUAD& color : colors)
        entries.push_back({color.rgbRed, color.rgbGreen, color.rgbBlue, 0});
    return count;
}

} // namespace

int CReportCtrl::InsertColor(int index, COLORREF color)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    std::vector<COLORREF>& colors = m_data->colors;
    if (index > kMaxColors)
        return -1;
    try
    {
        if (static_cast<std::size_t>(index) > colors.size())
            colors.resize(static_cast<std::size_t>(index));
        colors.insert(colors.begin() + index, color);
        return CreatePalette() ? index : -1;
    }
    catch (const std::bad_alloc&)
    {
        return -1;
    }
}

int CReportCtrl::SetColor(int index, COLORREF color)
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_data->colors.size())
        return 0;
    m_data->colors[static_cast<std::size_t>(index)] = color;
    const int made = CreatePalette();
    Redraw();
    return made;
}

COLORREF CReportCtrl::Data::TableColor(int index) const
{
    const auto at = static_cast<std::size_t>(index);
    const COLORREF plain = index >= 0 && at < colors.size() ? colors[at] : 0;
    return onPalette ? PALETTERGB(GetRValue(plain), GetGValue(plain), GetBValue(plain)) : plain;
}

COLORREF CReportCtrl::GetColor(int index)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    const auto at = static_cast<std::size_t>(index);
    return at < m_data->colors.size() ? m_data->colors[at] : 0;
}

int CReportCtrl::DeleteColor(int index)
{
    if (index < 0)
        report::ThrowInvalidArgument();
    if (static_cast<std::size_t>(index) >= m_data->colors.size())
        return 0;
    m_data->colors.erase(m_data->colors.begin() + index);
    CreatePalette();
    Redraw();
    return 1;
}

void CReportCtrl::DeleteAllColors()
{
    m_data->colors.clear();
    CreatePalette();
    Redraw();
}

int CReportCtrl::CreatePalette()
{
    m_data->palette.DeleteObject();
    std::vector<PALETTEENTRY> entries;
    const std::size_t count = m_data->colors.size() + ReadColors(m_data->background, entries);
    if (count == 0)
        return 0;
    if (count > kMaxPalette)
    {
        CClientDC screen(nullptr);
        return m_data->palette.CreateHalftonePalette(&screen);
    }
    std::vector<PALETTEENTRY> all;
    for (const COLORREF color : m_data->colors)
        all.push_back(EntryOf(color));
    all.insert(all.end(), entries.begin(), entries.end());

    struct
    {
        WORD version = 0x300;
        WORD count = 0;
        PALETTEENTRY entries[kMaxPalette] = {};
    } logical;
    logical.count = static_cast<WORD>(count);
    std::copy(all.begin(), all.end(), logical.entries);
    return m_data->palette.CreatePalette(reinterpret_cast<LOGPALETTE*>(&logical));
}

void CReportCtrl::SetImageList(CImageList* items, CImageList* checks)
{
    const auto sizeOf = [](const CImageList* list, CSize none) {
        int cx = 0;
        int cy = 0;
        return list && ::ImageList_GetIconSize(list->GetSafeHandle(), &cx, &cy) ? CSize(cx, cy) : none;
    };
    const CSize image = sizeOf(items, CSize(0, 0));
    m_data->view.imageWidth = image.cx;
    m_data->view.imageHeight = image.cy;
    if (checks || m_data->checkImages) // else boxes are drawn, and keep the size they were given
    {
        const CSize check = sizeOf(checks, CSize(8, 8));
        m_data->view.checkWidth = check.cx;
        m_data->view.checkHeight = check.cy;
    }
    m_data->itemImages = items;
    m_data->checkImages = checks;
    Redraw();
}

int CReportCtrl::SetBkImage(const char* path)
{
    return SetBackground(
        path ? ::LoadImage(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)
             : nullptr,
        !path);
}

int CReportCtrl::SetBkImage(unsigned int resourceId)
{
    return SetBackground(resourceId ? ::LoadImage(AfxGetResourceHandle(), MAKEINTRESOURCE(resourceId),
                                                  IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)
                                    : nullptr,
                         resourceId == 0);
}

// Takes the bitmap over. 0 when there is none although one was asked for.
int CReportCtrl::SetBackground(HANDLE bitmap, bool none)
{
    m_data->background.DeleteObject();
    if (bitmap)
        m_data->background.Attach(bitmap);
    CreatePalette();
    Redraw();
    return bitmap || none;
}
