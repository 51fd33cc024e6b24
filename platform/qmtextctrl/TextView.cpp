#include "qmtextctrl/TextView.h"

#include <algorithm>
#include <limits>

namespace textview
{
namespace
{
constexpr int kNotch = 120;
constexpr int kMaxInt = std::numeric_limits<int>::max();
constexpr int kScrolledColumns = 8; // by a key
constexpr int kMostCovered = 64;    // rows
constexpr int kContextColumns = 8;  // on both sides of what is shown in its context

int Limited(std::int64_t value)
{
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), kMaxInt));
}

int FloorDivide(std::int64_t value, int divisor)
{
    const std::int64_t quotient = value / divisor;
    return Limited(value % divisor < 0 ? quotient - 1 : quotient);
}

// How many units `position` lies outside 0 to `length`, begun ones counted; below 0 before it.
int UnitsOutside(int position, int length, int unit)
{
    if (position < 0)
        return FloorDivide(position, unit);
    return position < length ? 0 : 1 + (position - length) / unit;
}

int Brightness(COLORREF color)
{
    const int red = static_cast<int>(color & 0xFF);
    const int green = static_cast<int>(color >> 8 & 0xFF);
    const int blue = static_cast<int>(color >> 16 & 0xFF);
    return (299 * red + 587 * green + 114 * blue) / 1000;
}
} // namespace

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr int TextView::kRowEnd;
constexpr unsigned TextView::kWheelPages;

bool IsReadable(COLORREF text, COLORREF background)
{
    const int difference = Brightness(text) - Brightness(background);
    return difference <= -40 || difference >= 40;
}

int WheelSteps::Add(int delta, int stepsPerNotch)
{
    if ((delta < 0) != (m_rest < 0))
        m_rest = 0; // turned back: what was left over is not owed
    const std::int64_t turned = m_rest + static_cast<std::int64_t>(delta) * stepsPerNotch;
    m_rest = static_cast<int>(turned % kNotch);
    return Limited(turned / kNotch);
}

void TextView::SetMetrics(const Metrics& metrics)
{
    const bool otherCells =
        metrics.cellWidth != m_metrics.cellWidth || metrics.columnCount != m_metrics.columnCount;
    m_metrics = {std::max(metrics.cellWidth, 1),   std::max(metrics.rowHeight, 1),
                 std::max(metrics.width, 1),       std::max(metrics.height, 1),
                 std::max(metrics.columnCount, 0), std::max(metrics.margin, 0)};
    if (otherCells)
        m_widest = 0;
    ScrollBy(0, 0);
}

Cell TextView::SelectionBegin() const
{
    return std::min(m_state.caret, m_state.anchor);
}

Cell TextView::SelectionEnd() const
{
    return std::max(m_state.caret, m_state.anchor);
}

bool TextView::IsSelected(Cell cell) const
{
    return !(cell < SelectionBegin()) && cell < SelectionEnd();
}

Range TextView::SelectedColumns(int row)
{
    const Cell begin = SelectionBegin();
    const Cell end = SelectionEnd();
    if (begin == end || row < begin.row || row > end.row)
        return {};
    const int last = row < end.row ? m_rows.GetRowColumnCount(row) : end.column;
    const int first = row > begin.row ? 0 : std::min(begin.column, last);
    return {first, last};
}

int TextView::PageRows() const
{
    return std::max(m_metrics.height / m_metrics.rowHeight, 1);
}

int TextView::PageColumns() const
{
    return std::max(m_metrics.width / m_metrics.cellWidth, 1);
}

Range TextView::VisibleRows()
{
    const std::int64_t begun = (m_metrics.height - 1) / m_metrics.rowHeight + 1;
    return {m_state.top, Limited(std::min<std::int64_t>(m_state.top + begun, m_rows.GetRowCount()))};
}

int TextView::RowsAbove(int row)
{
    if (row < 0 || row >= m_rows.GetRowCount())
        return 0;
    return std::clamp(m_rows.GetRowsAbove(row), 0, std::min(PageRows() / 2, kMostCovered));
}

int TextView::CoveredRows()
{
    int covered = 0;
    while (RowsAbove(Limited(std::int64_t{m_state.top} + covered)) > covered)
        ++covered;
    return covered;
}

int TextView::PageStep()
{
    return std::max(PageRows() - CoveredRows(), 1);
}

bool TextView::IsAtEnd()
{
    return m_rows.GetRowCount() - m_state.top <= PageRows();
}

int TextView::LastRow()
{
    return std::max(m_rows.GetRowCount(), 1) - 1;
}

