#include "report/model/Geometry.h"

#include "ReportItem.h"

#include <algorithm>
#include <limits>

namespace report
{

void LayOut(View& view, int width, int height, int headerHeight, bool hasFixedRow)
{
    const std::int64_t fixedHeight = hasFixedRow ? view.itemHeight + std::int64_t{2} * view.fixedFrame : 0;
    view.header = {0, 0, width, headerHeight};
    view.fixedRow = {0, headerHeight, width, ToInt(headerHeight + fixedHeight)};
    view.report = {0, view.fixedRow.bottom, width, std::max(view.fixedRow.bottom, height)};
}

// ---- Rows

int Geometry::HeightOf(int row)
{
    const int preview = m_view.showPreviews ? m_source.ShapeOf(row).previewHeight : 0;
    return ToInt(std::int64_t{m_view.LineHeight()} + preview);
}

RowRange Geometry::RowsFrom(int first)
{
    const int count = m_source.RowCount();
    int last = first;
    int hidden = 0;
    for (std::int64_t room = m_view.report.Height(); last < count && hidden <= kMaxHidden; ++last)
    {
        const int height = HeightOf(last);
        room -= height;
        hidden += height == 0;
        if (room < 0)
            break;
    }
    return {first, std::max(first, last - 1)};
}

RowRange Geometry::RowsUpTo(int last)
{
    int first = last;
    int hidden = 0;
    std::int64_t room = m_view.report.Height();
    if (last < m_source.RowCount()) // a program may scroll past the end
        room -= HeightOf(last);
    while (first > 0 && hidden <= kMaxHidden)
    {
        const int height = HeightOf(first - 1);
        room -= height;
        hidden += height == 0;
        if (room < 0)
            break;
        --first;
    }
    return {first, last};
}

int Geometry::EndTop()
{
    const int count = m_source.RowCount();
    return count > 0 ? RowsUpTo(count - 1).first : 0;
}

int Geometry::FittingTop(int topRow)
{
    const int count = m_source.RowCount();
    topRow = std::clamp(topRow, 0, count);
    const int line = m_view.LineHeight();
    const bool farFromEnd = line > 0 && count - topRow > m_view.report.Height() / line;
    return farFromEnd ? topRow : std::min(topRow, EndTop());
}

int Geometry::TopToShow(int row)
{
    const int top = std::clamp(m_view.topRow, 0, m_source.RowCount());
    if (row <= top)
        return row;
    return row <= RowsFrom(top).last ? top : RowsUpTo(row).first;
}

bool Geometry::Next(ShownRow& row, int bottom)
{
    const int left = ToInt(std::int64_t{m_view.report.left} - m_view.left);
    if (row.row == kNoRow)
    {
        const int width = RowWidth();
        row.row = std::max(0, m_view.topRow);
        row.rect = {left, m_view.report.top, ToInt(std::int64_t{left} + width), m_view.report.top};
    }
    else
    {
        ++row.row;
        row.rect.top = row.rect.bottom;
    }
    for (; row.row < m_source.RowCount() && row.rect.top < bottom && row.hidden <= kMaxHidden; ++row.hidden)
    {
        row.shape = m_source.ShapeOf(row.row);
        const int preview = m_view.showPreviews ? row.shape.previewHeight : 0;
        row.rect.bottom = ToInt(std::int64_t{row.rect.top} + m_view.LineHeight() + preview);
        if (row.rect.bottom > row.rect.top)
            return true;
        ++row.row;
    }
    return false;
}

std::optional<ShownRow> Geometry::FindRow(int row)
{
    ShownRow found;
    if (row == kFixedRow)
    {
        const int left = ToInt(std::int64_t{m_view.report.left} - m_view.left);
        found.row = kFixedRow;
        found.rect = {left, ToInt(std::int64_t{m_view.fixedRow.top} + m_view.fixedFrame),
                      ToInt(std::int64_t{left} + RowWidth()),
                      ToInt(std::int64_t{m_view.fixedRow.bottom} - m_view.fixedFrame)};
        found.shape = m_source.ShapeOf(kFixedRow);
        return found.rect.Height() > 0 ? std::optional(found) : std::nullopt;
    }
    while (Next(found, m_view.report.bottom))
        if (found.row == row)
            return found;
    return std::nullopt;
}

// ---- Columns

int Geometry::RowWidth()
{
    std::int64_t width = 0;
    for (const Column& column : m_source.Columns())
        width += column.width;
    const int preview = m_view.showLines ? 0 : m_view.previewWidth;
    return ToInt(std::max<std::int64_t>({width, m_view.header.Width(), preview}));
}

int Geometry::EndLeft()
{
    return std::max(0, RowWidth() - m_view.report.Width());
}

int Geometry::LeftToShow(int column)
{
    const std::vector<Column>& columns = m_source.Columns();
    if (column < 0 || static_cast<std::size_t>(column) >= columns.size())
        return m_view.left;
    std::int64_t left = 0;
    for (int i = 0; i < column; ++i)
        left += columns[static_cast<std::size_t>(i)].width;
    const std::int64_t right = left + columns[static_cast<std::size_t>(column)].width;
    const std::int64_t end = std::int64_t{m_view.left} + m_view.report.Width();
    return right > end || left < m_view.left ? ToInt(left) : m_view.left;
}

// The fixed row is all line.
int Geometry::LineBottom(const ShownRow& row) const
{
    return row.row == kFixedRow ? row.rect.bottom : ToInt(std::int64_t{row.rect.top} + m_view.LineHeight());
}

bool Geometry::Next(const ShownRow& row, ShownCell& cell)
{
    const std::vector<Column>& columns = m_source.Columns();
    const bool first = cell.column == kNoColumn;
    const bool spanning = row.shape.spanning >= 0;
    ++cell.column;
    if (spanning ? !first : static_cast<std::size_t>(cell.column) >= columns.size())
        return false;
    const Column column = spanning ? Column{row.shape.spanning, row.rect.Width()}
                                   : columns[static_cast<std::size_t>(cell.column)];
    const int left = first ? row.rect.left : cell.rect.right;
    cell.subitem = column.subitem;
    cell.left = left;
    cell.rect = {left, row.rect.top, ToInt(std::int64_t{left} + column.width), LineBottom(row)};
    cell.box.reset();
    if (!first || row.shape.level < 0)
        return true;

    const int indented = ToInt(std::int64_t{left} + m_cells.Indentation(row.shape.level));
    if (row.shape.hasBox && indented <= cell.rect.right)
        cell.box = m_cells.TreeBoxOf({indented, cell.rect.top, cell.rect.right, cell.rect.bottom});
    cell.rect.left = std::min(indented, cell.rect.right);
    return true;
}

std::optional<ShownCell> Geometry::FindCell(const ShownRow& row, int column)
{
    ShownCell cell;
    while (Next(row, cell))
        if (cell.column == column)
            return cell;
    return std::nullopt;
}

Rect Geometry::PreviewOf(const ShownRow& row) const
{
    const int left = ToInt(std::int64_t{row.rect.left} + m_cells.Indentation(row.shape.level));
    return {std::min(left, row.rect.right), LineBottom(row), row.rect.right, row.rect.bottom};
}

// ---- Points

Hit Geometry::HitTest(int x, int y)
{
    Hit hit;
    const Rect& area = m_view.report;
    if (m_view.fixedRow.Contains(x, y))
    {
        hit.flags = RVHT_ONFIXEDROW;
        if (const std::optional<ShownRow> row = FindRow(kFixedRow))
            HitRow(x, y, *row, hit);
        return hit;
    }
    if (!area.Contains(x, y))
    {
        hit.flags |= y < area.top ? RVHT_ABOVE : 0;
        hit.flags |= y >= area.bottom ? RVHT_BELOW : 0;
        hit.flags |= x < area.left ? RVHT_TOLEFT : 0;
        hit.flags |= x >= area.right ? RVHT_TORIGHT : 0;
        return hit;
    }
    for (ShownRow row; Next(row, y + 1);)
    {
        if (!row.rect.Contains(x, y))
            continue;
        HitRow(x, y, row, hit);
        return hit;
    }
    hit.flags = RVHT_NOWHERE;
    return hit;
}

void Geometry::HitRow(int x, int y, const ShownRow& row, Hit& hit)
{
    hit.row = row.row;
    hit.rect = row.rect;
    const bool belowLine = row.row != kFixedRow && y >= LineBottom(row);
    if (belowLine && row.shape.hasPreview)
    {
        hit.flags |= RVHT_ONITEMPREVIEW;
        hit.rect.top = LineBottom(row); // and all of the row's width, as the flag
        return;
    }
    for (ShownCell cell; Next(row, cell);)
    {
        if (x < cell.left || x >= cell.rect.right)
            continue;
        hit.column = cell.column;
        hit.subitem = cell.subitem;
        if (!belowLine)
            return HitCell(x, y, row, cell, hit);
        break;
    }
    hit.flags |= RVHT_NOWHERE;
}

void Geometry::HitCell(int x, int y, const ShownRow& row, const ShownCell& cell, Hit& hit)
{
    if (cell.box && cell.box->Contains(x, y))
    {
        hit.flags |= RVHT_ONITEMTREEBOX;
        hit.rect = *cell.box;
        return;
    }
    const CellContents contents = m_source.ContentsOf(row.row, cell.subitem);
    const CellParts parts = m_cells.PartsOf(cell.rect, contents);
    const auto isHit = [&](const Rect& part, bool isShown, std::uint32_t flag) {
        if (!part.Contains(x, y))
            return false;
        hit.flags |= isShown ? flag : RVHT_NOWHERE;
        hit.rect = part;
        return true;
    };
    if (isHit(parts.image, contents.hasImage, RVHT_ONITEMIMAGE) ||
        isHit(parts.check, contents.hasCheck, RVHT_ONITEMCHECK) || isHit(parts.text, true, RVHT_ONITEMTEXT))
        return;
    hit.flags |= RVHT_NOWHERE;
    hit.rect = cell.rect;
}

} // namespace report
