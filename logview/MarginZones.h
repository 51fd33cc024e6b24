// What a click in the left margin means.
#pragma once

namespace logview
{

constexpr int kNoSwitch = -2;

// The row whose block a click switches; -1 above the first row, where there is none; kNoSwitch when the
// click means something else. Fold marks straddle the edge
// between two rows, so a click in the upper half of a row belongs to the row above.
// `row`, `column`  under the point; the text begins at column 0
// `x`              pixels from the left edge of the unscrolled rows
// `dy`             pixels from the upper edge of the row
int SwitchedRow(int row, int column, int x, int dy, int rowHeight, int columnWidth);

} // namespace logview
