// The report control and its header: what the user does to columns.
#include "report/ReportCtrlData.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace
{

int ItemOf(const NMHDR* header)
{
    return reinterpret_cast<const NMHEADER*>(header)->iItem;
}

} // namespace

int CReportCtrl::Data::SubItemOf(int headerItem) const
{
    const int subitem = header.GetSubItem(headerItem);
    if (subitem < 0 || subitem >= items.SubItemCount())
        report::ThrowInvalidArgument();
    return subitem;
}

void CReportCtrl::SetShowHeader(int show)
{
    if (!m_hWnd)
        return;
    if (!show)
        ModifyStyle(RVS_FIXEDROW, RVS_NOHEADER);
    else // without rows the fixed row is all there is to show the columns in
        ModifyStyle(RVS_NOHEADER | RVS_FIXEDROW, GetShowReport() ? 0 : RVS_FIXEDROW);
}

int CReportCtrl::GetShowHeader()
{
    return !(m_data->style & RVS_NOHEADER);
}

CReportHeaderCtrl* CReportCtrl::GetHeaderCtrl()
{
    return &m_data->header;
}

int CReportCtrl::GetHeaderWidth()
{
    CRect client;
    if (m_hWnd)
        GetClientRect(client); // it is laid out along the whole of the upper edge
    return client.Width();
}

int CReportCtrl::SetReportSubItemListCtrl(CReportSubItemListCtrl* list)
{
    CReportSubItemListCtrl* const old = std::exchange(m_data->subitemList, list);
    if (old == list)
        return 1;
    if (old)
        old->SetReportCtrl(nullptr);
    if (list)
        list->SetReportCtrl(this);
    return 1;
}

void CReportCtrl::Data::RefreshSubItemList()
{
    if (subitemList)
        subitemList->Refresh();
}

CReportSubItemListCtrl* CReportCtrl::GetReportSubItemListCtrl()
{
    return m_data->subitemList;
}

// The parent may destroy the window and the columns whenever it is told, which the system's control does not
// stand while it is at work: what it tells is passed on afterwards. Nothing of before is used then but the
// subitem's number.

void CReportCtrl::OnHdnItemClick(NMHDR* header, LRESULT* result)
{
    *result = 0;
    if (!GetShowReport())
        return;
    const int subitem = m_data->SubItemOf(ItemOf(header));
    _NMRVHEADER click = {};
    if (NotifyHdr(&click, RVN_COLUMNCLICK, m_data->header.GetColumn(ItemOf(header))) != 0 ||
        (m_data->style & (RVS_CALLBACK | RVS_NOHEADERSORT)))
        return;
    int sorted = -1;
    int ascending = 0;
    GetSortSettings(&sorted, &ascending);
    SortItems(subitem, subitem != sorted || !ascending);
}

void CReportCtrl::OnHdnItemChanged(NMHDR* header, LRESULT* result)
{
    *result = 0;
    const HDITEM* const changed = reinterpret_cast<const NMHEADER*>(header)->pitem;
    HDITEM item = {};
    item.mask = HDI_WIDTH | HDI_FORMAT;
    if (!changed || !(changed->mask & item.mask) || !m_data->header.GetItem(ItemOf(header), &item))
        return;
    const int subitem = m_data->SubItemOf(ItemOf(header));
    structSUBITEM& definition = m_data->items.SubItemAt(subitem);
    const auto alignment = static_cast<DWORD>(item.fmt) & RVSF_ALIGNMASK;
    if (!(changed->mask & HDI_WIDTH) && alignment == (definition.format & RVSF_ALIGNMASK))
        return; // the sort mark
    definition.format = (definition.format & ~RVSF_ALIGNMASK) | alignment;
    definition.width = item.cxy;
    if (!m_data->header.IsTracking())
        m_data->FitScrolling();
    m_data->Redraw();

    m_data->header.WhenIdle([this, subitem] {
        static_assert(offsetof(_NMREPORTVIEW, keys) == offsetof(_NMRVHEADER, subitem));
        _NMREPORTVIEW notification = {};
        m_data->FillHeader(notification.hdr, RVN_COLUMNCHANGED);
        notification.item = RVI_NONE;
        notification.subitem = subitem;
        notification.keys = static_cast<UINT>(subitem); // so that it can be read as a _NMRVHEADER, too
        if (IsActiveSubItem(subitem))
            Notify(&notification);
    });
}

void CReportCtrl::OnHdnEndDrag(NMHDR* header, LRESULT* result)
{
    const bool isOnHeader = m_data->header.GetDropResult() == report::DropResult::OnHeader;
    *result = !isOnHeader;
    if (isOnHeader)
        m_data->Redraw();
    else if (m_data->style & RVS_DRAGCOLUMNS)
        DeactivateSubItem(m_data->SubItemOf(ItemOf(header)));
}

void CReportCtrl::OnHdnDividerDblClick(NMHDR* header, LRESULT* result)
{
    *result = 0;
    const int subitem = m_data->SubItemOf(ItemOf(header));
    m_data->header.WhenIdle([this, subitem] {
        _NMRVHEADER click = {};
        if (NotifyHdr(&click, RVN_DIVIDERDBLCLICK, GetColumnFromSubItem(subitem)) == 0)
            m_data->FitColumn(subitem);
    });
}

// Makes a column as wide as its widest cell with its indentation.
void CReportCtrl::Data::FitColumn(int subitem)
{
    if (!control.IsActiveSubItem(subitem) || (items.SubItemAt(subitem).format & RVSF_FIXEDWIDTH))
        return;
    int first = 0;
    int last = control.GetItemCount() - 1;
    if (items.IsCallback()) // all rows are too many to ask for
        control.GetVisibleRows(control.GetTopIndex(), &first, &last, 0);
    const bool isFirst = control.GetColumnFromSubItem(subitem) == 0;
    int width = -1;
    for (int item = first; item <= last && item < control.GetItemCount(); ++item)
    {
        CRect rect;
        control.MeasureItem(item, subitem, rect, 0);
        const int level = isFirst ? control.GetItemStruct(item, -1, RVIM_TREELEVEL).treeLevel : 0;
        width = std::max(width, rect.Width() + std::max(0, level) * view.itemHeight);
    }
    if (width >= 0 && control.IsActiveSubItem(subitem))
        control.SetSubItemWidth(subitem, width);
}

void CReportCtrl::OnHeaderRClick(NMHDR*, LRESULT* result)
{
    *result = 0;
    m_data->header.WhenIdle([this, column = m_data->header.GetColumn(m_data->header.GetRightClickedItem())] {
        _NMRVHEADER click = {};
        NotifyHdr(&click, RVN_HEADERRCLICK, column);
    });
}
