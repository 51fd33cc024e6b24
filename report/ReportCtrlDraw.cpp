// The report control's painting: all of it, its rows and its grid.
#include "report/ReportCtrlData.h"

#include "afxcontrolbarutil.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kEmptyTextTop = 2; // below the top of the rows' area

// Selects a drawing object for as long as it lives.
class Selected
{
public:
    Selected(CDC& dc, HGDIOBJ object) : m_dc(dc), m_old(::SelectObject(dc, object)) {}
    ~Selected() { ::SelectObject(m_dc, m_old); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    CDC& m_dc;
    HGDIOBJ m_old;
};

// Has a device context show the colours of a palette.
class Realized
{
public:
    Realized(CDC& dc, HPALETTE palette) : m_dc(dc) // null for none
    {
        if (!palette)
            return;
        m_old = ::SelectPalette(dc, palette, FALSE);
        dc.RealizePalette();
    }
    ~Realized()
    {
        if (m_old)
            ::SelectPalette(m_dc, m_old, FALSE);
    }
    Realized(const Realized&) = delete;
    Realized& operator=(const Realized&) = delete;

private:
    CDC& m_dc;
    HPALETTE m_old = nullptr;
};

class Drawing
{
public:
    explicit Drawing(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Drawing() { m_flag = false; }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

private:
    bool& m_flag;
};

void Line(CDC& dc, int x1, int y1, int x2, int y2)
{
    dc.MoveTo(x1, y1);
    dc.LineTo(x2, y2);
}

} // namespace

// ---- Paint messages

BOOL CReportCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE; // OnPaint covers all of the window
}

void CReportCtrl::OnPaint()
{
    if (m_data->painting) // a callback asks for a paint in the midst of one
    {
        m_data->dirty.Painted();
        const CPaintDC validated(this);
        m_data->paintAgain = true;
        return;
    }
    const Painting painting(*this);
    GetRowCount(); // the rows are made
    if (std::exchange(m_data->tooFar, false))
        ScrollWindow(SB_VERT, painting.places.geometry.FittingTop(m_data->view.topRow));
    m_data->dirty.Painted();
    {
        CPaintDC dc(this);
        const CRect header = ToRect(m_data->view.header);
        ::ExcludeClipRect(dc, header.left, header.top, header.right, header.bottom);
        const Realized realized(dc, m_data->PaletteToRealize());
        CRect clip;
        dc.GetClipBox(clip);
        if (m_data->doubleBuffer && !clip.IsRectEmpty())
        {
            CMemDC memory(dc, clip);
            const Realized inMemory(memory.GetDC(), m_data->PaletteToRealize());
            DrawCtrl(&memory.GetDC());
        }
        else
            DrawCtrl(&dc);
    }
    if (m_hWnd)
        UpdateScrollBars();
    if (m_hWnd && std::exchange(m_data->paintAgain, false))
        Redraw();
}

// ---- The control

COLORREF CReportCtrl::GetPlainColor() const
{
    return GetSystemColor(m_data->style & RVS_FACEBACKGROUND ? RVSC_FACE : RVSC_WINDOW);
}

bool CReportCtrl::IsRowSelected(int row) const
{
    return row >= 0 && m_data->rows.selection.IsSelected(row) &&
           (m_data->hasFocus || (m_data->style & RVS_KEEPSELECTION));
}

// The colour of a text with this index of the colour table.
COLORREF CReportCtrl::GetTextColorOf(int index, bool selected) const
{
    if (selected && (index < 0 || !(m_data->style & RVS_KEEPTEXTCOLOR)))
        return GetSystemColor(m_data->hasFocus ? RVSC_HIGHLIGHTTEXT : RVSC_INACTIVEHIGHLIGHTTEXT);
    return index >= 0 ? m_data->TableColor(index) : GetSystemColor(RVSC_TEXT);
}

