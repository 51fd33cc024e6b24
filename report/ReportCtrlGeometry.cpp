// What the report control tells its geometry, and whom it tells where things are.
#include "report/ReportSnapshot.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>

namespace
{

constexpr int kMaxPreview = 0x7FFF; // pixels

} // namespace

// ---- Rows and columns as the geometry asks for them

CReportCtrl::Data::FetchedRows::Fetched& CReportCtrl::Data::FetchedRows::Row(int row)
{
    if (m_row.row == row)
        return m_row;
    m_row = {};
    const int item = m_data.rows.ItemAt(row);
    report::FetchedCell fetched;
    if (m_data.items.Fetch(item, -1, RVIM_TEXT | RVIM_STATE | RVIM_PREVIEWHEIGHT, fetched))
    {
        m_row.preview = fetched.cell.text;
        report::FillRecord(m_row.item, fetched);
        m_row.item.previewHeight = std::clamp(m_row.item.previewHeight, 0, kMaxPreview);
        const _TREEITEM* const treeItem = m_data.rows.IsTree() ? fetched.item->treeItem : nullptr;
        if (treeItem && treeItem->subitem >= 0 && treeItem->subitem < m_data.items.SubItemCount())
            m_row.shape.spanning = treeItem->subitem;
    }
    m_row.item.item = item;
    m_row.item.subitem = -1;
    m_row.item.text = m_row.preview.data();
    m_row.item.textMax = static_cast<int>(m_row.preview.size()) + 1;
    m_row.item.mask |= RVIM_TEXT | RVIM_STATE | RVIM_ITEMDATA;
    m_row.shape.previewHeight = m_row.item.previewHeight;
    m_row.shape.hasPreview = !m_row.preview.empty();
    m_row.shape.level = m_row.item.treeLevel;
    m_row.shape.hasBox = (m_row.item.state & (RVIS_COLLAPSED | RVIS_EXPANDED)) != 0;
    m_row.row = row; // only now: the callback may have thrown
    return m_row;
}

bool CReportCtrl::Data::FetchedRows::ReadCell(int row, int subitem, _RVITEM& cell, std::string& text)
{
    const int item = Row(row).item.item;
    report::FetchedCell fetched;
    if (subitem < 0 || !m_data.items.Fetch(item, subitem, RVIM_TEXT | RVIM_STATE, fetched))
        return false;
    text.assign(fetched.cell.text);
    cell = {};
    cell.item = item;
    cell.subitem = subitem;
    cell.text = fetched.cell.hasText ? text.data() : nullptr;
    cell.textMax = static_cast<int>(text.size()) + 1;
    report::FillRecord(cell, fetched);
    return true;
}

report::CellContents CReportCtrl::Data::FetchedRows::ContentsOf(int row, int subitem)
{
    report::FetchedCell fetched;
    if (subitem < 0 || !m_data.items.Fetch(m_data.rows.ItemAt(row), subitem, RVIM_TEXT, fetched))
        return {};
    _RVITEM cell;
    cell.subitem = subitem;
    report::FillRecord(cell, fetched);
    return m_data.ContentsOf(cell);
}

report::CellContents CReportCtrl::Data::ContentsOf(const _RVITEM& cell) const
{
    const unsigned format = items.FormatOf(cell.subitem);
    return {cell.image >= 0, cell.check >= 0, (format & RVSF_IMAGEPLACE) != 0,
            (format & RVSF_CHECKPLACE) != 0};
}

const std::vector<report::Column>& CReportCtrl::Data::FetchedRows::Columns()
{
    if (!m_areColumnsRead)
        m_columns = m_data.header.GetColumns();
    m_areColumnsRead = true;
    return m_columns;
}

// ---- Answers

bool CReportCtrl::GetRowHeight(int row, int& height)
{
    height = m_data->view.LineHeight();
    if (!m_data->view.showPreviews)
        return true;
    const int item = GetItemFromRow(row);
    const bool isCallback = m_data->items.IsCallback();
    if (item < RVI_DEFAULT && !isCallback)
        report::ThrowInvalidArgument();
    report::FetchedCell fetched;
    if (!m_data->items.Fetch(item, -1, RVIM_PREVIEWHEIGHT, fetched))
        return false;
    height += std::clamp(fetched.item->previewHeight, 0, kMaxPreview);
    return !isCallback || item == RVI_DEFAULT || !m_data->items.IsDefault(*fetched.item);
}

