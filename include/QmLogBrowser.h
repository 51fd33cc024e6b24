// The log browser: a child window that shows a session's logs.
#pragma once

#include "QmLogTextCtrl.h"
#include "qmflattabctrl/QmFlatTabCtrl.h"

// A flat tab control with one page, the log text window. A host creates it as a child of its own window.
class QMLOG_API CQmLogBrowser : public QmHandler<CWnd>
{
public:
    CQmLogBrowser();
    ~CQmLogBrowser() override;

    // The window with its two children; FALSE when one of them cannot be created. Creating the text window
    // starts a session, unless GetTextCtrl().SetStartSession(false) was called.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Before the window is created: a tab "All logs" before "Main", with the rows of all logs in the order of
    // their numbers, and one for each further log, with its rows; off by default, when "Main" is the only
    // one. The text window is the page of all of them.
    void SetAllTabs(bool all) { m_allTabs = all; }

    // What the tab of a log shows (a file index), or that of all logs (kAllLogsTab).
    static constexpr int kAllLogsTab = -1;
    void ShowTab(int file);
    int GetShownTab() const;

    CQmLogTextCtrl& GetTextCtrl() { return m_text; }

    // Shows the tab of the text window's current log.
    void Refresh();

    // The text window's commands.
    void Scan(IQmCommand& collector) override;

protected:
    // Makes the children. 0 when one cannot be made: then there is no browser window.
    virtual LRESULT OnCreate(CREATESTRUCT* create);
    afx_msg LRESULT OnNcCreate(WPARAM wParam, LPARAM create);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnSelChange(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    bool m_allTabs = false;
    CQmFlatTabCtrl m_tabs;
    CQmLogTextCtrl m_text;
    unsigned m_allLogs = CQmLogTextCtrl::kAllLogs; // that the first tab shows
};
