// Where a dragged column lands in a header. Plain integers; no window system.
#pragma once

#include <cstdint>
#include <vector>

namespace report
{

// Where a column is dropped.
enum class DropResult
{
    Outside = -1, // off the header
    OnHeader = 0,
};

// The part of a header that is seen; right and bottom lie outside.
struct HeaderStrip
{
    int left, top, right, bottom;
};

struct HeaderDrop
{
    DropResult result;
    bool moves; // the columns are in another order then
    int gap;    // the column that would come after it, of those there are now; their number for the end
    int x;      // of that gap, within the strip
};

// Follows one column, or an entry from elsewhere, over the columns of a header. Columns are counted in
// display order; pixels are those of the header.
class HeaderDrag
{
public:
    static constexpr int kNoColumn = -1; // an entry from elsewhere, which moves wherever it is dropped

    // The first column begins at `left`; the others follow without gaps.
    HeaderDrag(HeaderStrip strip, int left, const std::vector<int>& widths, int column);

    HeaderDrop DropAt(int x, int y) const;

    // Whether a press at the one point has become a drag at the other: the mouse is more than the distance
    // away, and dropping would not leave the column where it is. A click with a wobble is none.
    bool Begins(int pressX, int pressY, int x, int y, int distanceX, int distanceY) const;

    // The place of the dragged column after it has come to a gap.
    int ColumnAfterDrop(int gap) const;

    // The items of the columns in their new order.
    std::vector<int> Reorder(std::vector<int> items, int gap) const;

private:
    HeaderStrip m_strip;
    std::vector<std::int64_t> m_edges; // left of each column, and right of the last
    int m_column;
};

} // namespace report
