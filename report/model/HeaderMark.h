// The marks of a header's items as rows of pixels, which grow with the resolution of the display.
#pragma once

#include <vector>

namespace report
{

enum class HeaderMark
{
    Ascending,  // an arrow that points up
    Descending, // an arrow that points down
    Filtered    // a funnel
};

// Pixels that the widest row of any mark has.
int MarkWidth(int dpi);

// The widths of a mark's rows from the top, each centred in MarkWidth.
std::vector<int> MarkRows(HeaderMark mark, int dpi);

} // namespace report