void CReportCtrl::DrawCtrl(CDC* dc)
{
    CRect clip;
    dc->GetClipBox(clip);
    if (clip.IsRectEmpty() || m_data->drawing)
        return;
    const Painting painting(*this);
    const Drawing drawing(m_data->drawing);
    Places& places = painting.places;
    DrawBkgnd(dc, clip, GetPlainColor());
    CPen grid(m_data->gridPenStyle, 1, GetSystemColor(RVSC_GRID));
    const Selected pen(*dc, grid.GetSafeHandle());
    const Selected font(*dc, m_data->font);
    dc->SetBkMode(TRANSPARENT);
    if (m_data->style & RVS_FIXEDROW)
        DrawFixedRow(dc, clip, places);
    const CRect area = ToRect(m_data->view.report);
    CRect rowsClip;
    if (!rowsClip.IntersectRect(clip, area))
        return;
    const int bottom = DrawRows(dc, rowsClip, places);
    if (m_data->style & (RVS_HORIZONTALGRID | RVS_VERTICALGRID))
        DrawGrid(dc, rowsClip, places, bottom);
    if (GetRowCount() == 0 && !m_data->emptyText.IsEmpty())
        DrawEmptyText(dc);
}

void CReportCtrl::DrawFixedRow(CDC* dc, const CRect& clip, Places& places)
{
    const CRect strip = ToRect(m_data->view.fixedRow);
    CRect visible;
    if (!visible.IntersectRect(strip, clip))
        return;
    dc->FillSolidRect(strip, GetSystemColor(RVSC_FACE));
    dc->Draw3dRect(strip, GetSystemColor(RVSC_HIGHLIGHTEDGE), GetSystemColor(RVSC_DARKSHADOW));
    const std::optional<report::ShownRow> row = places.geometry.FindRow(report::kFixedRow);
    if (!row)
        return;
    DrawRow(dc, ToRect(row->rect), visible, report::kFixedRow, &places.rows.Row(report::kFixedRow).item, 0,
            1);
    if (m_data->hasFocus && m_data->rows.selection.focusRow == report::kFixedRow &&
        m_data->rows.selection.focusColumn < 0)
        DrawRowFocus(dc, ToRect(row->rect));
}

// Draws the rows within `clip`; the bottom of the last one.
int CReportCtrl::DrawRows(CDC* dc, const CRect& clip, Places& places)
{
    int bottom = m_data->view.report.top;
    for (report::ShownRow row; places.geometry.Next(row, clip.bottom);)
    {
        bottom = row.rect.bottom;
        if (row.rect.bottom <= clip.top)
            continue;
        const CRect whole = ToRect(row.rect);
        CRect indented = whole;
        indented.left += report::CellLayout(m_data->view).Indentation(row.shape.level);
        _RVITEM item = places.rows.Row(row.row).item;
        DrawRow(dc, indented, clip, row.row, &item, row.row & 1, 0);
        if (m_data->view.showPreviews && row.shape.hasPreview)
            DrawPreview(dc, ToRect(places.geometry.PreviewOf(row)), row.row);
        if (m_data->style & RVS_HORIZONTALGRID)
            Line(*dc, std::max(whole.left, clip.left), whole.bottom - 1, std::min(whole.right, clip.right),
                 whole.bottom - 1);
        const bool cell = (m_data->style & RVS_CELLFOCUS) && m_data->rows.selection.focusColumn >= 0;
        if (m_data->hasFocus && row.row == m_data->rows.selection.focusRow && !cell)
            DrawRowFocus(dc, indented);
    }
    return bottom;
}

void CReportCtrl::DrawRowFocus(CDC* dc, CRect rect)
{
    if (m_data->style & (RVS_HORIZONTALGRID | RVS_VERTICALGRID))
        rect = CRect(rect.left + 1, rect.top, rect.right - 1, rect.bottom - 1);
    dc->SetTextColor(GetSystemColor(RVSC_TEXT));
    dc->SetBkColor(GetSystemColor(RVSC_WINDOW));
    dc->DrawFocusRect(rect);
}

