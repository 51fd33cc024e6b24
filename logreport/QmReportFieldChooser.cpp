#include "logreport/QmReportFieldChooser.h"

#include "ReportCtrl.h"
#include "logreport/OwnDialog.h"
#include "resources/qmlog_resource.h"

#include <algorithm>

namespace
{

constexpr LRESULT kKeyIsDone = -2; // what a list box takes for an answer to WM_VKEYTOITEM
constexpr LRESULT kKeyIsTheLists = -1;

} // namespace

BEGIN_MESSAGE_MAP(CQmReportFieldChooser, CDialog)
    ON_WM_DESTROY()
    ON_MESSAGE(WM_VKEYTOITEM, &CQmReportFieldChooser::OnListKey)
END_MESSAGE_MAP()

CQmReportFieldChooser::CQmReportFieldChooser() = default;

CQmReportFieldChooser::~CQmReportFieldChooser()
{
    DestroyWindow(); // while what its last messages ask for is still there
}

void CQmReportFieldChooser::Open(CReportCtrl& report)
{
    if (!m_hWnd)
    {
        m_report = &report;
        if (!CreateIndirect(logreport::FindOwnDialog(IDD_COLUMN_PICKER), &report))
        {
            m_report = nullptr;
            return;
        }
        m_controlHook.Attach(report.GetSafeHwnd());
        PlaceBeside(report);
    }
    m_list.Refresh();
    if (m_list.SendMessage(LB_GETCURSEL) < 0)
        m_list.SendMessage(LB_SETCURSEL, 0); // what Enter adds
    ShowWindow(SW_SHOW);
    ::SetActiveWindow(m_hWnd);
    m_list.SetFocus();
}

void CQmReportFieldChooser::DoDataExchange(CDataExchange* exchange)
{
    CDialog::DoDataExchange(exchange);
    if (exchange->m_bSaveAndValidate)
        return;
    DDX_Control(exchange, IDC_COLUMNS, m_list);
    m_report->SetReportSubItemListCtrl(&m_list);
}

// In the control's lower right corner, where it leaves the header free, and on the screen.
void CQmReportFieldChooser::PlaceBeside(const CReportCtrl& report)
{
    CRect control;
    CRect window;
    report.GetWindowRect(control);
    GetWindowRect(window);
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    ::GetMonitorInfo(::MonitorFromRect(control, MONITOR_DEFAULTTONEAREST), &screen);
    const RECT& area = screen.rcWork;
    const LONG left = std::min(control.right, area.right) - window.Width();
    const LONG top = std::min(control.bottom, area.bottom) - window.Height();
    SetWindowPos(nullptr, std::max(left, area.left), std::max(top, area.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// ---- The end

void CQmReportFieldChooser::OnDestroy()
{
    m_controlHook.Detach();
    if (m_list.GetReportCtrl())
        m_list.GetReportCtrl()->SetReportSubItemListCtrl(nullptr);
    m_report = nullptr;
    CDialog::OnDestroy();
}

void CQmReportFieldChooser::OnCancel()
{
    ShowWindow(SW_HIDE);
    if (m_report)
        m_report->SetFocus();
}

// ---- Keys

void CQmReportFieldChooser::OnOK()
{
    AddColumn();
}

// Where no message loop makes commands of keys, they reach the list.
LRESULT CQmReportFieldChooser::OnListKey(WPARAM key, LPARAM)
{
    switch (LOWORD(key))
    {
    case VK_RETURN:
        AddColumn();
        return kKeyIsDone;
    case VK_DELETE:
        RemoveColumn();
        return kKeyIsDone;
    case VK_ESCAPE:
        OnCancel();
        return kKeyIsDone;
    default:
        return kKeyIsTheLists;
    }
}

void CQmReportFieldChooser::AddColumn()
{
    const LRESULT entry = m_list.SendMessage(LB_GETCURSEL);
    if (m_report && entry >= 0)
        m_report->ActivateSubItem(
            static_cast<int>(m_list.SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(entry))), -1);
}

// All but the last: a control without columns shows nothing that could have the focus.
void CQmReportFieldChooser::RemoveColumn()
{
    const int columns = m_report ? m_report->GetActiveSubItemCount() : 0;
    if (columns < 2)
        return;
    const int focused = m_report->GetCurrentFocusColumn();
    const int subitem =
        m_report->GetSubItemFromColumn(focused >= 0 && focused < columns ? focused : columns - 1);
    m_report->DeactivateSubItem(subitem);
    Choose(subitem);
}

void CQmReportFieldChooser::Choose(int subitem)
{
    const LRESULT entries = m_list.SendMessage(LB_GETCOUNT);
    for (LRESULT entry = 0; entry < entries; ++entry)
        if (m_list.SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(entry)) == subitem)
            m_list.SendMessage(LB_SETCURSEL, static_cast<WPARAM>(entry));
}
