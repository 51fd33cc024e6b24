#include "report/model/ScrollPosition.h"

#include <algorithm>
#include <limits>

namespace report
{

namespace
{

constexpr int kMost = std::numeric_limits<int>::max();

int Forward(int position, int by)
{
    return position + std::min(by, kMost - position);
}

} // namespace

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
