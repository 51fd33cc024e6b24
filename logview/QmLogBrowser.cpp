#include "QmLogBrowser.h"

#include "afxcmn.h"

namespace
{

// The children's identifiers within the browser window.
constexpr UINT kTextId = 1;
constexpr UINT kTabsId = 2;

constexpr UINT kTabStyle = 1; // tabs at the bottom

} // namespace

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
        m_tabs.Refresh(m_text.GetFilePathIndex());
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
    m_tabs.AddTab(0, CQmLogTextCtrl::GetFilePath(0), &m_text);
    m_tabs.SelectTab(0);
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
    m_text.Browse(m_tabs.GetSelectedTab());
    *result = 0;
}
