// What lies where in a report control, what a point hits, and how far scrolling goes. Plain integers; no
// window system.
#pragma once

#include "report/model/CellLayout.h"
#include "report/model/Selection.h"
#include "report/model/View.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace report
{

constexpr int kNoColumn = -1;
constexpr int kMaxHidden = 1000; // rows without height that a walk looks past: more than fit on a screen

struct Column
{
    int subitem;
    int width; // at least 0
};

struct RowShape
{
    int previewHeight = 0;
    bool hasPreview = false; // a text to be shown there
    int level = -1;          // of indentation; -1 for none
    bool hasBox = false;     // a tree box left of the indented cell
    int spanning = -1;       // the subitem whose cell takes the whole row; -1 when each column has its cell
};

// What the geometry asks about rows and columns.
class GeometrySource
{
public:
    virtual ~GeometrySource() = default;
    virtual int RowCount() = 0;
    virtual RowShape ShapeOf(int row) = 0; // kFixedRow, too
    virtual CellContents ContentsOf(int row, int subitem) = 0;
    virtual const std::vector<Column>& Columns() = 0; // in display order
};

// A row where it is shown.
struct ShownRow
{
    int row = kNoRow;
    Rect rect; // with the preview; as wide as all columns, or the header when that is wider
    RowShape shape;
    int hidden = 0; // rows without height that the walk has looked past
};

struct ShownCell
{
    int column = kNoColumn;
    int subitem = -1;
    int left = 0;            // where its column begins
    Rect rect;               // right of the indentation, in the row's line
    std::optional<Rect> box; // the tree box's square
};

// What a point hits: flags are RVHT_*.
struct Hit
{
    std::uint32_t flags = 0;
    int row = kNoRow;
    int column = kNoColumn;
    int subitem = -1;
    Rect rect; // of the part that was hit

    bool operator==(const Hit&) const = default;
};

class Geometry
{
public:
    Geometry(const View& view, GeometrySource& source) : m_view(view), m_cells(view), m_source(source) {}

    // ---- Rows. Their heights are asked for one by one, and only of rows near those shown.

    int HeightOf(int row);

    // The rows seen whole with `first` at the top, or `last` at the bottom; at least that row itself.
    RowRange RowsFrom(int first);
    RowRange RowsUpTo(int last);

    // The first row shown when scrolled to the end, and `topRow` or what keeps the last row at the bottom.
    int EndTop();
    int FittingTop(int topRow);

    // The first row to show so that all of `row` is seen, scrolling no more than needed.
    int TopToShow(int row);

    // Goes to the first row shown, or the row below `row`; false at `bottom`, after the last row, and where
    // kMaxHidden rows have been looked past.
    bool Next(ShownRow& row, int bottom);

    // The fixed row, or one that is in view.
    std::optional<ShownRow> FindRow(int row);

    // ---- Columns

    int RowWidth(); // of all columns, the header, or previews that are shown alone: the widest
    int EndLeft();  // the pixels scrolled when the last one is at the right edge
    int LeftToShow(int column);

    // Goes to the first cell, or the one right of `cell`; false after the last. A spanning cell is the only
    // one of its row, in column 0.
    bool Next(const ShownRow& row, ShownCell& cell);

    // A cell; none outside the columns.
    std::optional<ShownCell> FindCell(const ShownRow& row, int column);

    // Below the line, right of the indentation.
    Rect PreviewOf(const ShownRow& row) const;

    // ---- Points

    Hit HitTest(int x, int y);

private:
    int LineBottom(const ShownRow& row) const;
    void HitRow(int x, int y, const ShownRow& row, Hit& hit);
    void HitCell(int x, int y, const ShownRow& row, const ShownCell& cell, Hit& hit);

    const View& m_view;
    CellLayout m_cells;
    GeometrySource& m_source;
};

} // namespace report
