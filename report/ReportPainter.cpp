#include "report/ReportPainter.h"

#include "report/DrawingGuards.h"

#include "afxcontrolbarutil.h"
#include "vkgrafic/PaintBands.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kEmptyTextTop = 2; // below the top of the rows' area

// Where to begin a line that begins at `from`, to see it from `clip` on: its dashes stay where they are.
int BeginOfLine(int from, int clip)
{
    constexpr int kPattern = 24; // the patterns of all pens are as long or a part of it
    return from < clip ? report::ToInt(clip - (std::int64_t{clip} - from) % kPattern) : from;
}

void HorizontalLine(CDC& dc, int left, int right, int y, const CRect& clip)
{
    left = BeginOfLine(left, clip.left);
    right = std::min<int>(right, clip.right);
    if (left >= right || y < clip.top || y >= clip.bottom)
        return;
    dc.MoveTo(left, y);
    dc.LineTo(right, y);
}

void VerticalLine(CDC& dc, int x, int top, int bottom, const CRect& clip)
{
    top = BeginOfLine(top, clip.top);
    bottom = std::min<int>(bottom, clip.bottom);
    if (top >= bottom || x < clip.left || x >= clip.right)
        return;
    dc.MoveTo(x, top);
    dc.LineTo(x, bottom);
}

} // namespace

COLORREF CReportCtrl::Data::Painter::PlainColor() const
{
    return m_data.look.colors.System(m_data.style & RVS_FACEBACKGROUND ? RVSC_FACE : RVSC_WINDOW);
}

bool CReportCtrl::Data::Painter::IsSelected(int row) const
{
    return row >= 0 && m_data.rows.selection.IsSelected(row) &&
           (m_data.window.hasFocus || (m_data.style & RVS_KEEPSELECTION));
}

COLORREF CReportCtrl::Data::Painter::TextColorOf(int index, bool isSelected) const
{
    const report::PaintColors& colors = m_data.look.colors;
    if (isSelected && (index < 0 || !(m_data.style & RVS_KEEPTEXTCOLOR)))
        return colors.System(m_data.window.hasFocus ? RVSC_HIGHLIGHTTEXT : RVSC_INACTIVEHIGHLIGHTTEXT);
    return index >= 0 ? colors.ForDrawing(index) : colors.System(RVSC_TEXT);
}

bool CReportCtrl::Data::Painter::IsFocused(int row, int column) const
{
    const report::Selection& selection = m_data.rows.selection;
    return m_data.window.hasFocus && row == selection.focusRow && column == selection.focusColumn &&
           (row == report::kFixedRow || (m_data.style & RVS_CELLFOCUS));
}

COLORREF CReportCtrl::Data::Painter::RowColor(bool isOdd, int backgroundColor, COLORREF plain,
                                              bool isSelected) const
{
    const report::PaintColors& colors = m_data.look.colors;
    if (isSelected)
        return colors.System(m_data.window.hasFocus ? RVSC_HIGHLIGHT : RVSC_INACTIVEHIGHLIGHT);
    if (backgroundColor >= 0)
        return colors.ForDrawing(backgroundColor);
    return isOdd && (m_data.style & RVS_ALTERNATEROWS) ? colors.ForDrawing(0) : plain;
}

COLORREF CReportCtrl::Data::Painter::CellTextColor(int row, int column, const _RVITEM& cell) const
{
    const report::PaintColors& colors = m_data.look.colors;
    return colors.Readable(IsFocused(row, column) ? colors.System(RVSC_TEXT)
                                                  : TextColorOf(cell.textColor, IsSelected(row)),
                           CellColor(row, column, cell));
}

COLORREF CReportCtrl::Data::Painter::CellColor(int row, int column, const _RVITEM& cell) const
{
    if (IsFocused(row, column))
        return PlainColor();
    const COLORREF plain = row == report::kFixedRow ? m_data.look.colors.System(RVSC_FACE) : PlainColor();
    return RowColor(row > 0 && (row & 1), cell.backgroundColor, plain, IsSelected(row));
}

