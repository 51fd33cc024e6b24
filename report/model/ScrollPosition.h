// What is scrolled where, and where a scroll bar's requests lead.
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

// The position of a view. Positions are cut to the rows and their width. After rows have gone, or room has
// come, they may lie further than the last row needs: how far is found out by one look at the rows, before
// the next paint, however many changes come before it.
class ScrollPosition
{
public:
    explicit ScrollPosition(View& view) : m_view(view) {}

    // These answer whether anything has moved.
    bool SetTop(int row, int rowCount);
    bool SetLeft(int pixels, int rowWidth);
    bool Fit(Geometry& geometry);

    void MarkTooFar() { m_isTooFar = true; }
    bool IsTooFar() const { return m_isTooFar; } // or may be

private:
    View& m_view;
    bool m_isTooFar = false;
};

// The first row, or the pixels scrolled, that a request leads to from where `view` is: no farther than the
// end, but never back from where a program has scrolled past it. Pages of rows overlap by one row, so that a
// key, which moves the focus beyond the page that it has scrolled to, skips none.
int RowAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry);
int LeftAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry);

} // namespace report