int TextView::LeftOf(int row)
{
    const int left = row < m_rows.GetRowCount() ? std::max(m_rows.GetRowLeft(row), 0) : 0;
    const std::int64_t columns = static_cast<std::int64_t>(m_metrics.columnCount) * m_metrics.cellWidth;
    m_widest = std::max(m_widest, left + columns);
    return left;
}

// They hold until it is called again: rows may change between any two calls.
const VkGrafic::TextCells& TextView::CellsOf(int row)
{
    m_cells.Clear();
    if (row >= 0 && row < m_rows.GetRowCount())
        m_rows.GetRowCells(row, m_cells);
    return m_cells;
}

std::int64_t TextView::PixelOf(Cell place)
{
    const int cell = place.column > 0 ? CellsOf(place.row).CellOf(place.column) : place.column;
    return LeftOf(place.row) + static_cast<std::int64_t>(cell) * m_metrics.cellWidth;
}

int TextView::ColumnBehind(Cell place, int characters)
{
    return CellsOf(place.row).ColumnBehind(place.column, characters);
}

int TextView::XOf(Cell place)
{
    return Limited(PixelOf(place) - m_state.offset + m_metrics.margin);
}

int TextView::YOf(int row) const
{
    return Limited((static_cast<std::int64_t>(row) - m_state.top) * m_metrics.rowHeight);
}

bool TextView::HitTest(int x, int y, Cell& cell)
{
    const std::int64_t row = m_state.top + static_cast<std::int64_t>(FloorDivide(y, m_metrics.rowHeight));
    const int rowCount = m_rows.GetRowCount();
    cell = {static_cast<int>(std::clamp<std::int64_t>(row, 0, rowCount)), 0};
    const std::int64_t inArea = static_cast<std::int64_t>(x) - m_metrics.margin;
    const std::int64_t pixel = inArea + m_state.offset - LeftOf(cell.row);
    cell.column = FloorDivide(pixel, m_metrics.cellWidth);
    if (inArea < 0 && m_metrics.margin > 0)
        cell.column = std::min(cell.column, -1); // scrolled text lies below the margin
    if (cell.column > 0)
        cell.column = CellsOf(cell.row).ColumnOf(cell.column);
    return row >= 0 && row < rowCount;
}

ScrollRange TextView::RowScroll()
{
    return {LastRow(), PageRows(), m_state.top};
}

ScrollRange TextView::PixelScroll()
{
    return {std::max(Limited(m_widest), 1) - 1, m_metrics.width, m_state.offset};
}

void TextView::ScrollToTop(std::int64_t top)
{
    const int last = std::max(m_rows.GetRowCount() - PageRows(), 0);
    m_state.top = static_cast<int>(std::clamp<std::int64_t>(top, 0, last));
}

void TextView::ScrollToOffset(std::int64_t offset)
{
    LeftOf(m_state.top);
    const std::int64_t last = std::max<std::int64_t>(Limited(m_widest) - m_metrics.width, 0);
    m_state.offset = static_cast<int>(std::clamp<std::int64_t>(offset, 0, last));
}

void TextView::ScrollBy(std::int64_t rows, std::int64_t columns)
{
    ScrollToTop(m_state.top + rows);
    ScrollToOffset(m_state.offset + columns * m_metrics.cellWidth);
}

void TextView::ScrollToRow(int top)
{
    ScrollToTop(top);
}

void TextView::ScrollToPixel(int offset)
{
    ScrollToOffset(offset);
}

void TextView::EnsureVisible(Cell place, int rowCount, int columnCount)
{
    place.row = std::clamp(place.row, 0, LastRow());
    place.column = std::max(place.column, 0);
    const std::int64_t missing = static_cast<std::int64_t>(place.row) + std::max(rowCount, 1) - PageRows();
    const std::int64_t highest = static_cast<std::int64_t>(place.row) - RowsAbove(place.row);
    ScrollToTop(std::min<std::int64_t>(std::max<std::int64_t>(m_state.top, missing), highest));

    if (columnCount <= 0)
        return;
    const std::int64_t begin = PixelOf(place);
    const int lastColumn = Limited(std::int64_t{place.column} + columnCount - 1);
    const std::int64_t end = PixelOf({place.row, CellsOf(place.row).EndOf(lastColumn)});
    m_widest = std::max(m_widest, end);
    if (begin < m_state.offset)
        ScrollToOffset(place.column == 0 ? 0 : begin); // the margin comes along with the first column
    if (end - m_state.offset > m_metrics.width)
        ScrollToOffset(std::min(end - m_metrics.width, begin));
}