void CReportCtrl::Data::Painter::DrawInBands(CDC& dc, const CRect& clip, HPALETTE palette)
{
    CRect band = clip;
    const auto endBand = [&] {
        band.bottom = VkGrafic::EndOfBand(band.top, clip.bottom, clip.Width(), m_data.view.report.top,
                                          m_data.view.itemHeight);
    };
    endBand();
    CMemDC memory(dc, band);
    const report::Realized realized(memory.GetDC(), palette);
    m_data.control.DrawCtrl(&memory.GetDC());
    // Without memory for a picture all has been drawn already, to the window itself.
    while (memory.IsMemDC() && band.bottom < clip.bottom && m_data.control.m_hWnd)
    {
        band.top = band.bottom;
        endBand();
        memory.MoveTo(band);
        m_data.control.DrawCtrl(&memory.GetDC());
    }
}

// ---- Rows

void CReportCtrl::Data::Painter::DrawFixedRow(CDC& dc, const CRect& clip)
{
    const CRect strip = ToRect(m_data.view.fixedRow);
    CRect visible;
    if (!visible.IntersectRect(strip, clip))
        return;
    const report::PaintColors& colors = m_data.look.colors;
    dc.FillSolidRect(strip, colors.System(RVSC_FACE));
    dc.Draw3dRect(strip, colors.System(RVSC_HIGHLIGHTEDGE), colors.System(RVSC_DARKSHADOW));
    const std::optional<report::ShownRow> row = snapshot.geometry.FindRow(report::kFixedRow);
    if (!row)
        return;
    _RVITEM& item = snapshot.rows.Row(report::kFixedRow).item;
    m_data.control.DrawRow(&dc, ToRect(row->rect), visible, report::kFixedRow, &item, 0, 1);
    const report::Selection& selection = m_data.rows.selection;
    if (m_data.window.hasFocus && selection.focusRow == report::kFixedRow && selection.focusColumn < 0)
        DrawFocus(dc, ToRect(row->rect));
}

int CReportCtrl::Data::Painter::DrawRows(CDC& dc, const CRect& clip)
{
    const report::CellLayout layout(m_data.view);
    report::ShownRow row;
    if (m_data.painting.shapes.Find(snapshot.above.row) && snapshot.above.rect.bottom <= clip.top)
        row = snapshot.above; // the rows above it have been drawn, and their owner is not asked again
    int bottom = std::max(m_data.view.report.top, row.rect.bottom);
    while (snapshot.geometry.Next(row, clip.bottom))
    {
        bottom = row.rect.bottom;
        if (bottom <= clip.bottom)
            snapshot.above = row;
        m_data.painting.shapes.Add(row.row, row.shape);
        if (row.rect.bottom <= clip.top)
            continue;
        const CRect whole = ToRect(row.rect);
        CRect indented = whole;
        indented.left += layout.Indentation(row.shape.level);
        _RVITEM item = snapshot.rows.Row(row.row).item;
        m_data.control.DrawRow(&dc, indented, clip, row.row, &item, row.row & 1, 0);
        if (m_data.view.showPreviews && row.shape.hasPreview)
            DrawPreview(dc, ToRect(snapshot.geometry.PreviewOf(row)), row.row);
        if (m_data.style & RVS_HORIZONTALGRID)
            HorizontalLine(dc, whole.left, whole.right, whole.bottom - 1, clip);
        const report::Selection& selection = m_data.rows.selection;
        const bool isCell = (m_data.style & RVS_CELLFOCUS) && selection.focusColumn >= 0;
        if (m_data.window.hasFocus && row.row == selection.focusRow && !isCell)
            DrawFocus(dc, indented);
    }
    return bottom;
}

