// Where rows of text lie in a scrolled window, and what keys and mouse do to caret and selection. Plain
// integers; no window system.
#pragma once

#include "vkgrafic/TextCells.h"
#include "wintypes.h"
#include "zemacore/ZemaApi.h"

#include <cstdint>

namespace textview
{
// What a view asks about its rows while it needs it; nothing is kept.
class Rows
{
public:
    virtual int GetRowCount() = 0;

    // Columns of a row's text, which are its bytes; a line feed counts as one.
    virtual int GetRowColumnCount(int row) = 0;

    // Lays out a row's text, as far as it is drawn. `cells` comes with a cell for each column.
    virtual void GetRowCells(int row, VkGrafic::TextCells& cells) = 0;

    // Pixels from the left edge of the unscrolled text area to the row's text, at least 0.
    virtual int GetRowLeft(int row) = 0;

    // How many rows at the window's top must stay free to show a row, because something covers them then.
    virtual int GetRowsAbove(int) { return 0; }

protected:
    ~Rows() = default;
};

// Pixels, except the columns that can be scrolled to. Sizes below 1 count as 1.
struct Metrics
{
    int cellWidth = 1;
    int rowHeight = 1;
    int width = 0; // of the text area, which scrolls
    int height = 0;
    int columnCount = 0;
    int margin = 0; // to the left of the text area; stays where it is

    bool operator==(const Metrics& other) const
    {
        return cellWidth == other.cellWidth && rowHeight == other.rowHeight && width == other.width &&
               height == other.height && columnCount == other.columnCount && margin == other.margin;
    }
};

// Before a column of a row; the column is that of the first byte of a character, or the end.
struct Cell
{
    int row = 0;
    int column = 0;

    bool operator==(const Cell& other) const { return row == other.row && column == other.column; }
    bool operator<(const Cell& other) const
    {
        return row < other.row || (row == other.row && column < other.column);
    }
};

struct State
{
    Cell caret;
    Cell anchor;    // the other end of the selection; the caret when nothing is selected
    int top = 0;    // the first row of the window
    int offset = 0; // pixels scrolled to the right

    bool operator==(const State& other) const
    {
        return caret == other.caret && anchor == other.anchor && top == other.top && offset == other.offset;
    }
};

// From begin up to, not including, end.
struct Range
{
    int begin = 0;
    int end = 0;

    bool operator==(const Range& other) const { return begin == other.begin && end == other.end; }
};

// A scroll bar: positions 0 to `last`, of which `page` are in view from `position` on.
struct ScrollRange
{
    int last = 0;
    int page = 0;
    int position = 0;

    bool operator==(const ScrollRange& other) const
    {
        return last == other.last && page == other.page && position == other.position;
    }
};

enum class Motion
{
    Left, // over a row's end too
    Right,
    RowBegin,
    RowEnd,
    Up,
    Down,
    PageUp,
    PageDown,
    WindowTop, // the first and the last row in view
    WindowBottom,
    Begin,
    End,
    ScrollLeft, // these scroll and leave the caret
    ScrollRight,
    ScrollUp,
    ScrollDown
};

enum class Caret
{
    Move,  // drops the selection
    Extend // the selection's other end stays
};

// Whether text of that colour can be told from the background.
QMPLATFORM_API bool IsReadable(COLORREF text, COLORREF background);

// Turns of a wheel, 120 a notch, into whole steps. What is left over counts for the next turn.
class QMPLATFORM_API WheelSteps
{
public:
    // Steps away from the user or to the right; below 0 the other way.
    int Add(int delta, int stepsPerNotch);

private:
    int m_rest = 0;
};

// Rows of one height stacked from the top of the window, beginning with row `top`; cells of one width in
// each. Every operation leaves caret, selection and scroll position within the rows as they are then, caret
// and selection between characters.
class QMPLATFORM_API TextView
{
public:
    static constexpr int kRowEnd = 0x7FFFFFFF;          // as a column: the row's end
    static constexpr unsigned kWheelPages = 0xFFFFFFFF; // as lines a notch: a page

    explicit TextView(Rows& rows) : m_rows(rows) {}

    void SetMetrics(const Metrics& metrics);
    const Metrics& CurrentMetrics() const { return m_metrics; }

    const State& CurrentState() const { return m_state; }
    Cell SelectionBegin() const;
    Cell SelectionEnd() const;
    bool IsSelected(Cell cell) const;

    // The selected columns of a row; empty when there are none.
    Range SelectedColumns(int row);

    // Rows that fit in the window, at least 1, and rows of which something is in view.
    int PageRows() const;
    Range VisibleRows();

    // How many rows at the top are covered now: as few as leave the first row below them the rows that it
    // needs above itself. Never more than half the window, nor than 64.
    int CoveredRows();

    // By how many rows a page key scrolls: what is seen of a page.
    int PageStep();
    bool IsAtEnd();

    // Window pixels of a place, limited to 32 bits.
    int XOf(Cell place);
    int YOf(int row) const;

    // The column so many characters behind a place.
    int ColumnBehind(Cell place, int characters);

    // The cell under a point; its column counts from the row's left edge and is below 0 to the left of it, as
    // it is everywhere in the margin. False above the first row, where the row is 0, and below the last,
    // where it is the row count.
    bool HitTest(int x, int y, Cell& cell);

    ScrollRange RowScroll();

    // Across: as wide as the widest of left edge and columns met so far.
    ScrollRange PixelScroll();

    void ScrollToRow(int top);
    void ScrollToPixel(int offset);

    // Scrolls as little as needed to show the rows, and the characters of those columns; 0 columns do not
    // scroll across.
    void EnsureVisible(Cell place, int rowCount, int columnCount);

    // See CQmTextCtrl, whose operations these are.
    void Focus(Cell place, bool bottom);
    void FocusInContext(Cell place, int columnCount);
    void Select(Cell place);
    void SelectAll();
    void RowsChanged();
    void MoveRows(int row, int delta);
    void Reload();

    void Move(Motion motion, Caret mode);

    // The left button at a point, and the pointer dragged to one. A drag beyond the window goes to its edge.
    void Click(int x, int y, Caret mode);
    void DragTo(int x, int y) { Click(x, y, Caret::Extend); }

    // One tick of a drag: scrolls by the more rows and columns the farther outside the window the point lies,
    // and drags there. False when it lies inside.
    bool Autoscroll(int x, int y);

    void Wheel(int delta, unsigned linesPerNotch);
    void WheelAcross(int delta, unsigned columnsPerNotch);

private:
    int LastRow();
    int RowsAbove(int row);
    int LeftOf(int row);
    int PageColumns() const;
    const VkGrafic::TextCells& CellsOf(int row);
    std::int64_t PixelOf(Cell place);
    Cell Bounded(std::int64_t row, int column);
    Cell CellAt(int x, int y);
    void SetCaret(Cell place, Caret mode);
    void AimAtCaret();
    void MoveCaret(Cell place, Caret mode);
    void MoveRow(std::int64_t row, Caret mode);
    void ScrollBy(std::int64_t rows, std::int64_t columns);
    void ScrollToTop(std::int64_t top);
    void ScrollToOffset(std::int64_t offset);

    Rows& m_rows;
    Metrics m_metrics;
    State m_state;
    int m_goalCell = 0; // where Up and Down aim, even over shorter rows
    VkGrafic::TextCells m_cells;
    std::int64_t m_widest = 0;
    WheelSteps m_wheel;
    WheelSteps m_wheelAcross;
};

// The rows to paint again when the selection or the caret went from one state to another.
QMPLATFORM_API Range ChangedRows(const State& before, const State& after);
} // namespace textview
