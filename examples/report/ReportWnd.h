// The window: a report control, beside it the list of hidden columns, and a menu.
#pragma once

#include "Contents.h"
#include "Layout.h"

#include <ReportSubItemListCtrl.h>

#include <string>

class ReportWnd : public CWnd
{
public:
    // Shows a CSV file or a folder, in the way that the INI file `layoutFile` remembers, and remembers it
    // there when it closes; an empty name for neither. Throws std::runtime_error when it cannot.
    void Open(const std::string& path, const std::string& layoutFile);

protected:
    BOOL PreTranslateMessage(MSG* message) override; // Tab goes from the report to the list and back
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnClose();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnSwitchStyle(UINT id);
    afx_msg void OnSwitchHiddenList();
    afx_msg void OnSelectAll();
    afx_msg void OnCopy();
    afx_msg void OnRightClick(NMHDR* notification, LRESULT* result);
    afx_msg void OnBeginEdit(NMHDR* notification, LRESULT* result);
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    void Load(const std::string& path, bool isFolder);
    void LoadView();
    void SaveView();
    void Arrange();
    int Scaled(int pixels) { return ::MulDiv(pixels, m_report.GetResolution(), 96); }
    bool HasStyle(DWORD style) const { return (m_report.GetStyle() & style) != 0; }

    CReportCtrl m_report;
    RowOrder m_order{m_report};
    CReportSubItemListCtrl m_hiddenList;
    bool m_showHiddenList = false;
    Layout m_layout;
};
