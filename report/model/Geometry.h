// What lies where in a report control, what a point hits, and how far scrolling goes. Plain integers; no
// window system. All places are pixels of the client area.
#pragma once

#include "report/model/Selection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace report
{

constexpr int kNoColumn = -1;
constexpr int kMaxHidden = 65536; // rows without height, one after another, that are looked past

// Right and bottom edges lie outside.
struct Rect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Contains(int x, int y) const { return left <= x && x < right && top <= y && y < bottom; }
    bool operator==(const Rect&) const = default;
};

// The size of things, and what is scrolled where.
struct View
{
    int itemHeight = 10; // of a row's line, and a level of indentation
    int margin = 6;      // left and right of a cell's contents, and between them
    int imageWidth = 0;
    int checkWidth = 8;
    int fixedFrame = 0;       // above and below the line of the fixed row
    bool showLines = true;    // else rows are their previews alone
    bool showPreviews = true; // below the lines

    // Areas, from LayOut
    Rect header;
    Rect fixedRow;
    Rect report;

    int topRow = 0; // the first row shown
    int left = 0;   // pixels scrolled

    int LineHeight() const { return showLines ? itemHeight : 0; }
};

// Divides the client area among header, fixed row and rows. Each begins below the one before, and the rows
// have what is left.
void LayOut(View& view, int width, int height, int headerHeight, bool hasFixedRow);

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

// What a cell shows beside its text, and what its subitem keeps room for in any case.
struct CellContents
{
    bool image = false;
    bool check = false;
    bool imagePlace = false;
    bool checkPlace = false;
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
struct PlacedRow
{
    int row = kNoRow;
    Rect rect; // with the preview; as wide as all columns, or the header when that is wider
    RowShape shape;
};

struct PlacedCell
{
    int column = kNoColumn;
    int subitem = -1;
    int left = 0;            // where its column begins
    Rect rect;               // right of the indentation, in the row's line
    std::optional<Rect> box; // the tree box's square
};

// The room of a cell's parts, from left to right; each ends where the next begins, a margin included.
struct CellParts
{
    int begin;    // behind the left margin
    int imageEnd; // equal to `begin` when there is no image and no room for one
    int checkEnd;
    int end; // before the right margin
};

// What a point hits: flags are RVHT_*.
struct Hit
{
    std::uint32_t flags = 0;
    int row = kNoRow;
    int column = kNoColumn;
    int subitem = -1;
    Rect rect; // of the part that was hit
};

class Geometry
{
public:
    Geometry(const View& view, GeometrySource& source) : m_view(view), m_source(source) {}

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

    // Goes to the first row shown, or the row below `row`; false at `bottom`, behind the last row and where
    // kMaxHidden is passed.
    bool Next(PlacedRow& row, int bottom);

    // The fixed row, or one that is in view.
    std::optional<PlacedRow> Place(int row);

    // ---- Columns

    int RowWidth(); // of all columns, or the header when that is wider
    int EndLeft();  // the pixels scrolled when the last one is at the right edge
    int LeftToShow(int column);

    // Goes to the first cell, or the one right of `cell`; false behind the last. A spanning cell is the only
    // one of its row, in column 0.
    bool Next(const PlacedRow& row, PlacedCell& cell);

    // A cell; none outside the columns.
    std::optional<PlacedCell> Place(const PlacedRow& row, int column);

    CellParts PartsOf(const Rect& cell, const CellContents& contents) const;

    // How much further right the first cell of a row and its preview begin.
    int Indentation(const RowShape& shape) const;

    // Below the line, right of the indentation.
    Rect PreviewOf(const PlacedRow& row) const;

    // ---- Points

    Hit HitTest(int x, int y);

private:
    int LineBottom(const PlacedRow& row) const;
    void HitRow(int x, int y, const PlacedRow& row, Hit& hit);
    void HitCell(int x, int y, const PlacedRow& row, const PlacedCell& cell, Hit& hit);

    const View& m_view;
    GeometrySource& m_source;
};

// How wide a cell's contents and their margins are, `textWidth` -1 for no text.
int ContentsWidth(const View& view, const CellContents& contents, int textWidth);

} // namespace report
