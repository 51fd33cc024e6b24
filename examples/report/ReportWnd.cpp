#include "ReportWnd.h"

#include <algorithm>
#include <stdexcept>

namespace
{

constexpr UINT kHiddenListId = 2;
constexpr UINT kStatusId = 3;
constexpr int kHiddenListWidth = 150; // pixels at 96 dots per inch
constexpr DWORD kSwitched = RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_ALTERNATEROWS | RVS_CELLFOCUS;

} // namespace

BEGIN_MESSAGE_MAP(ReportWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_INITMENUPOPUP()
    ON_WM_CONTEXTMENU()
    ON_COMMAND(kCloseCommand, &ReportWnd::OnCloseCommand)
    ON_COMMAND_RANGE(kFirstStyleCommand, kLastStyleCommand, &ReportWnd::OnSwitchStyle)
    ON_COMMAND(kHiddenListCommand, &ReportWnd::OnSwitchHiddenList)
    ON_COMMAND(kSelectAllCommand, &ReportWnd::OnSelectAll)
    ON_COMMAND(kCopyCommand, &ReportWnd::OnCopy)
    ON_NOTIFY(RVN_ITEMRCLICK, kReportId, &ReportWnd::OnRightClick)
    ON_NOTIFY(RVN_BEGINITEMEDIT, kReportId, &ReportWnd::OnBeginEdit)
END_MESSAGE_MAP()

void ReportWnd::Open(const std::string& path, const std::string& layoutFile, const std::string& section)
{
    m_path = path;
    const LPCSTR windowClass =
        AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1));
    if (!CreateEx(0, windowClass, "report", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 100, 100, Scaled(800),
                  Scaled(500), nullptr, MakeMenuBar(m_use)))
        throw std::runtime_error("the window cannot be made");
    m_layout = Layout(layoutFile, section);
    LoadPlace(m_layout, *this);
    UpdateWindow();
    Load(path);
    UpdateTitle();
    LoadView();
    m_report.SetReportSubItemListCtrl(&m_hiddenList); // now that all columns are there it is filled once
    if (m_report.GetRowCount() > 0)
        m_report.AdjustFocus(0, HasStyle(RVS_CELLFOCUS) ? 0 : -1);
}

void ReportWnd::Load(const std::string& path)
{
    const CWaitCursor waiting;
    m_report.SetRedraw(0);
    ShowFolder(path, m_report, m_order, ShowProgress(path));
    m_report.SetRedraw(1);
    SetStatus(std::to_string(m_report.GetItemCount()) + " entries");
}

// The window is there while it is filled, and its title tells how far it is.
Progress ReportWnd::ShowProgress(const std::string& path)
{
    return [this, path](int items) { SetWindowText((std::to_string(items) + " rows - " + path).c_str()); };
}

int ReportWnd::OnCreate(LPCREATESTRUCT)
{
    const DWORD style = WS_CHILD | WS_VISIBLE | RVS_KEEPSELECTION | RVS_DRAGCOLUMNS | RVS_TIPS;
    if (!m_report.Create(style, CRect(), this, kReportId) ||
        !m_hiddenList.Create(WS_CHILD | WS_BORDER | WS_VSCROLL | LBS_NOINTEGRALHEIGHT, CRect(), this,
                             kHiddenListId) ||
        !m_status.Create(STATUSCLASSNAME, nullptr, WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, CRect(), this,
                         kStatusId))
        return -1;
    m_hiddenList.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)));
    m_report.ModifyProperty(RVP_FITITEMHEIGHT, 1);
    m_report.ModifyProperty(RVP_KEYS, RVK_ALL);
    m_report.InsertColor(0, RGB(240, 245, 250)); // of alternating rows
    return 0;
}

void ReportWnd::LoadView()
{
    const DWORD usual =
        RVS_HORIZONTALGRID | RVS_VERTICALGRID | (m_use == Use::Edit ? RVS_CELLFOCUS : DWORD{0});
    const int styles = m_layout.GetNumber("Styles", static_cast<int>(usual));
    m_report.ModifyStyle(kSwitched, static_cast<DWORD>(styles) & kSwitched);
    m_showHiddenList = m_layout.GetNumber("HiddenColumns", 0) != 0;
    LoadColumns(m_layout, m_report);
    Arrange();
}

