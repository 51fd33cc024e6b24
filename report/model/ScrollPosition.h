// Where a scroll bar's requests lead.
#pragma once

#include "report/model/Geometry.h"

namespace report
{

enum class ScrollRequest
{
    LineBack, // up or left
    LineForward,
    PageBack,
    PageForward,
    Begin,
    End,
    Thumb // to a given position
};

// The first row, or the pixels scrolled, that a request leads to from where `view` is: no farther than the
// end, but never back from where a program has scrolled past it. Pages of rows overlap by one row, so that a
// key, which moves the focus beyond the page that it has scrolled to, skips none.
int RowAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry);
int LeftAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry);

} // namespace report
