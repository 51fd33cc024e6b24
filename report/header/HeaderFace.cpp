#include "report/header/HeaderFace.h"

#include "report/model/HeaderMark.h"
#include "report/model/View.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>
#include <vector>

using VkGrafic::UiColor;
using VkGrafic::WindowColors;

namespace
{

// Pixels at 96 dots per inch
constexpr int kMargin = 6; // left and right of what an item shows
constexpr int kGap = 4;    // between image, caption and marks
constexpr int kSeparatorInset = 3;

COLORREF Mix(COLORREF a, COLORREF b)
{
    return RGB((3 * GetRValue(a) + GetRValue(b)) / 4, (3 * GetGValue(a) + GetGValue(b)) / 4,
               (3 * GetBValue(a) + GetBValue(b)) / 4);
}

// Cuts a piece off an end of `rest`, and the gap beside it; empty if there is no room for it.
CRect Take(CRect& rest, int width, int gap, bool right)
{
    CRect piece = rest;
    if (width > rest.Width())
        piece.right = piece.left;
    else if (right)
    {
        piece.left = piece.right - width;
        rest.right = std::max(rest.left, piece.left - gap);
    }
    else
    {
        piece.right = piece.left + width;
        rest.left = std::min(rest.right, piece.right + gap);
    }
    return piece;
}

// Draws a mark at the right end of `rest`.
void DrawMark(CDC& dc, CRect& rest, report::HeaderMark mark, int dpi, COLORREF color)
{
    const CRect place = Take(rest, report::MarkWidth(dpi), report::Scale(kGap, dpi), true);
    if (place.IsRectEmpty())
        return;
    const std::vector<int> widths = report::MarkRows(mark, dpi);
    int y = place.top + (place.Height() - static_cast<int>(widths.size())) / 2;
    for (const int width : widths)
        dc.FillSolidRect(place.left + (place.Width() - width) / 2, y++, width, 1, color);
}

void DrawImage(CDC& dc, const CRect& place, const HeaderFace& face, int height)
{
    if (!place.IsRectEmpty())
        ::ImageList_Draw(face.images, face.image, dc, place.left, place.top + (place.Height() - height) / 2,
                         ILD_TRANSPARENT);
}

UINT TextAlignment(int format)
{
    switch (format & HDF_JUSTIFYMASK)
    {
    case HDF_RIGHT:
        return DT_RIGHT;
    case HDF_CENTER:
        return DT_CENTER;
    default:
        return DT_LEFT;
    }
}

} // namespace

void DrawHeaderGround(CDC& dc, const CRect& rect, const WindowColors& colors)
{
    dc.FillSolidRect(rect, colors[UiColor::Face]);
    dc.FillSolidRect(rect.left, rect.bottom - 1, rect.Width(), 1, colors[UiColor::Edge]);
}

void DrawHeaderFace(CDC& dc, const CRect& rect, const HeaderFace& face, const WindowColors& colors)
{
    const int saved = dc.SaveDC();
    dc.IntersectClipRect(rect);
    DrawHeaderGround(dc, rect, colors);
    const bool pressed = face.look == HeaderLook::Pressed;
    if (pressed)
        dc.FillSolidRect(rect.left, rect.top, rect.Width() - 1, rect.Height() - 1,
                         Mix(colors[UiColor::Face], colors[UiColor::Edge]));
    const int inset = pressed ? 0 : report::Scale(kSeparatorInset, face.dpi);
    dc.FillSolidRect(rect.right - 1, rect.top + inset, 1, rect.Height() - 2 * inset, colors[UiColor::Edge]);

    CRect rest = rect;
    rest.left += report::Scale(kMargin, face.dpi);
    rest.right -= report::Scale(kMargin, face.dpi);
    rest.bottom -= 1;
    if (face.format & HDF_SORTUP)
        DrawMark(dc, rest, report::HeaderMark::Ascending, face.dpi, colors[UiColor::DarkShadow]);
    else if (face.format & HDF_SORTDOWN)
        DrawMark(dc, rest, report::HeaderMark::Descending, face.dpi, colors[UiColor::DarkShadow]);
    if (face.filtered)
        DrawMark(dc, rest, report::HeaderMark::Filtered, face.dpi, colors[UiColor::Highlight]);
    int width = 0;
    int height = 0;
    if ((face.format & HDF_IMAGE) && ::ImageList_GetIconSize(face.images, &width, &height))
        DrawImage(dc, Take(rest, width, report::Scale(kGap, face.dpi), false), face, height);

    dc.SetBkMode(TRANSPARENT);
    const bool removed = face.look == HeaderLook::Removed;
    dc.SetTextColor(colors[removed ? UiColor::GreyText : UiColor::FaceText]);
    GraphicText(dc).Draw(face.caption.data(), static_cast<int>(face.caption.size()), rest,
                         TextAlignment(face.format) | DT_VCENTER | DT_END_ELLIPSIS);
    if (removed)
        dc.FillSolidRect(rest.left, rest.top + rest.Height() / 2, rest.Width(), 1, colors[UiColor::GreyText]);
    if (face.marked)
        dc.DrawFocusRect(CRect(rect.left + 1, rect.top + 1, rect.right - 2, rect.bottom - 2));
    dc.RestoreDC(saved);
}
