// What a cell of the report control looks like: image, check box, text and tree box.
#include "report/ReportCtrlData.h"

#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace
{

constexpr COLORREF kCrossColor = RGB(255, 0, 0);
constexpr int kCrossWidth = 2;
constexpr int kSignReach = 2;               // of a tree box's sign from its middle
constexpr unsigned kOverlayStates = 0x0F00; // of an item: the number of an overlay image

// A check state's bits, up to kLastCheck; higher states look like 0.
constexpr int kChecked = 1;
constexpr int kCrossed = 2;
constexpr int kRadio = 4;
constexpr int kLastCheck = 7;

void DrawCross(CDC& dc, CRect box)
{
    CPen pen(PS_SOLID, kCrossWidth, kCrossColor);
    CPen* const old = dc.SelectObject(&pen);
    dc.MoveTo(box.left, box.top);
    dc.LineTo(box.right, box.bottom);
    dc.MoveTo(box.right, box.top);
    dc.LineTo(box.left, box.bottom);
    dc.SelectObject(old);
}

} // namespace

void CReportCtrl::DrawItem(CDC* dc, CRect rect, _RVITEM* item)
{
    const report::CellLayout layout(m_data->view);
    rect.left = layout.After(rect.left, DrawImage(dc, rect, item));
    rect.left = layout.After(rect.left, DrawCheck(dc, rect, item));
    DrawText(dc, rect, item);
}

// The image of a list, as wide as there is room; nothing for a number that the list does not have. `blend` is
// the colour to blend with, if `style` says so.
void CReportCtrl::DrawListImage(CDC* dc, const CRect& rect, CImageList* list, int image, UINT style,
                                int blend)
{
    if (!list || image < 0 || image >= list->GetImageCount() || rect.Width() <= 0)
        return;
    IMAGELISTDRAWPARAMS drawing = {};
    drawing.cbSize = sizeof(drawing);
    drawing.i = image;
    drawing.hdcDst = *dc;
    drawing.x = rect.left;
    drawing.y = rect.top;
    drawing.cx = rect.Width();
    drawing.rgbBk = CLR_NONE;
    drawing.rgbFg = GetSystemColor(blend);
    drawing.fStyle = style;
    drawing.dwRop = SRCCOPY;
    list->DrawIndirect(&drawing);
}

int CReportCtrl::DrawImage(CDC* dc, CRect rect, _RVITEM* item)
{
    const report::CellLayout layout(m_data->view);
    const int width = layout.ImageWidth(m_data->ContentsOf(*item));
    if (item->image < 0)
        return width;
    CRect picture = ToRect(layout.ImageIn(ToRect(rect)));
    picture.right = std::min(rect.right, picture.right);
    UINT style = ILD_TRANSPARENT | (item->state & kOverlayStates);
    const bool isSelected = (item->state & RVIS_SELECTED) != 0;
    const bool isFocused = m_data->hasFocus && (item->state & RVIS_FOCUSED);
    if (m_data->imageMode != RVIB_NONE && (isSelected || isFocused))
        style |= m_data->imageMode == RVIB_BLEND25 ? ILD_BLEND25 : ILD_BLEND50;
    DrawListImage(dc, picture, m_data->itemImages, item->image, style,
                  isSelected ? RVSC_HIGHLIGHT : RVSC_WINDOW);
    return width;
}

int CReportCtrl::DrawCheck(CDC* dc, CRect rect, _RVITEM* item)
{
    const report::CellLayout layout(m_data->view);
    const int width = layout.CheckWidth(m_data->ContentsOf(*item), rect.Width());
    if (item->check < 0 || width == 0)
        return width;
    CRect box = ToRect(layout.CheckIn(ToRect(rect)));
    if (m_data->checkImages)
    {
        DrawListImage(dc, box, m_data->checkImages, item->check, ILD_TRANSPARENT, RVSC_WINDOW);
        return width;
    }
    const int state = item->check <= kLastCheck ? item->check : 0;
    dc->DrawFrameControl(box, DFC_BUTTON,
                         static_cast<UINT>((state & kRadio ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK) |
                                           (state & kChecked ? DFCS_CHECKED : 0)));
    if (state & kCrossed)
    {
        const int right = state & kRadio ? 1 : 0;
        DrawCross(*dc, CRect(box.left + 1 + right, box.top + 1, box.right - 1 + right, box.bottom - 1));
    }
    return width;
}

int CReportCtrl::DrawText(CDC* dc, CRect rect, _RVITEM* item)
{
    if (rect.Width() < 1 || !item->text)
        return 0;
    const UINT format = m_data->items.FormatOf(item->subitem) & RVSF_ALIGNMASK;
    const UINT aligned[] = {DT_LEFT, DT_RIGHT, DT_CENTER, DT_LEFT};
    if (item->backgroundColor >= 0)
        dc->FillSolidRect(rect, m_data->TableColor(item->backgroundColor));
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::string_view text = item->text;
    std::string printable;
    if (std::any_of(text.begin(), text.end(), isControl))
    {
        printable = text;
        std::replace_if(printable.begin(), printable.end(), isControl, ' ');
        text = printable;
    }
    const bool bold = (item->state & RVIS_BOLD) != 0;
    const HGDIOBJ old = bold ? ::SelectObject(*dc, m_data->boldFont.GetSafeHandle()) : nullptr;
    const GraphicFont* measures = bold ? &m_data->boldMeasures : &m_data->fontMeasures;
    if (!bold && ::GetCurrentObject(*dc, OBJ_FONT) != m_data->font)
        measures = nullptr; // a subclass has selected its own
    const int width = GraphicText(*dc, measures)
                          .Draw(text.data(), static_cast<int>(text.size()), rect,
                                aligned[format] | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    if (old)
        ::SelectObject(*dc, old);
    return std::max(0, std::min(width, rect.Width()));
}

int CReportCtrl::DrawTreeBox(CDC* dc, CRect rect, int expanded)
{
    if (rect.right < rect.left || rect.bottom < rect.top)
        return rect.right;
    const CRect box = ToRect(report::CellLayout::TreeBoxIn(ToRect(rect)));
    const CPoint middle(box.left + box.Width() / 2, box.top + box.Height() / 2);
    const COLORREF sign = GetSystemColor(RVSC_TEXT);
    dc->FillSolidRect(box, GetSystemColor(RVSC_SHADOW));
    dc->FillSolidRect(CRect(box.left + 1, box.top + 1, box.right - 1, box.bottom - 1),
                      GetSystemColor(RVSC_WINDOW));
    dc->FillSolidRect(middle.x - kSignReach, middle.y, 2 * kSignReach + 1, 1, sign);
    if (!expanded)
        dc->FillSolidRect(middle.x, middle.y - kSignReach, 1, 2 * kSignReach + 1, sign);
    return rect.Height(); // it is a square
}
