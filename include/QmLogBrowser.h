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

    // The window with its two children; FALSE when one of them cannot be created.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    CQmLogTextCtrl& GetTextCtrl() { return m_text; }

    // Shows the tab of the text window's current log.
    void Refresh();

    // The text window's commands.
    void Scan(IQmCommand& collector) override;

protected:
    // The default's result; 0 when a child window cannot be created, and then there is no browser window.
    afx_msg LRESULT OnCreate(CREATESTRUCT* create);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnSelChange(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    CQmFlatTabCtrl m_tabs;
    CQmLogTextCtrl m_text;
};