Cell TextView::Bounded(std::int64_t row, int column)
{
    if (m_rows.GetRowCount() <= 0)
        return {};
    const int bounded = static_cast<int>(std::clamp<std::int64_t>(row, 0, LastRow()));
    const int within = std::clamp(column, 0, std::max(m_rows.GetRowColumnCount(bounded), 0));
    return {bounded, within > 0 ? CellsOf(bounded).BeginOf(within) : 0};
}

void TextView::SetCaret(Cell place, Caret mode)
{
    m_state.caret = place;
    if (mode == Caret::Move)
        m_state.anchor = place;
}

void TextView::AimAtCaret()
{
    const Cell caret = m_state.caret;
    m_goalCell = caret.column > 0 ? CellsOf(caret.row).CellOf(caret.column) : 0;
}

void TextView::MoveCaret(Cell place, Caret mode)
{
    SetCaret(place, mode);
    AimAtCaret();
    EnsureVisible(place, 1, 1);
}

void TextView::MoveRow(std::int64_t row, Caret mode)
{
    const Cell begin = Bounded(row, 0);
    SetCaret(Bounded(begin.row, CellsOf(begin.row).ColumnOf(m_goalCell)), mode);
    EnsureVisible(m_state.caret, 1, 1);
}

void TextView::Focus(Cell place, bool bottom)
{
    const Cell bounded = Bounded(place.row, place.column);
    const std::int64_t row = bounded.row;
    const int above = RowsAbove(bounded.row);
    const bool inView = row - m_state.top >= above && row - m_state.top < PageRows();
    if (!inView)
        ScrollToTop(bottom ? row - PageRows() + 1 : row - above);
    MoveCaret(bounded, Caret::Move);
}

// As many rows above as half of those that a row out of view would have: so going from one place to the next
// scrolls seldom, and what is found is never at the edge.
void TextView::FocusInContext(Cell place, int columnCount)
{
    const Cell bounded = Bounded(place.row, place.column);
    const int third = PageRows() / 3;
    const int context = third / 2;
    const int above = RowsAbove(bounded.row);
    const std::int64_t line = static_cast<std::int64_t>(bounded.row) - m_state.top;
    if (line < above + context || line >= PageRows() - context)
        ScrollToTop(static_cast<std::int64_t>(bounded.row) - std::max(third, above + context));
    MoveCaret(bounded, Caret::Move);

    const std::int64_t before = PixelOf(bounded) - m_state.offset;
    const std::int64_t behind =
        before + static_cast<std::int64_t>(std::max(columnCount, 1)) * m_metrics.cellWidth;
    const std::int64_t around = std::int64_t{kContextColumns} * m_metrics.cellWidth;
    if (before < around || behind > m_metrics.width - around)
    {
        const int from = std::max(bounded.column - kContextColumns, 0);
        const int to = Limited(std::int64_t{bounded.column} + std::max(columnCount, 1) + kContextColumns);
        EnsureVisible({bounded.row, from}, 1, to - from);
    }
    EnsureVisible(bounded, 1, columnCount);
}

void TextView::Select(Cell place)
{
    m_state.anchor = Bounded(place.row, place.column);
}

void TextView::SelectAll()
{
    m_state.anchor = {};
    m_state.caret = Bounded(LastRow(), kRowEnd);
    AimAtCaret();
}

void TextView::RowsChanged()
{
    m_state.caret = Bounded(m_state.caret.row, m_state.caret.column);
    m_state.anchor = Bounded(m_state.anchor.row, m_state.anchor.column);
    ScrollBy(0, 0);
}

void TextView::MoveRows(int row, int delta)
{
    // What stood in a removed row goes to the row above.
    const auto moved = [row, delta](int from) -> int {
        if (from >= row)
            return Limited(std::max<std::int64_t>(static_cast<std::int64_t>(from) + delta, 0));
        const std::int64_t above = static_cast<std::int64_t>(row) + delta - 1;
        return static_cast<int>(std::max<std::int64_t>(std::min<std::int64_t>(from, above), 0));
    };
    m_state.caret.row = moved(m_state.caret.row);
    m_state.anchor.row = moved(m_state.anchor.row);
    m_state.top = moved(m_state.top);
}

void TextView::Reload()
{
    m_state = {};
    m_goalCell = 0;
    m_widest = 0;
    ScrollBy(0, 0);
}

