// The flat header's columns while they are dragged.
#include "report/header/FlatHeaderPress.h"

using report::DropResult;

std::vector<int> CFlatHeaderCtrl::GetOrder() const
{
    std::vector<int> order(static_cast<std::size_t>(GetItemCount()));
    GetOrderArray(order.data(), static_cast<int>(order.size()));
    return order;
}

report::HeaderDrag CFlatHeaderCtrl::GetDrag(int index) const
{
    int left = 0;
    int column = report::HeaderDrag::kNoColumn;
    std::vector<int> widths;
    for (const int each : GetOrder())
    {
        CRect rect;
        GetItemRect(each, rect);
        if (widths.empty())
            left = rect.left;
        if (each == index)
            column = static_cast<int>(widths.size());
        widths.push_back(rect.Width());
    }
    CRect strip;
    GetClientRect(strip);
    CRect shown;
    ::GetClientRect(::GetParent(m_hWnd), shown);
    ::MapWindowPoints(::GetParent(m_hWnd), m_hWnd, reinterpret_cast<POINT*>(&shown), 2);
    strip.IntersectRect(strip, shown);
    return report::HeaderDrag({strip.left, strip.top, strip.right, strip.bottom}, left, widths, column);
}

// Whether the pressed item is being dragged from now on.
bool CFlatHeaderCtrl::BeginDrag()
{
    const Press* const press = m_press.get();
    LRESULT forbidden = 0;
    if (!Notify(HDN_BEGINDRAG, press->index, nullptr, forbidden) || m_press.get() != press)
        return false;
    m_press->forbidden = forbidden != 0;
    if (m_press->forbidden)
        return false;
    CRect rect;
    GetItemRect(m_press->index, rect);
    m_press->grip = CPoint(m_press->point.x - rect.left, m_press->point.y - rect.top);
    ClientToScreen(rect);
    if (!m_press->window.Create(rect, *this, m_press->index, HeaderLook::Plain))
        return false;
    m_press->escape.emplace([this] { EndPress(); });
    RedrawItem(m_press->index);
    return true;
}

void CFlatHeaderCtrl::MoveDrag(CPoint point)
{
    const report::HeaderDrop drop = GetDrag(m_press->index).DropAt(point.x, point.y);
    const bool removes = drop.result == DropResult::Outside && IsRemovedByDrop();
    CPoint topLeft(point.x - m_press->grip.x, point.y - m_press->grip.y);
    ClientToScreen(&topLeft);
    m_press->window.MoveTo(topLeft, removes ? HeaderLook::Removed : HeaderLook::Plain);
    ShowMark(drop);
}

void CFlatHeaderCtrl::Drop(CPoint point)
{
    const int index = m_press->index;
    const report::HeaderDrag drag = GetDrag(index);
    const report::HeaderDrop drop = drag.DropAt(point.x, point.y);
    EndPress();
    m_dropResult = drop.result;

    HDITEM item = {};
    item.mask = HDI_ORDER;
    item.iOrder = drop.result == DropResult::Outside ? -1 : drag.ColumnAfterDrop(drop.gap);
    LRESULT cancelled = 0;
    if (!Notify(HDN_ENDDRAG, index, &item, cancelled) || cancelled || !drop.moves)
        return;
    std::vector<int> order = drag.Reorder(GetOrder(), drop.gap);
    SetOrderArray(static_cast<int>(order.size()), order.data());
    Invalidate();
}

void CFlatHeaderCtrl::ShowMark(const report::HeaderDrop& drop)
{
    if (!drop.moves)
        return HideDropMark();
    CRect client;
    GetClientRect(client);
    if (!m_mark)
    {
        m_mark = std::make_unique<CFHDropWnd>();
        if (!m_mark->Create(*this, client.Height()))
            return HideDropMark();
    }
    CPoint top(drop.x, 0);
    ClientToScreen(&top);
    m_mark->ShowAt(top);
}

int CFlatHeaderCtrl::ShowDropMark(CPoint screen)
{
    if (!m_hWnd || !IsWindowVisible())
        return kNone;
    ScreenToClient(&screen);
    const report::HeaderDrop drop = GetDrag(kNone).DropAt(screen.x, screen.y);
    ShowMark(drop);
    return drop.moves ? drop.gap : kNone;
}

void CFlatHeaderCtrl::HideDropMark()
{
    m_mark.reset();
}
