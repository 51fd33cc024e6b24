// What keys, clicks and drags do to focus and selection. Plain integers; no window system.
#pragma once

#include "report/model/Geometry.h"
#include "report/model/Selection.h"

namespace report
{

// The keys that the control deals with, by the system's numbers.
enum class Key : unsigned
{
    Escape = 27,
    Space = 32,
    PageUp = 33,
    PageDown = 34,
    End = 35,
    Home = 36,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Multiply = 106, // these three on the numeric keypad
    Add = 107,
    Subtract = 109
};

struct Modifiers
{
    bool shift = false;
    bool control = false;
};

enum class RowScroll
{
    PageUp,
    PageDown,
    Top,
    Bottom
};

enum class TreeAction
{
    Expand,
    ExpandAll, // with all below
    Collapse
};

// What input asks of the control, and has it do. Any of these calls may change rows and columns.
class InputTarget
{
public:
    virtual ~InputTarget() = default;

    virtual int RowCount() = 0;
    virtual bool HasHeight(int row) = 0;
    virtual RowRange WholeRows() = 0; // seen whole
    virtual int ColumnCount() = 0;
    virtual bool CanFocus(int column) = 0; // whether its cells can have the focus
    virtual bool IsCellFocus() const = 0;
    virtual bool IsFixedRow() const = 0;
    virtual bool IsTree() const = 0;

    virtual void SelectRows(int row, int anchor, SelectMode mode) = 0; // the focus on `row`
    virtual void FocusFixedRow() = 0;                                  // and its cell in the focused column
    virtual void EnsureVisible(int row) = 0;
    virtual void Scroll(RowScroll how) = 0;
    virtual void ScrollColumns(int direction) = 0; // by an eighth of the area, -1 to the left
    virtual void FocusColumn(int column) = 0;      // of the focused row
    virtual void EnsureVisibleColumn(int column) = 0;
    virtual void ChangeTree(int row, TreeAction action) = 0;
    virtual bool BeginEdit(int row, int column, unsigned key) = 0;
};

class Input
{
public:
    Input(Selection& selection, InputTarget& target) : m_selection(selection), m_target(target) {}

    // A key goes down. False for one that is left to the system. A key that is no command of the control's
    // may be the first of a text, for Character.
    bool KeyDown(unsigned key, Modifiers modifiers);

    // Edits the focused cell, as if begun by a key (RVEK_*). False if there is none or it is not edited.
    bool Edit(unsigned key);

    // A character arrives; true when it has started an edit.
    bool Character(unsigned character);

    // The left button goes down on a row, the right one, and the mouse is moved with the left one down.
    // `column` may be kNoColumn.
    void Click(int row, int column, Modifiers modifiers);
    void RightClick(int row, Modifiers modifiers);
    void DragTo(int row);

    void PageUp(Modifiers modifiers);
    void PageDown(Modifiers modifiers);

    // The focus moves to a row, and the selection with it, as by an arrow key. Nothing happens outside the
    // rows.
    void MoveTo(int row, Modifiers modifiers);

private:
    int NextRow(int row, int direction);
    int NextColumn(int column, int direction);
    int Anchor(int row);
    bool MoveByKey(Key key, Modifiers modifiers);
    void MoveColumn(int direction);
    bool ChangeTree(Key key);

    Selection& m_selection;
    InputTarget& m_target;
};

} // namespace report
