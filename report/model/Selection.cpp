#include "report/model/Selection.h"

#include <algorithm>
#include <limits>

namespace report
{

namespace
{

// The number of a row after another came in before row `inserted`.
int MovedUp(int row, int inserted)
{
    return row >= inserted && row < std::numeric_limits<int>::max() ? row + 1 : row;
}

// Where something on `row` is after row `removed` went.
int AfterRemoval(int row, int removed, int rowsLeft)
{
    if (row > removed)
        return row - 1;
    if (row < removed || row < rowsLeft)
        return row;
    return rowsLeft > 0 ? rowsLeft - 1 : kNoRow;
}

} // namespace

void Selection::Select(int row, int anchorRow, SelectMode mode, bool isSingle)
{
    focusRow = row;
    if (mode == SelectMode::None)
        return;
    if (mode == SelectMode::Toggle && IsSelected(row))
    {
        isSingle ? SelectNone() : TakeOut(row);
        return;
    }
    const int other = isSingle ? row : anchorRow;
    RowRange chosen = {std::min(row, other), std::max(row, other)};
    const bool isOneRange = first <= last && chosen.first - 1 <= last && first - 1 <= chosen.last;
    if (mode != SelectMode::Alone && !isSingle && isOneRange)
        chosen = {std::min(first, chosen.first), std::max(last, chosen.last)};
    first = chosen.first;
    last = chosen.last;
}

void Selection::TakeOut(int row)
{
    const int above = row - first;
    const int below = last - row;
    const bool isAnchorBelow = row < anchor && anchor <= last;
    if (below > above || (below == above && isAnchorBelow))
        first = row + 1;
    else
        last = row - 1;
    if (first > last)
        SelectNone();
}

void Selection::SelectNone()
{
    first = 0;
    last = -1;
}

void Selection::RowInserted(int row)
{
    focusRow = MovedUp(focusRow, row);
    anchor = MovedUp(anchor, row);
    if (first <= last)
    {
        first = MovedUp(first, row);
        last = MovedUp(last, row);
    }
}

void Selection::RowRemoved(int row, int rowsLeft)
{
    focusRow = AfterRemoval(focusRow, row, rowsLeft);
    anchor = AfterRemoval(anchor, row, rowsLeft);
    if (first > row)
        --first;
    if (last >= row)
        --last;
    if (last < first)
        SelectNone();
}

void Selection::CutTo(int rows)
{
    focusRow = std::min(focusRow, rows - 1);
    anchor = std::min(anchor, rows - 1);
    first = std::min(first, rows);
    last = std::min(last, rows);
}

RowRange ChangedRows(const Selection& before, const Selection& after)
{
    constexpr int kNone = std::numeric_limits<int>::max();
    RowRange changed{kNone, kNoRow};
    const auto add = [&changed](int first, int last) {
        if (first > last)
            return;
        changed.first = std::min(changed.first, first);
        changed.last = std::max(changed.last, last);
    };
    const bool isFocusKept = before.focusRow == after.focusRow && before.focusColumn == after.focusColumn;
    for (const Selection* each : {&before, &after})
        if (each->focusRow != kNoRow && !isFocusKept)
            add(each->focusRow, each->focusRow);
    const bool wasNone = before.first > before.last;
    const bool isNone = after.first > after.last;
    if (wasNone || isNone || after.first > before.last || after.last < before.first)
    {
        add(before.first, before.last);
        add(after.first, after.last);
    }
    else // rows in both look as before
    {
        add(std::min(before.first, after.first), std::max(before.first, after.first) - 1);
        add(std::min(before.last, after.last) + 1, std::max(before.last, after.last));
    }
    return changed;
}

} // namespace report
