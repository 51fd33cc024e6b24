#include "QmLogBrowser.h"

#include "afxcmn.h"

namespace
{

// The children's identifiers within the browser window.
constexpr UINT kTextId = 1;
constexpr UINT kTabsId = 2;

constexpr UINT kTabStyle = 1; // tabs at the bottom

} // namespace

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr int CQmLogBrowser::kAllLogsTab;

BEGIN_MESSAGE_MAP(CQmLogBrowser, CWnd)
    ON_MESSAGE(WM_NCCREATE, &CQmLogBrowser::OnNcCreate)
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_NOTIFY(TCN_SELCHANGE, kTabsId, &CQmLogBrowser::OnSelChange)
END_MESSAGE_MAP()

CQmLogBrowser::CQmLogBrowser()
{
    m_text.SetBrowser(this);
}

CQmLogBrowser::~CQmLogBrowser()
{
    m_text.SetBrowser(nullptr);
    DestroyWindow(); // while the children, which it destroys, are still there
}

BOOL CQmLogBrowser::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW)), "",
                        style | WS_CLIPCHILDREN, rect, parent, id);
}

void CQmLogBrowser::Refresh()
{
    if (m_tabs.GetSafeHwnd())
        m_tabs.Refresh(m_allTabs ? GetShownTab() + 1 : m_text.GetFilePathIndex());
}

void CQmLogBrowser::ShowTab(int file)
{
    if (GetShownTab() == kAllLogsTab)
        m_allLogs = m_text.GetShownLogs();
    if (file == kAllLogsTab)
        m_text.ShowMerged(m_allLogs);
    else if (file == 0)
        m_text.ShowMain();
    else
        m_text.ShowMerged(1u << file);
}

int CQmLogBrowser::GetShownTab() const
{
    if (!m_text.IsMerged())
        return 0;
    for (int file = 1; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
        if (m_text.GetShownLogs() == 1u << file && !m_text.IsDuring())
            return file;
    return kAllLogsTab;
}

void CQmLogBrowser::Scan(IQmCommand& collector)
{
    m_text.Scan(collector);
}

// The children are made at this message because its answer 0 keeps the window from being created.
LRESULT CQmLogBrowser::OnNcCreate(WPARAM, LPARAM create)
{
    return OnCreate(reinterpret_cast<CREATESTRUCT*>(create));
}

LRESULT CQmLogBrowser::OnCreate(CREATESTRUCT*)
{
    const LRESULT result = Default();
    if (!m_text.Create(WS_CHILD | WS_BORDER | WS_TABSTOP, CRect(0, 0, 0, 0), this, kTextId))
        return 0;
    CRect client;
    GetClientRect(&client);
    if (!m_tabs.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP, kTabStyle, client, this, kTabsId))
        return 0;
    if (m_allTabs)
        m_tabs.AddTab(0, "All logs", &m_text);
    for (int file = 0; file < (m_allTabs ? CQmLogTextCtrl::GetFilePathCount() : 1); ++file)
        m_tabs.AddTab(m_allTabs ? file + 1 : file, CQmLogTextCtrl::GetFilePath(file), &m_text);
    m_tabs.SelectTab(0);
    if (m_allTabs)
        ShowTab(kAllLogsTab);
    return result;
}

void CQmLogBrowser::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    if (m_tabs.GetSafeHwnd())
        m_tabs.MoveWindow(0, 0, width, height, TRUE);
}

void CQmLogBrowser::OnSetFocus(CWnd* old)
{
    CWnd::OnSetFocus(old);
    m_text.SetFocus();
}

void CQmLogBrowser::OnSelChange(NMHDR*, LRESULT* result)
{
    if (m_allTabs)
        ShowTab(m_tabs.GetSelectedTab() - 1);
    else
        m_text.Browse(m_tabs.GetSelectedTab());
    *result = 0;
}
