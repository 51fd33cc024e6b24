// What the report control tells its parent.
#include "report/ReportSnapshot.h"

LRESULT CReportCtrl::Notify(_NMREPORTVIEW* notification)
{
    const UINT bit = (RVN_ITEMDRAWPREVIEW - notification->hdr.code) & 31;
    const HWND parent = m_hWnd ? ::GetParent(m_hWnd) : nullptr;
    if (!(m_data->properties.notifyMask >> bit & 1) || !parent)
        return 0;
    return ::SendMessage(parent, WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID()),
                         reinterpret_cast<LPARAM>(notification));
}

LRESULT CReportCtrl::Notify(unsigned int code, int item, int subitem, unsigned int value, __int64 data)
{
    _NMREPORTVIEW notification = {};
    m_data->FillHeader(notification.hdr, code);
    notification.item = item;
    notification.subitem = subitem;
    notification.value = value;
    notification.itemData = data;
    notification.treeItem = m_data->rows.IsTree() ? GetItemHandle(item) : nullptr;
    return Notify(&notification);
}

LRESULT CReportCtrl::Notify(unsigned int code, unsigned int keys, _RVHITTESTINFO* hit)
{
    _NMREPORTVIEW notification = {};
    m_data->FillHeader(notification.hdr, code);
    notification.keys = keys;
    notification.point = hit->pt;
    notification.flags = hit->flags;
    notification.item = hit->item;
    notification.subitem = hit->subitem;
    notification.treeItem = m_data->rows.IsTree() ? GetItemHandle(hit->item) : nullptr;
    if (!m_data->items.IsCallback() && hit->item >= 0)
        notification.itemData = GetItemStruct(hit->item, -1, 0).itemData;
    return Notify(&notification);
}

LRESULT CReportCtrl::NotifyHdr(_NMRVHEADER* notification, unsigned int code, int column)
{
    m_data->FillHeader(notification->hdr, code);
    notification->subitem = m_data->header.GetSubItem(m_data->header.GetItemOfColumn(column));
    return Notify(reinterpret_cast<_NMREPORTVIEW*>(notification));
}

void CReportCtrl::Data::FillHeader(NMHDR& filled, UINT code)
{
    filled.hwndFrom = control.m_hWnd;
    filled.idFrom = control.m_hWnd ? static_cast<UINT_PTR>(control.GetDlgCtrlID()) : 0;
    filled.code = code;
}

// ---- Callbacks

// A paint asks for hundreds of items, and the system but once.
bool CReportCtrl::Data::FillCallbackHeader(NMHDR& filled)
{
    if (!control.m_hWnd)
        return false;
    NMHDR* const kept = window.asking;
    if (kept && kept->hwndFrom == control.m_hWnd)
    {
        filled = *kept;
        return true;
    }
    if (!::GetParent(control.m_hWnd))
        return false;
    FillHeader(filled, RVN_ITEMCALLBACK);
    if (kept)
        *kept = filled;
    return true;
}

namespace
{

class CountedQuestion
{
public:
    explicit CountedQuestion(int& count) : m_count(count) { ++m_count; }
    ~CountedQuestion() { --m_count; }
    CountedQuestion(const CountedQuestion&) = delete;
    CountedQuestion& operator=(const CountedQuestion&) = delete;

private:
    int& m_count;
};

} // namespace

bool CReportCtrl::Data::AskOwner(_RVITEM& question)
{
    _NMRVITEMCALLBACK callback = {};
    if (!FillCallbackHeader(callback.hdr))
        return false;
    callback.item = question;
    const CountedQuestion counted(window.questions);
    const __int64 answer = control.OnRvnItemCallbackBypass(reinterpret_cast<_NMREPORTVIEW*>(&callback));
    question = callback.item;
    return answer == 0;
}

__int64 CReportCtrl::OnRvnItemCallbackBypass(_NMREPORTVIEW*)
{
    return 0;
}

__int64 CReportCtrl::OnRvnItemDrawPreviewBypass(_NMREPORTVIEW*)
{
    return 0;
}
