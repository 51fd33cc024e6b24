#include "report/model/ScrollPosition.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace report
{

namespace
{

constexpr int kMost = std::numeric_limits<int>::max();

int Forward(int position, int by)
{
    return position + std::min(by, kMost - position);
}

bool MoveTo(int& position, int wanted, int most)
{
    const int old = std::exchange(position, std::clamp(wanted, 0, most));
    return position != old;
}

} // namespace

bool ScrollPosition::SetTop(int row, int rowCount)
{
    return MoveTo(m_view.topRow, row, rowCount);
}

bool ScrollPosition::SetLeft(int pixels, int rowWidth)
{
    return MoveTo(m_view.left, pixels, rowWidth);
}

bool ScrollPosition::Fit(Geometry& geometry)
{
    if (!std::exchange(m_isTooFar, false))
        return false;
    const int old = m_view.topRow;
    const int fitting = geometry.FittingTop(old);
    // Otherwise a callback that was asked for a height has scrolled, to rows that there are.
    if (m_view.topRow == old)
        m_view.topRow = fitting;
    return m_view.topRow != old;
}

int RowAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry)
{
    int row = view.topRow;
    switch (request)
    {
    case ScrollRequest::LineBack:
        --row;
        break;
    case ScrollRequest::LineForward:
        row = Forward(row, 1);
        break;
    case ScrollRequest::PageBack:
        row = row > 0 ? std::min(row - 1, geometry.RowsUpTo(row).first) : 0;
        break;
    case ScrollRequest::PageForward:
        row = std::max(Forward(row, 1), geometry.RowsFrom(row).last);
        break;
    case ScrollRequest::Begin:
        row = 0;
        break;
    case ScrollRequest::End:
        row = kMost;
        break;
    case ScrollRequest::Thumb:
        row = thumb;
        break;
    }
    return std::min(std::max(0, row), std::max(view.topRow, geometry.FittingTop(row)));
}

int LeftAfter(ScrollRequest request, int thumb, const View& view, Geometry& geometry)
{
    int left = view.left;
    switch (request)
    {
    case ScrollRequest::LineBack:
        left -= std::max(1, view.itemHeight);
        break;
    case ScrollRequest::LineForward:
        left = Forward(left, std::max(1, view.itemHeight));
        break;
    case ScrollRequest::PageBack:
        left -= view.report.Width();
        break;
    case ScrollRequest::PageForward:
        left = Forward(left, view.report.Width());
        break;
    case ScrollRequest::Begin:
        left = 0;
        break;
    case ScrollRequest::End:
        left = kMost;
        break;
    case ScrollRequest::Thumb:
        left = thumb;
        break;
    }
    return std::min(std::max(0, left), std::max(view.left, geometry.EndLeft()));
}

} // namespace report