void CReportCtrl::Data::Painter::DrawFocus(CDC& dc, CRect rect) const
{
    if (m_data.IsEditing())
        return;
    if (m_data.style & (RVS_HORIZONTALGRID | RVS_VERTICALGRID))
        rect = CRect(rect.left + 1, rect.top, rect.right - 1, rect.bottom - 1);
    dc.SetTextColor(m_data.look.colors.System(RVSC_TEXT));
    dc.SetBkColor(m_data.look.colors.System(RVSC_WINDOW));
    dc.DrawFocusRect(rect);
}

void CReportCtrl::Data::Painter::DrawPreview(CDC& dc, const CRect& rect, int row)
{
    const FetchedRows::Fetched& fetched = snapshot.rows.Row(row);
    std::string preview = fetched.preview;
    _RVITEM item = fetched.item;
    item.text = preview.data();
    const bool isSelected = IsSelected(row);
    item.state |= isSelected ? RVIS_SELECTED : 0;
    dc.SetTextColor(m_data.look.colors.Readable(
        TextColorOf(item.textColor, isSelected),
        RowColor(row > 0 && (row & 1), item.backgroundColor, PlainColor(), isSelected)));
    _NMRVITEMDRAW notification = {};
    m_data.FillHeader(notification.hdr, RVN_ITEMDRAWPREVIEW);
    notification.item = &item;
    notification.dc = dc;
    notification.rect = rect;
    if (m_data.control.OnRvnItemDrawPreviewBypass(reinterpret_cast<_NMREPORTVIEW*>(&notification)) != 0 ||
        !item.text)
        return;
    const CRect text = ToRect(report::CellLayout(m_data.view).Inner(ToRect(rect)));
    GraphicText(dc).DrawLines(preview.data(), static_cast<int>(preview.size()), text);
}

// ---- The grid, and an empty list

// The frame of the rows, what goes on below them, and the columns.
void CReportCtrl::Data::Painter::DrawGrid(CDC& dc, const CRect& clip, int bottom)
{
    const report::View& view = m_data.view;
    const int left = view.report.left - view.left;
    const int end = m_data.style & RVS_EXTENDGRID ? view.report.bottom : bottom;
    const int width = snapshot.geometry.RowWidth();
    VerticalLine(dc, left, view.report.top, end, clip);
    VerticalLine(dc, left + width - 1, view.report.top, end, clip);
    const bool extended = (m_data.style & RVS_HORIZONTALGRID) && (m_data.style & RVS_EXTENDGRID);
    for (int y = bottom + view.itemHeight - 1; extended && view.itemHeight > 0 && y < clip.bottom;
         y += view.itemHeight)
        HorizontalLine(dc, left, report::ToInt(std::int64_t{left} + width), y, clip);
    if (!(m_data.style & RVS_VERTICALGRID))
        return;
    __int64 right = left;
    for (const report::Column& column : snapshot.rows.Columns())
    {
        right += column.width;
        if (right - 1 >= clip.right)
            break;
        VerticalLine(dc, static_cast<int>(right - 1), view.report.top, end, clip);
    }
}

void CReportCtrl::Data::Painter::DrawEmptyText(CDC& dc)
{
    const report::View& view = m_data.view;
    const int left = view.report.left - view.left;
    const int top = view.report.top + kEmptyTextTop;
    const CRect rect(left, top, left + snapshot.geometry.RowWidth(), top + view.itemHeight);
    const ZEMA::String& text = m_data.properties.emptyText;
    dc.SetTextColor(m_data.look.colors.System(RVSC_TEXT));
    GraphicText(dc).Draw(text.c_str(), static_cast<int>(text.GetLength()), rect, DT_CENTER | DT_END_ELLIPSIS);
}

// ---- Cells

