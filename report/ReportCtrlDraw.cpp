// The report control's painting: the messages, and what a subclass may draw in another way.
#include "report/DrawingGuards.h"
#include "report/ReportPainter.h"

#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace
{

constexpr COLORREF kCrossColor = RGB(255, 0, 0);
constexpr int kCrossWidth = 2;              // at 96 dots per inch, like the next
constexpr int kSignLength = 5;              // of a tree box
constexpr unsigned kOverlayStates = 0x0F00; // of an item: the number of an overlay image

// A check state's bits, up to kLastCheck; higher states look like 0.
constexpr int kChecked = 1;
constexpr int kCrossed = 2;
constexpr int kRadio = 4;
constexpr int kLastCheck = 7;

void DrawCross(CDC& dc, const CRect& box, int dpi)
{
    const CPen pen(PS_SOLID, report::Scale(kCrossWidth, dpi), kCrossColor);
    const report::Selected selected(dc, pen.GetSafeHandle());
    dc.MoveTo(box.left, box.top);
    dc.LineTo(box.right, box.bottom);
    dc.MoveTo(box.right, box.top);
    dc.LineTo(box.left, box.bottom);
}

} // namespace

// ---- Paint messages

BOOL CReportCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE; // OnPaint covers all of the window
}

void CReportCtrl::OnPaint()
{
    Data::Painting& painting = m_data->painting;
    if (painting.snapshot) // a callback asks for a paint in the midst of one
    {
        painting.dirty.Painted();
        const CPaintDC validated(this);
        painting.again = true;
        return;
    }
    Data::Painter painter(*m_data);
    GetRowCount(); // the rows are made
    if (m_data->scroll.Fit(painter.snapshot.geometry))
        m_data->Redraw();
    painting.dirty.Painted();
    if (!m_hWnd) // a callback has destroyed it
        return;
    {
        CPaintDC dc(this);
        const CRect header = ToRect(m_data->view.header);
        ::ExcludeClipRect(dc, header.left, header.top, header.right, header.bottom);
        const HPALETTE palette = m_data->look.colors.PaletteToRealize();
        const report::Realized realized(dc, palette);
        CRect clip;
        dc.GetClipBox(clip);
        if (m_data->properties.doubleBuffer)
            painter.DrawInBands(dc, clip, palette);
        else
            DrawCtrl(&dc);
    }
    if (m_hWnd)
        m_data->UpdateScrollBars();
    if (m_hWnd && std::exchange(painting.again, false))
        m_data->Redraw();
}

// ---- The control and its rows

void CReportCtrl::DrawCtrl(CDC* dc)
{
    CRect clip;
    dc->GetClipBox(clip);
    if (clip.IsRectEmpty() || m_data->painting.isDrawing)
        return;
    Data::Painter painter(*m_data);
    const ZEMA::Flagged drawing(m_data->painting.isDrawing);
    DrawBkgnd(dc, clip, painter.PlainColor());
    const int pens[] = {PS_DOT, PS_DASH, PS_SOLID};
    const CPen grid(pens[m_data->properties.gridStyle], 1, GetSystemColor(RVSC_GRID));
    const report::Selected pen(*dc, grid.GetSafeHandle());
    const report::Selected font(*dc, m_data->look.fonts.Plain());
    dc->SetBkMode(TRANSPARENT);
    if (m_data->style & RVS_FIXEDROW)
        painter.DrawFixedRow(*dc, clip);
    CRect rowsClip;
    if (!rowsClip.IntersectRect(clip, ToRect(m_data->view.report)))
        return;
    const int bottom = painter.DrawRows(*dc, rowsClip);
    if (m_data->style & (RVS_HORIZONTALGRID | RVS_VERTICALGRID))
        painter.DrawGrid(*dc, rowsClip, bottom);
    if (GetRowCount() == 0 && !m_data->properties.emptyText.IsEmpty())
        painter.DrawEmptyText(*dc);
}

// Without a picture, or where there is no row, the colour alone.
void CReportCtrl::DrawBkgnd(CDC* dc, CRect rect, unsigned long color)
{
    dc->FillSolidRect(rect, color);
    m_data->look.background.Draw(*dc, rect, m_data->view);
}

void CReportCtrl::DrawRow(CDC* dc, CRect rowRect, CRect clipRect, int row, _RVITEM* item, int odd, int fixed)
{
    Data::Painter painter(*m_data);
    const bool isSelected = !fixed && painter.IsSelected(row);
    const COLORREF plain = painter.PlainColor();
    const COLORREF color = painter.RowColor(odd != 0, item->backgroundColor, plain, isSelected);
    CRect visible;
    visible.IntersectRect(rowRect, clipRect);
    if (color != plain) // which is there already
        dc->FillSolidRect(visible, color);
    if (m_data->view.showLines || fixed)
        painter.DrawCells(*dc, rowRect, clipRect, row, *item, isSelected);
    else
        dc->SetTextColor(painter.TextColorOf(item->textColor, isSelected));
}

