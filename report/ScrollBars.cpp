#include "report/ScrollBars.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace report
{

namespace
{

// What a drawn bar looks like.
auto LookOf(HWND hwnd, int bar)
{
    SCROLLBARINFO drawn = {};
    drawn.cbSize = sizeof(drawn);
    ::GetScrollBarInfo(hwnd, bar == SB_VERT ? OBJID_VSCROLL : OBJID_HSCROLL, &drawn);
    return std::tuple(drawn.xyThumbTop, drawn.xyThumbBottom, drawn.rgstate[0]);
}

} // namespace

bool ScrollBars::IsPageStale(int topRow, int rowCount, int height)
{
    const SCROLLINFO& shown = m_shown[SB_VERT];
    return std::exchange(m_height, height) != height || shown.nPos != topRow || shown.nMax != rowCount - 1;
}

void ScrollBars::Update(HWND hwnd, int bar, int count, int page, int position)
{
    SCROLLINFO& shown = m_shown[bar];
    const int last = std::max(0, count - 1);
    if (shown.nMax == last && shown.nPage == static_cast<UINT>(page) && shown.nPos == position)
        return;
    SCROLLINFO before = shown;
    shown.nMax = last;
    shown.nPage = static_cast<UINT>(page);
    shown.nPos = position;
    SCROLLINFO info = shown;
    before.cbSize = info.cbSize = sizeof(info);
    before.fMask = info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    const auto old = LookOf(hwnd, bar);
    ::SetScrollInfo(hwnd, bar, &info, FALSE);
    if (LookOf(hwnd, bar) == old)
        return;
    ::SetScrollInfo(hwnd, bar, &before, FALSE); // without a change nothing would be drawn
    ::SetScrollInfo(hwnd, bar, &info, TRUE);
}

} // namespace report