void TextView::Move(Motion motion, Caret mode)
{
    const Cell caret = Bounded(m_state.caret.row, m_state.caret.column);
    const std::int64_t row = caret.row;
    const int page = PageRows();
    const int step = PageStep();
    switch (motion)
    {
    case Motion::Left:
        if (caret.column > 0)
            return MoveCaret(Bounded(row, caret.column - 1), mode);
        return MoveCaret(row > 0 ? Bounded(row - 1, kRowEnd) : caret, mode);
    case Motion::Right:
        if (caret.column < Bounded(row, kRowEnd).column)
            return MoveCaret(Bounded(row, CellsOf(caret.row).EndOf(caret.column)), mode);
        return MoveCaret(row < LastRow() ? Cell{caret.row + 1, 0} : caret, mode);
    case Motion::RowBegin:
        return MoveCaret({caret.row, 0}, mode);
    case Motion::RowEnd:
        return MoveCaret(Bounded(row, kRowEnd), mode);
    case Motion::Up:
        return MoveRow(row - 1, mode);
    case Motion::Down:
        return MoveRow(row + 1, mode);
    case Motion::PageUp:
        ScrollBy(-step, 0);
        return MoveRow(row - step, mode);
    case Motion::PageDown:
        ScrollBy(step, 0);
        return MoveRow(row + step, mode);
    case Motion::WindowTop:
        return MoveRow(static_cast<std::int64_t>(m_state.top) + CoveredRows(), mode);
    case Motion::WindowBottom:
        return MoveRow(static_cast<std::int64_t>(m_state.top) + page - 1, mode);
    case Motion::Begin:
        return MoveCaret({}, mode);
    case Motion::End:
        return MoveCaret(Bounded(LastRow(), kRowEnd), mode);
    case Motion::ScrollLeft:
        return ScrollBy(0, -kScrolledColumns);
    case Motion::ScrollRight:
        return ScrollBy(0, kScrolledColumns);
    case Motion::ScrollUp:
        return ScrollBy(-1, 0);
    case Motion::ScrollDown:
        return ScrollBy(1, 0);
    }
}

Cell TextView::CellAt(int x, int y)
{
    const int line = std::max(std::clamp(y, 0, m_metrics.height - 1) / m_metrics.rowHeight, CoveredRows());
    const Cell row = Bounded(static_cast<std::int64_t>(m_state.top) + line, 0);
    const std::int64_t inArea = static_cast<std::int64_t>(x) - m_metrics.margin;
    const std::int64_t pixel = std::clamp<std::int64_t>(inArea, 0, m_metrics.width) + m_state.offset;
    const std::int64_t fromLeft = pixel - LeftOf(row.row);
    const VkGrafic::TextCells& cells = CellsOf(row.row);
    const int begin = cells.ColumnOf(FloorDivide(fromLeft, m_metrics.cellWidth));
    const int end = cells.EndOf(begin);
    const std::int64_t middle = // twice
        (std::int64_t{cells.CellOf(begin)} + cells.CellOf(end)) * m_metrics.cellWidth;
    return Bounded(row.row, 2 * fromLeft < middle ? begin : end); // the nearer edge
}

void TextView::Click(int x, int y, Caret mode)
{
    // A row at the edge is not scrolled into view: a double click's second click must meet the same row.
    SetCaret(CellAt(x, y), mode);
    AimAtCaret();
}

bool TextView::Autoscroll(int x, int y)
{
    const int cover = CoveredRows() * m_metrics.rowHeight;
    const int below = Limited(static_cast<std::int64_t>(y) - cover);
    const int inArea = Limited(static_cast<std::int64_t>(x) - m_metrics.margin);
    const int rows = UnitsOutside(below, m_metrics.height - cover, m_metrics.rowHeight);
    const int columns = UnitsOutside(inArea, m_metrics.width, m_metrics.cellWidth);
    if (rows == 0 && columns == 0)
        return false;
    ScrollBy(std::clamp(rows, -PageRows(), PageRows()), std::clamp(columns, -PageColumns(), PageColumns()));
    DragTo(x, y);
    return true;
}

void TextView::Wheel(int delta, unsigned linesPerNotch)
{
    const unsigned page = static_cast<unsigned>(PageRows());
    ScrollBy(-static_cast<std::int64_t>(m_wheel.Add(delta, static_cast<int>(std::min(linesPerNotch, page)))),
             0);
}

void TextView::WheelAcross(int delta, unsigned columnsPerNotch)
{
    const unsigned page = static_cast<unsigned>(PageColumns());
    ScrollBy(0, m_wheelAcross.Add(delta, static_cast<int>(std::min(columnsPerNotch, page))));
}

Range ChangedRows(const State& before, const State& after)
{
    if (before.caret == after.caret && before.anchor == after.anchor)
        return {};
    int first = std::min(before.caret.row, after.caret.row);
    int last = std::max(before.caret.row, after.caret.row);
    if (before.anchor != after.anchor)
    {
        first = std::min({first, before.anchor.row, after.anchor.row});
        last = std::max({last, before.anchor.row, after.anchor.row});
    }
    return {first, last == kMaxInt ? last : last + 1};
}
} // namespace textview
