// Focus and selection of a report control, in rows.
#pragma once

namespace report
{

constexpr int kNoRow = -2;
constexpr int kFixedRow = -1;

struct RowRange
{
    int first;
    int last;
    bool operator==(const RowRange&) const = default;
};

// What becomes of the selected rows when one is chosen.
enum class SelectMode
{
    None,   // they stay as they are, and only the focus moves
    Alone,  // the chosen rows, and no others
    Add,    // they stay, too, if they and the chosen ones are one range; else as Alone
    Toggle, // a selected row is taken out; otherwise as Add
};

// The selected rows are one range, `first` to `last`; when none is, these
// are 0 and -1.
struct Selection
{
    int focusRow = -1;
    int focusColumn = -1; // -1: the whole row
    int anchor = -1;
    bool typingMayEdit = false; // the last key was no command: a character may start an edit
    int first = 0;
    int last = -1;

    bool IsSelected(int row) const { return first <= row && row <= last; }

    // Whether the focused row is the selected one, and makes it so.
    bool IsFocusAlone() const { return first == focusRow && last == focusRow; }
    void SelectFocusAlone() { first = last = anchor = focusRow; }

    // The focus goes to `row`, and the rows between it and `anchorRow` are chosen; with `isSingle`, at most
    // that one row. A row taken out from within the range leaves the longer part, of two equal ones that with
    // the anchor, or else the first.
    void Select(int row, int anchorRow, SelectMode mode, bool isSingle);

    // A row came in before `row`, or went.
    void RowInserted(int row);

    // Focus and anchor of a removed row go to the row in its place, or the last; -2 when none is left.
    void RowRemoved(int row, int rowsLeft);

    // Only `rows` rows, at least 0, are left. The focus ends on the last of them, the fixed row when there is
    // none; selected rows are cut to `rows` itself, so that of a range beyond it the next new row is
    // selected.
    void CutTo(int rows);

    void SelectNone(); // the focus stays

private:
    void TakeOut(int row);
};

// The least range that has all rows which focus and selection have come to or left; empty if there are none.
RowRange ChangedRows(const Selection& before, const Selection& after);

} // namespace report
