// The flat tab control: a strip of tabs, and the page of the selected one.
#pragma once

#include "afxwin.h"
#include "zemacore/ZemaApi.h"

#include <string>
#include <vector>

namespace flattab
{
class TabStrip;
}

namespace VkGrafic
{
class WindowColors;
}

// Shows one page window at a time beside its tabs. When the user selects another tab, by mouse or by Ctrl+Tab
// and Ctrl+Shift+Tab, the parent is told by a WM_NOTIFY with the code TCN_SELCHANGE; selecting from within
// the program tells nobody. The focus is the page's. Tabs are counted from 0.
class QMPLATFORM_API CQmFlatTabCtrl : public CWnd
{
public:
    static constexpr UINT kTabsAtBottom = 1; // the only bit of the tab style

    CQmFlatTabCtrl();
    ~CQmFlatTabCtrl() override;

    // Creates the window; FALSE when it fails.
    using CWnd::Create;
    BOOL Create(DWORD style, UINT tabStyle, const RECT& rect, CWnd* parent, UINT id);

    // Inserts a tab before the one at `index`, at the end for their number; FALSE for other indexes. `page`
    // is not owned; it becomes a hidden child of this window until its tab is selected, and dies with it.
    BOOL AddTab(int index, const char* label, CWnd* page);

    // Shows the tab's page and hides the one before; FALSE when there is no such tab.
    BOOL SelectTab(int index);

    // -1 while none was selected.
    int GetSelectedTab() const { return m_selected; }

    // Shows the tab at `index` where there is one; else nothing changes.
    void Refresh(int index) { SelectTab(index); }

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    struct Tab
    {
        std::string label;
        HWND page; // may be destroyed before the tab
    };

    flattab::TabStrip GetLayout() const;
    void SelectByUser(int index);
    void PlacePage();
    void DrawTab(CDC& dc, const RECT& rect, const Tab& tab, bool selected,
                 const VkGrafic::WindowColors& colors) const;

    std::vector<Tab> m_tabs;
    int m_selected = -1;
    bool m_bottom = false;
};
