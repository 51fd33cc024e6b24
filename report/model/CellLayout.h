// Where the parts of a cell are: tree box, image, check box and text.
#pragma once

#include "report/model/View.h"

namespace report
{

// What a cell shows beside its text, and what its subitem keeps room for in any case.
struct CellContents
{
    bool hasImage = false;
    bool hasCheck = false;
    bool keepsImageRoom = false;
    bool keepsCheckRoom = false;
};

// The rectangles of a cell's parts, side by side in its line. Image and check box have the margin after them,
// and are empty if the cell has none and keeps no room for one.
struct CellParts
{
    Rect image;
    Rect check;
    Rect text;
};

// The one class that knows how a cell is divided: for measuring, painting, hit testing and editing. Its parts
// stand side by side from the left margin on, each with a margin after it; the text has what is left.
// Painting goes from part to part, because a subclass may draw one in another width.
class CellLayout
{
public:
    explicit CellLayout(const View& view) : m_view(view) {}

    // The cell without the margins at its sides.
    Rect Inner(const Rect& cell) const;

    // The width of an image and a check box; 0 for none. A check box needs to be narrower than the room that
    // is left.
    int ImageWidth(const CellContents& contents) const;
    int CheckWidth(const CellContents& contents, int room) const;

    // Where the next part begins, after one that begins at `left` and uses some width; 0: there is none.
    int After(int left, int used) const;

    CellParts PartsOf(const Rect& cell, const CellContents& contents) const;

    // How wide a cell's contents and their margins are, `textWidth` -1 for no text. Room that is kept for
    // nothing does not count.
    int ContentsWidth(const CellContents& contents, int textWidth) const;

    // The picture of an image and of a check box, at the left of what is left of the cell and in the middle
    // of its height. They may be higher than the cell.
    Rect ImageIn(const Rect& room) const { return Centered(room, m_view.imageWidth, m_view.imageHeight); }
    Rect CheckIn(const Rect& room) const { return Centered(room, m_view.checkWidth, m_view.checkHeight); }

    // How much further right the first cell of a row begins at a level; 0 for none, -1.
    int Indentation(int level) const;

    // The square left of an indented cell that the tree box is for, and the box in the middle of a square
    // that begins where `room` does.
    Rect TreeBoxOf(const Rect& indentedCell) const;
    Rect TreeBoxIn(const Rect& room) const;

private:
    static Rect Centered(const Rect& room, int width, int height);

    const View& m_view;
};

} // namespace report