void CReportCtrl::Data::Painter::DrawCells(CDC& dc, const CRect& rowRect, const CRect& clip, int row,
                                           const _RVITEM& item, bool isSelected)
{
    report::ShownRow shown;
    shown.row = row;
    shown.shape = snapshot.rows.ShapeOf(row);
    const int left = rowRect.left - report::CellLayout(m_data.view).Indentation(shown.shape.level);
    shown.rect = {left, rowRect.top, rowRect.right, rowRect.bottom};
    for (report::ShownCell cell; snapshot.geometry.Next(shown, cell) && cell.left < clip.right;)
    {
        if (cell.box && cell.box->right > clip.left && cell.box->left < clip.right)
            m_data.control.DrawTreeBox(&dc, ToRect(*cell.box), (item.state & RVIS_EXPANDED) != 0);
        if (cell.rect.right > clip.left && cell.rect.left < clip.right)
            DrawCell(dc, row, cell, isSelected);
    }
}

void CReportCtrl::Data::Painter::DrawCell(CDC& dc, int row, const report::ShownCell& shown, bool isSelected)
{
    _RVITEM cell;
    std::string text = std::exchange(m_data.painting.text, {}); // its memory is used again
    if (!snapshot.rows.ReadCell(row, shown.subitem, cell, text))
        return;
    const CRect rect = ToRect(shown.rect);
    const report::Selection& selection = m_data.rows.selection;
    const bool isFocused = IsFocused(row, shown.column);
    if (isFocused)
        m_data.control.DrawBkgnd(&dc, rect, PlainColor());
    cell.state |= isSelected ? RVIS_SELECTED : 0;
    cell.state |= row == selection.focusRow ? RVIS_FOCUSED : 0;
    // A colour of the item's own would hide what is selected and focused.
    if (isSelected || isFocused)
        cell.backgroundColor = -1;
    const COLORREF color = CellTextColor(row, shown.column, cell);
    if (dc.GetTextColor() != color) // asking is cheap, and setting a call of the system
        dc.SetTextColor(color);

    if (!(cell.state & RVIS_OWNERDRAWN) || !NotifyDraw(dc, cell, rect))
        m_data.control.DrawItem(&dc, ToRect(report::CellLayout(m_data.view).Inner(shown.rect)), &cell);
    if (isFocused)
        DrawFocus(dc, rect);
    m_data.painting.text = std::move(text);
}

// Whether the owner has drawn an owner-drawn cell itself.
bool CReportCtrl::Data::Painter::NotifyDraw(CDC& dc, _RVITEM& cell, const CRect& rect)
{
    _NMRVITEMDRAW notification = {};
    m_data.FillHeader(notification.hdr, RVN_ITEMDRAW);
    notification.item = &cell;
    notification.dc = dc;
    notification.rect = rect;
    const report::SavedState saved(dc);
    return m_data.control.Notify(reinterpret_cast<_NMREPORTVIEW*>(&notification)) != 0;
}

void CReportCtrl::Data::Painter::DrawListImage(CDC& dc, const CRect& room, const CRect& picture,
                                               CImageList* list, int image, UINT style, int blend) const
{
    const int width = std::min(picture.Width(), room.Width());
    if (!list || image < 0 || image >= list->GetImageCount() || width <= 0)
        return;
    const report::Clipped clipped(dc, room, picture);
    const bool mayCopy =
        m_data.properties.keepImages && list == m_data.look.itemImages && style == ILD_TRANSPARENT;
    if (mayCopy && m_data.look.itemCopies.Draw(dc, CPoint(picture.left, picture.top), width, *list, image))
        return;
    IMAGELISTDRAWPARAMS drawing = {};
    drawing.cbSize = sizeof(drawing);
    drawing.i = image;
    drawing.hdcDst = dc;
    drawing.x = picture.left;
    drawing.y = picture.top;
    drawing.cx = width;
    drawing.rgbBk = CLR_NONE;
    drawing.rgbFg = m_data.look.colors.System(blend);
    drawing.fStyle = style;
    drawing.dwRop = SRCCOPY;
    list->DrawIndirect(&drawing);
}
