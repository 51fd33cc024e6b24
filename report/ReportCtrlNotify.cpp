// What the report control tells its parent.
#include "report/ReportCtrlData.h"

LRESULT CReportCtrl::Notify(_NMREPORTVIEW* notification)
{
    const UINT bit = (RVN_ITEMDRAWPREVIEW - notification->hdr.code) & 31;
    const HWND parent = m_hWnd ? ::GetParent(m_hWnd) : nullptr;
    if (!(m_data->notifyMask >> bit & 1) || !parent)
        return 0;
    return ::SendMessage(parent, WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID()),
                         reinterpret_cast<LPARAM>(notification));
}

LRESULT CReportCtrl::Notify(unsigned int code, int item, int subitem, unsigned int value, __int64 data)
{
    _NMREPORTVIEW notification = {};
    FillHeader(notification.hdr, code);
    notification.item = item;
    notification.subitem = subitem;
    notification.value = value;
    notification.itemData = data;
    notification.treeItem = m_data->IsTree() ? GetItemHandle(item) : nullptr;
    return Notify(&notification);
}

LRESULT CReportCtrl::Notify(unsigned int code, unsigned int keys, _RVHITTESTINFO* hit)
{
    _NMREPORTVIEW notification = {};
    FillHeader(notification.hdr, code);
    notification.keys = keys;
    notification.point = hit->pt;
    notification.flags = hit->flags;
    notification.item = hit->item;
    notification.subitem = hit->subitem;
    notification.treeItem = m_data->IsTree() ? GetItemHandle(hit->item) : nullptr;
    if (!m_data->IsCallback() && hit->item >= 0)
        notification.itemData = GetItemStruct(hit->item, -1, 0).itemData;
    return Notify(&notification);
}

LRESULT CReportCtrl::NotifyHdr(_NMRVHEADER* notification, unsigned int code, int column)
{
    FillHeader(notification->hdr, code);
    notification->subitem = m_data->header.GetSubItem(m_data->header.GetItemOfColumn(column));
    return Notify(reinterpret_cast<_NMREPORTVIEW*>(notification));
}

void CReportCtrl::FillHeader(NMHDR& header, unsigned int code)
{
    header.hwndFrom = m_hWnd;
    header.idFrom = m_hWnd ? static_cast<UINT_PTR>(GetDlgCtrlID()) : 0;
    header.code = code;
}
