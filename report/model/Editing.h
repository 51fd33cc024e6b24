// Editing a cell in place: where its editor stands, what it begins with, and where it goes on. Plain
// integers; no window system.
#pragma once

#include "report/model/Geometry.h"

namespace report
{

// Whether an edit can begin on a row (RVI_*) and column, with the control's style (RVS_*), and on an item
// with this state (RVIS_*).
bool IsPlaceToEdit(int row, int column, int rows, std::uint32_t style);
bool MayEdit(std::uint32_t state);

// Where the text of a cell is edited, and where a tip shows it: where it is painted, a little lower, as
// editors have their text. None if the cell is too narrow for it.
std::optional<Rect> EditorRect(const CellLayout& layout, const ShownCell& cell, const CellContents& contents);

// The top of the cell that an editor stands in.
constexpr int kEditorTop = 2; // pixels that it begins below its cell
constexpr int TopOfCell(const Rect& editor)
{
    return editor.top - kEditorTop;
}
// Where an editor ends that grows with its text: it has room for the text and the caret, but goes no further
// than `end` for that. It does not become narrower.
int GrownRight(const Rect& editor, int textWidth, int end);

// What an editor does first with the key that has started it.
struct Primer
{
    bool selectsAll = false; // else the caret is at the end
    unsigned character = 0;  // is typed then; 0 for none
};

// `isTyped`: the key is a character that the user has typed. The keys from Page Up to Down have the numbers
// of characters from '!' to '('.
Primer PrimerOf(unsigned key, bool isTyped);

// Where the key that has ended an edit leads.
enum class GoOn
{
    Nowhere,
    Next, // cell to the right, then the first one of the row below
    Previous,
    Below
};

GoOn GoOnAfter(unsigned key, bool isShift);

struct CellPlace
{
    int row;
    int column;
};

// The next cell in this direction; the fixed row is by itself. Its row is kNoRow if there is none.
CellPlace NextCell(CellPlace cell, GoOn goOn, int rows, int columns);

} // namespace report