// The frame of the rows, what goes on below them, and the columns.
void CReportCtrl::DrawGrid(CDC* dc, const CRect& clip, Places& places, int bottom)
{
    const report::View& view = m_data->view;
    const int left = view.report.left - view.left;
    const int end = m_data->style & RVS_EXTENDGRID ? view.report.bottom : bottom;
    const auto vertical = [&](int x) {
        if (clip.left <= x && x < clip.right)
            Line(*dc, x, std::max<int>(view.report.top, clip.top), x, std::min<int>(end, clip.bottom));
    };
    const std::vector<report::Column>& columns = places.rows.Columns();
    const int width = places.geometry.RowWidth();
    vertical(left);
    vertical(left + width - 1);
    const bool extended = (m_data->style & RVS_HORIZONTALGRID) && (m_data->style & RVS_EXTENDGRID);
    for (int y = bottom + view.itemHeight - 1; extended && view.itemHeight > 0 && y < clip.bottom;
         y += view.itemHeight)
        Line(*dc, std::max<int>(left, clip.left), y, std::min<int>(left + width, clip.right), y);
    if (!(m_data->style & RVS_VERTICALGRID))
        return;
    __int64 right = left;
    for (const report::Column& column : columns)
    {
        right += column.width;
        if (right - 1 >= clip.right)
            break;
        vertical(static_cast<int>(right - 1));
    }
}

void CReportCtrl::DrawEmptyText(CDC* dc)
{
    const report::View& view = m_data->view;
    const CRect rect(view.report.left - view.left, view.report.top + kEmptyTextTop,
                     view.report.left - view.left + Places(*this).geometry.RowWidth(),
                     view.report.top + kEmptyTextTop + view.itemHeight);
    dc->SetTextColor(GetSystemColor(RVSC_TEXT));
    GraphicText(*dc).Draw(m_data->emptyText.c_str(), static_cast<int>(m_data->emptyText.GetLength()), rect,
                          DT_CENTER | DT_END_ELLIPSIS);
}

// Without a picture, or where there is no row, the colour alone.
void CReportCtrl::DrawBkgnd(CDC* dc, CRect rect, unsigned long color)
{
    dc->FillSolidRect(rect, color);
    BITMAP picture = {};
    CRect part;
    if (!m_data->background.GetSafeHandle() || !m_data->background.GetObject(sizeof(picture), &picture) ||
        picture.bmWidth <= 0 || picture.bmHeight <= 0 ||
        !part.IntersectRect(rect, ToRect(m_data->view.report)))
        return;
    CDC source;
    if (!source.CreateCompatibleDC(dc))
        return;
    const Selected bitmap(source, m_data->background.GetSafeHandle());
    const int saved = dc->SaveDC();
    dc->IntersectClipRect(part);
    // The picture is repeated, and goes with the columns when they are scrolled.
    const report::View& view = m_data->view;
    const int left = view.report.left - view.left % picture.bmWidth;
    for (int y = view.report.top; y < part.bottom; y += picture.bmHeight)
        for (int x = left; x < part.right; x += picture.bmWidth)
            if (x + picture.bmWidth > part.left && y + picture.bmHeight > part.top)
                dc->BitBlt(x, y, picture.bmWidth, picture.bmHeight, &source, 0, 0, SRCCOPY);
    dc->RestoreDC(saved);
}

// ---- Rows

void CReportCtrl::DrawRow(CDC* dc, CRect rowRect, CRect clipRect, int row, _RVITEM* item, int odd, int fixed)
{
    const bool selected = !fixed && IsRowSelected(row);
    const COLORREF plain = GetPlainColor();
    COLORREF color = plain;
    if (odd && (m_data->style & RVS_ALTERNATEROWS))
        color = m_data->TableColor(0);
    if (item->backgroundColor >= 0)
        color = m_data->TableColor(item->backgroundColor);
    if (selected)
        color = GetSystemColor(m_data->hasFocus ? RVSC_HIGHLIGHT : RVSC_INACTIVEHIGHLIGHT);
    CRect visible;
    visible.IntersectRect(rowRect, clipRect);
    if (color != plain) // which is there already
        dc->FillSolidRect(visible, color);
    if (!m_data->view.showLines && !fixed)
    {
        dc->SetTextColor(GetTextColorOf(item->textColor, selected));
        return;
    }

    const Painting painting(*this);
    report::Geometry& geometry = painting.places.geometry;
    report::ShownRow placed;
    placed.row = row;
    placed.shape = painting.places.rows.ShapeOf(row);
    const int left = rowRect.left - report::CellLayout(m_data->view).Indentation(placed.shape.level);
    placed.rect = {left, rowRect.top, rowRect.right, rowRect.bottom};
    for (report::ShownCell cell; geometry.Next(placed, cell) && cell.rect.left < clipRect.right;)
    {
        if (cell.box && cell.box->right > clipRect.left)
            DrawTreeBox(dc, ToRect(*cell.box), (item->state & RVIS_EXPANDED) != 0);
        if (cell.rect.right > clipRect.left)
            DrawCell(dc, row, cell.column, cell.subitem, ToRect(cell.rect), selected);
    }
}

