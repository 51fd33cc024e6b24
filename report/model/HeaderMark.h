// The marks of a header's items as rows of pixels, which grow with the resolution of the display.
#pragma once

#include <vector>

namespace report
{

enum class HeaderMark
{
    kAscending,  // an arrow that points up
    kDescending, // an arrow that points down
    kFiltered    // a funnel
};

// Pixels that the widest row of any mark has.
int MarkWidth(int dpi);

// The widths of a mark's rows from the top, each centred in MarkWidth.
std::vector<int> MarkRows(HeaderMark mark, int dpi);

} // namespace report
