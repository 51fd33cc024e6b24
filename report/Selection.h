// Focus and selection of a report control, in rows.
#pragma once

namespace report
{

// -2 is no row and -1 the fixed row. The selected rows are one range, `first` to `last`; none when `last` is
// before `first`.
struct Selection
{
    int focusRow = -1;
    int focusColumn = -1; // -1: the whole row
    int anchor = -1;
    int first = 0;
    int last = -1;

    bool IsSelected(int row) const { return first <= row && row <= last; }

    // The focus goes to `row`. With `select` the rows between `row` and `anchor` are selected; with `toggle`
    // a row that was the only selected one is taken out instead.
    void Select(int row, int anchorRow, bool select, bool toggle);

    // A row came in before `row`, or went.
    void RowInserted(int row);
    void RowRemoved(int row,
                    int rowsLeft); // the focus of a removed row goes to the one in its place, or the last

    // Only `rows` rows are left.
    void CutTo(int rows);
};

} // namespace report