int CReportCtrl::MeasureItem(int item, int subitem, RECT* rect, int noDecorations)
{
    *rect = {0, 0, m_data->view.margin, m_data->view.LineHeight()};
    report::FetchedCell view;
    if (subitem < 0 || !m_data->items.Fetch(item, subitem, RVIM_TEXT | RVIM_STATE, view))
        return 1;
    const report::CellContents contents = {!noDecorations && view.cell.image >= 0,
                                           !noDecorations && view.cell.check >= 0};
    int width = -1;
    if (view.cell.hasText)
    {
        const bool bold = (view.item->state & RVIS_BOLD) != 0;
        width = m_data->look.fonts.WidthOf(view.cell.text, bold);
    }
    rect->right = report::CellLayout(m_data->view).ContentsWidth(contents, width);
    return 1;
}

int CReportCtrl::GetRowRect(int row, int column, RECT* rect, unsigned int)
{
    Data::Snapshot snapshot(*m_data);
    const bool fixed = row == RVI_DEFAULT && (m_data->style & RVS_FIXEDROW);
    if (!fixed && (row < 0 || row >= GetRowCount()))
        return 0;
    const std::optional<report::ShownRow> found = snapshot.geometry.FindRow(row);
    if (!found)
        return 0;
    if (column < 0)
    {
        *rect = ToRect(found->rect);
        return 1;
    }
    const std::optional<report::ShownCell> cell = snapshot.geometry.FindCell(*found, column);
    if (!cell)
        return 0;
    *rect = CRect(cell->left, cell->rect.top, cell->rect.right, cell->rect.bottom);
    return 1;
}

int CReportCtrl::GetItemRect(int item, int subitem, RECT* rect, unsigned int part)
{
    const int column = subitem < 0 ? -1 : GetColumnFromSubItem(subitem);
    if (subitem >= 0 && column < 0)
        return 0;
    return GetRowRect(GetRowFromItem(item), column, rect, part);
}

int CReportCtrl::GetTopIndex()
{
    GetRowCount(); // the rows are made, and the position cut to them
    return m_data->view.topRow;
}

int CReportCtrl::GetVisibleRows(int fromRow, int* first, int* last, int reverse)
{
    *first = 0;
    *last = -1;
    if (fromRow < 0 || fromRow >= GetRowCount())
        return 0;
    Data::Snapshot snapshot(*m_data);
    const report::RowRange rows =
        reverse ? snapshot.geometry.RowsUpTo(fromRow) : snapshot.geometry.RowsFrom(fromRow);
    *first = rows.first;
    *last = rows.last;
    return rows.last - rows.first + 1;
}

int CReportCtrl::GetVisibleCount(int partly)
{
    int count = 0;
    Data::Snapshot snapshot(*m_data);
    const int bottom = m_data->view.report.bottom;
    for (report::ShownRow row; snapshot.geometry.Next(row, bottom);)
        count += partly || row.rect.bottom <= bottom;
    return count;
}

int CReportCtrl::IsItemVisible(int item, int subitem)
{
    CRect rect;
    return GetItemRect(item, subitem, rect, RVRC_WHOLE) &&
           (item == RVI_DEFAULT || rect.bottom > m_data->view.report.top) &&
           rect.left < m_data->view.report.right && rect.right > m_data->view.report.left;
}

int CReportCtrl::HitTest(_RVHITTESTINFO* info)
{
    Data::Snapshot snapshot(*m_data, Data::FetchedRows::Shapes::Painted);
    const report::Hit hit = snapshot.geometry.HitTest(info->pt.x, info->pt.y);
    info->flags = hit.flags;
    info->row = hit.row;
    info->column = hit.column;
    info->subitem = hit.subitem;
    info->rect = ToRect(hit.rect);
    info->item = GetItemFromRow(hit.row);
    info->treeItem = m_data->rows.IsTree() ? GetItemHandle(info->item) : nullptr;
    return info->item;
}