void CReportCtrl::DrawCell(CDC* dc, int row, int column, int subitem, const CRect& rect, bool selected)
{
    _RVITEM cell;
    const Painting painting(*this);
    std::string text = std::move(m_data->drawn); // its memory is used again
    if (!painting.places.rows.ReadCell(row, subitem, cell, text))
        return;
    const report::Selection& selection = m_data->rows.selection;
    const bool focused = m_data->hasFocus && row == selection.focusRow && column == selection.focusColumn &&
                         (row == report::kFixedRow || (m_data->style & RVS_CELLFOCUS));
    if (focused)
        DrawBkgnd(dc, rect, GetPlainColor());
    cell.state |= selected ? RVIS_SELECTED : 0;
    cell.state |= row == selection.focusRow ? RVIS_FOCUSED : 0;
    // A colour of the item's own would hide what is selected and focused.
    if (selected || focused)
        cell.backgroundColor = -1;
    dc->SetTextColor(focused ? GetSystemColor(RVSC_TEXT) : GetTextColorOf(cell.textColor, selected));

    CRect contents(rect.left + m_data->view.margin, rect.top, rect.right - m_data->view.margin, rect.bottom);
    if (!(cell.state & RVIS_OWNERDRAWN) || !NotifyDraw(dc, &cell, rect))
        DrawItem(dc, contents, &cell);
    if (focused)
        DrawRowFocus(dc, rect);
    m_data->drawn = std::move(text);
}

void CReportCtrl::DrawPreview(CDC* dc, const CRect& rect, int row)
{
    const Painting painting(*this);
    RowSource::FetchedRow& fetched = painting.places.rows.Row(row);
    std::string preview = fetched.preview;
    _RVITEM item = fetched.item;
    item.text = preview.data();
    item.state |= IsRowSelected(row) ? RVIS_SELECTED : 0;
    dc->SetTextColor(GetTextColorOf(item.textColor, IsRowSelected(row)));
    _NMRVITEMDRAW notification = {};
    FillHeader(notification.hdr, RVN_ITEMDRAWPREVIEW);
    notification.item = &item;
    notification.dc = *dc;
    notification.rect = rect;
    if (OnRvnItemDrawPreviewBypass(reinterpret_cast<_NMREPORTVIEW*>(&notification)) != 0)
        return;
    CRect text(rect.left + m_data->view.margin, rect.top, rect.right - m_data->view.margin, rect.bottom);
    ::DrawText(*dc, preview.data(), static_cast<int>(preview.size()), text,
               DT_NOPREFIX | DT_EXPANDTABS | DT_WORDBREAK | DT_END_ELLIPSIS);
}

// Whether the owner has drawn an owner-drawn cell itself.
bool CReportCtrl::NotifyDraw(CDC* dc, _RVITEM* cell, const CRect& rect)
{
    _NMRVITEMDRAW notification = {};
    FillHeader(notification.hdr, RVN_ITEMDRAW);
    notification.item = cell;
    notification.dc = *dc;
    notification.rect = rect;
    const int saved = dc->SaveDC();
    const LRESULT answer = Notify(reinterpret_cast<_NMREPORTVIEW*>(&notification));
    dc->RestoreDC(saved);
    return answer != 0;
}