// ---- A cell

void CReportCtrl::DrawItem(CDC* dc, CRect rect, _RVITEM* item)
{
    const report::CellLayout layout(m_data->view);
    rect.left = layout.After(rect.left, DrawImage(dc, rect, item));
    rect.left = layout.After(rect.left, DrawCheck(dc, rect, item));
    DrawText(dc, rect, item);
}

int CReportCtrl::DrawImage(CDC* dc, CRect rect, _RVITEM* item)
{
    const report::CellLayout layout(m_data->view);
    const int width = layout.ImageWidth(m_data->ContentsOf(*item));
    if (item->image < 0)
        return width;
    const CRect picture = ToRect(layout.ImageIn(ToRect(rect)));
    UINT style = ILD_TRANSPARENT | (item->state & kOverlayStates);
    const bool isSelected = (item->state & RVIS_SELECTED) != 0;
    const bool isFocused = m_data->window.hasFocus && (item->state & RVIS_FOCUSED);
    if (m_data->properties.imageMode != RVIB_NONE && (isSelected || isFocused))
        style |= m_data->properties.imageMode == RVIB_BLEND25 ? ILD_BLEND25 : ILD_BLEND50;
    Data::Painter(*m_data).DrawListImage(*dc, rect, picture, m_data->look.itemImages, item->image, style,
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
    if (CImageList* const images = m_data->look.checkImages)
    {
        Data::Painter(*m_data).DrawListImage(*dc, rect, box, images, item->check, ILD_TRANSPARENT,
                                             RVSC_WINDOW);
        return width;
    }
    const report::Clipped clipped(*dc, rect, box);
    const int state = item->check <= kLastCheck ? item->check : 0;
    dc->DrawFrameControl(box, DFC_BUTTON,
                         static_cast<UINT>((state & kRadio ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK) |
                                           (state & kChecked ? DFCS_CHECKED : 0)));
    if (state & kCrossed)
    {
        const int inset = report::Scale(1, m_data->view.dpi);
        const int right = state & kRadio ? inset : 0;
        DrawCross(
            *dc,
            CRect(box.left + inset + right, box.top + inset, box.right - inset + right, box.bottom - inset),
            m_data->view.dpi);
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
        dc->FillSolidRect(rect, m_data->look.colors.ForDrawing(item->backgroundColor));
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::string_view text = item->text;
    std::string printable;
    if (std::any_of(text.begin(), text.end(), isControl))
    {
        printable = text;
        std::replace_if(printable.begin(), printable.end(), isControl, ' ');
        text = printable;
    }
    const report::PaintFonts& fonts = m_data->look.fonts;
    const bool isBold = (item->state & RVIS_BOLD) != 0;
    const report::Selected font(*dc, isBold ? fonts.Bold() : nullptr);
    const bool isOwnFont = !isBold && ::GetCurrentObject(*dc, OBJ_FONT) != fonts.Plain(); // a subclass's
    const int width = GraphicText(*dc, isOwnFont ? nullptr : &fonts.Measures(isBold))
                          .Draw(text.data(), static_cast<int>(text.size()), rect,
                                aligned[format] | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    return std::max(0, std::min(width, rect.Width()));
}

int CReportCtrl::DrawTreeBox(CDC* dc, CRect rect, int expanded)
{
    if (rect.right < rect.left || rect.bottom < rect.top)
        return rect.right;
    const CRect box = ToRect(report::CellLayout(m_data->view).TreeBoxIn(ToRect(rect)));
    const int line = report::Scale(1, m_data->view.dpi);
    const int length = report::Scale(kSignLength, m_data->view.dpi);
    const COLORREF sign = GetSystemColor(RVSC_TEXT);
    const report::Clipped clipped(*dc, rect, box);
    const auto fillMiddle = [&](int width, int height, COLORREF color) {
        dc->FillSolidRect(box.left + (box.Width() - width) / 2, box.top + (box.Height() - height) / 2, width,
                          height, color);
    };
    dc->FillSolidRect(box, GetSystemColor(RVSC_SHADOW));
    fillMiddle(box.Width() - 2 * line, box.Height() - 2 * line, GetSystemColor(RVSC_WINDOW));
    fillMiddle(length, line, sign);
    if (!expanded)
        fillMiddle(line, length, sign);
    return rect.Height(); // it is a square
}