void ReportWnd::SaveView()
{
    m_layout.SetNumber("Styles", static_cast<int>(m_report.GetStyle() & kSwitched));
    m_layout.SetNumber("HiddenColumns", m_showHiddenList);
    SaveColumns(m_layout, m_report);
    SavePlace(m_layout, *this);
}

void ReportWnd::OnClose()
{
    SaveView();
    DestroyWindow();
}

void ReportWnd::OnSize(UINT, int, int)
{
    Arrange();
}

void ReportWnd::Arrange()
{
    CRect client;
    GetClientRect(client);
    m_status.SendMessage(WM_SIZE); // it goes to the bottom
    CRect status;
    m_status.GetWindowRect(status);
    const int height = std::max(0, client.Height() - status.Height());
    const int listWidth = Scaled(kHiddenListWidth);
    const int reportWidth = std::max(0, client.Width() - (m_showHiddenList ? listWidth : 0));
    m_report.MoveWindow(0, 0, reportWidth, height);
    m_hiddenList.MoveWindow(reportWidth, 0, listWidth, height);
    m_hiddenList.ShowWindow(m_showHiddenList ? SW_SHOW : SW_HIDE);
}

void ReportWnd::OnSetFocus(CWnd*)
{
    m_report.SetFocus();
}

void ReportWnd::OnInitMenuPopup(CMenu* popup, UINT, BOOL)
{
    UINT id = kFirstStyleCommand;
    for (const StyleSwitch& item : kSwitches)
        ::CheckMenuItem(*popup, id++, HasStyle(item.styles) ? MF_CHECKED : MF_UNCHECKED);
    ::CheckMenuItem(*popup, kHiddenListCommand, m_showHiddenList ? MF_CHECKED : MF_UNCHECKED);
}

void ReportWnd::OnCloseCommand()
{
    SendMessage(WM_CLOSE);
}

void ReportWnd::OnSwitchStyle(UINT id)
{
    const DWORD styles = kSwitches[id - kFirstStyleCommand].styles;
    const bool isOn = HasStyle(styles);
    m_report.ModifyStyle(isOn ? styles : 0, isOn ? 0 : styles);
}

void ReportWnd::OnSwitchHiddenList()
{
    m_showHiddenList = !m_showHiddenList;
    Arrange();
}

void ReportWnd::OnSelectAll()
{
    m_report.SelectAll();
}

void ReportWnd::OnCopy()
{
    if (!m_report.CopySelection())
        ::MessageBeep(MB_ICONWARNING);
}

// What is in folders is shown, not changed.
void ReportWnd::OnBeginEdit(NMHDR*, LRESULT* result)
{
    *result = 1;
}

// A click on selected rows leaves them selected: the menu is for all of them.
void ReportWnd::OnRightClick(NMHDR* notification, LRESULT* result)
{
    const int item = reinterpret_cast<_NMREPORTVIEW*>(notification)->item;
    const int row = item >= 0 ? m_report.GetRowFromItem(item) : -1;
    int first = 0;
    int last = 0;
    m_report.GetSelectedRows(&first, &last);
    *result = row >= first && row <= last;
}

// With a right click or the menu key, at a point of the screen.
void ReportWnd::OnContextMenu(CWnd*, CPoint point)
{
    CMenu menu;
    FillContextMenu(menu, m_use);
    menu.TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, this);
}

BOOL ReportWnd::PreTranslateMessage(MSG* message)
{
    if (message->message != WM_KEYDOWN || message->wParam != VK_TAB || !m_showHiddenList)
        return CWnd::PreTranslateMessage(message);
    if (::GetFocus() == m_hiddenList)
        m_report.SetFocus();
    else
        m_hiddenList.SetFocus();
    return TRUE;
}
