#include "report/header/ReportHeaderWnd.h"

#include <algorithm>

int ReportHeaderWnd::GetItemOfColumn(int column) const
{
    return column >= 0 && column < GetItemCount() ? OrderToIndex(column) : kNone;
}

int ReportHeaderWnd::GetColumn(int headerItem) const
{
    HDITEM item = {};
    item.mask = HDI_ORDER;
    return GetItem(headerItem, &item) ? item.iOrder : kNone;
}

int ReportHeaderWnd::GetSubItem(int headerItem) const
{
    HDITEM item = {};
    item.mask = HDI_WIDTH | HDI_LPARAM;
    return GetItem(headerItem, &item) ? static_cast<int>(item.lParam) : -1;
}

int ReportHeaderWnd::GetWidth(int headerItem) const
{
    HDITEM item = {};
    item.mask = HDI_WIDTH | HDI_LPARAM;
    return GetItem(headerItem, &item) ? item.cxy : 0;
}

int ReportHeaderWnd::GetColumnOfSubItem(int subitem) const
{
    const int count = m_hWnd ? GetItemCount() : 0;
    for (int column = 0; column < count; ++column)
        if (GetSubItem(OrderToIndex(column)) == subitem)
            return column;
    return kNone;
}

int ReportHeaderWnd::InsertColumn(int column, HDITEM& definition)
{
    definition.mask |= HDI_ORDER;
    definition.iOrder = column;
    return InsertItem(GetItemCount(), &definition); // the last: the others keep their numbers
}

void ReportHeaderWnd::DeleteColumn(int column)
{
    const int headerItem = GetItemOfColumn(column);
    if (headerItem == kNone || !DeleteItem(headerItem))
        return;
    if (m_sortItem == headerItem)
        m_sortItem = kNone;
    else if (m_sortItem > headerItem)
        --m_sortItem;
}

void ReportHeaderWnd::MoveColumn(int from, int to)
{
    std::vector<int> order = GetOrder();
    const int moved = order[static_cast<std::size_t>(from)];
    order.erase(order.begin() + from);
    order.insert(order.begin() + to, moved);
    SetOrderArray(static_cast<int>(order.size()), order.data());
    Invalidate();
}

void ReportHeaderWnd::ReplaceColumn(int headerItem, HDITEM definition)
{
    SetItem(headerItem, &definition);
    if (headerItem == m_sortItem)
        SetSort(m_sortItem, m_sortAscending);
}

void ReportHeaderWnd::RenumberSubItems(int subitem, int by)
{
    const int count = m_hWnd ? GetItemCount() : 0;
    for (int i = 0; i < count; ++i)
    {
        HDITEM item = {};
        item.mask = HDI_LPARAM;
        item.lParam = GetSubItem(i);
        if (item.lParam < subitem)
            continue;
        item.lParam += by;
        SetItem(i, &item);
    }
}

const std::vector<report::Column>& ReportHeaderWnd::GetColumns()
{
    if (!TakeItemsChanged())
        return m_columns;
    m_columns.clear();
    for (const int index : m_hWnd ? GetOrder() : std::vector<int>())
    {
        HDITEM item = {};
        item.mask = HDI_WIDTH | HDI_LPARAM;
        if (GetItem(index, &item))
            m_columns.push_back({static_cast<int>(item.lParam), std::max(0, item.cxy)});
    }
    return m_columns;
}

bool ReportHeaderWnd::IsRemovedByDrop() const
{
    return m_removesByDrop;
}

std::string ReportHeaderWnd::GetTip(int headerItem) const
{
    if (!m_sortsByClick)
        return {};
    std::string tip = m_sortCaption; // the owner's, and so no format for printing
    const std::size_t place = tip.find("%s");
    if (place != std::string::npos)
        tip.replace(place, 2, GetFace(headerItem).caption);
    return tip;
}

void ReportHeaderWnd::SetSort(int headerItem, bool ascending)
{
    if (m_sortItem != headerItem)
        ShowSortMark(m_sortItem, 0);
    m_sortItem = headerItem;
    m_sortAscending = ascending;
    ShowSortMark(headerItem, ascending ? HDF_SORTUP : HDF_SORTDOWN);
}

void ReportHeaderWnd::ShowSortMark(int headerItem, int mark)
{
    HDITEM item = {};
    item.mask = HDI_FORMAT;
    if (headerItem == kNone || !GetItem(headerItem, &item))
        return;
    item.fmt = (item.fmt & ~(HDF_SORTUP | HDF_SORTDOWN)) | mark;
    SetItem(headerItem, &item);
}
