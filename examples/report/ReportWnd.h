// The window: a report control, beside it the list of hidden columns, a menu and a status bar.
#pragma once

#include "Commands.h"
#include "Contents.h"
#include "Layout.h"

#include <ReportSubItemListCtrl.h>

#include <string>

// Shows a folder, which is not edited.
class ReportWnd : public CWnd
{
public:
    explicit ReportWnd(Use use = Use::Show) : m_use(use) {}

    // Shows a file or a folder, in the way that the INI file `layoutFile` remembers for `section`, and
    // remembers it there when it closes; an empty name for neither. Throws std::runtime_error when it cannot.
    void Open(const std::string& path, const std::string& layoutFile, const std::string& section);

protected:
    // Fills the control. May throw std::runtime_error.
    virtual void Load(const std::string& path);
    virtual std::string Title() { return m_path + " - report"; }
    void UpdateTitle() { SetWindowText(Title().c_str()); }
    void SetStatus(const std::string& text) { m_status.SetWindowText(text.c_str()); }
    Progress ShowProgress(const std::string& path);

    BOOL PreTranslateMessage(MSG* message) override; // Tab goes from the report to the list and back
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnClose();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnCloseCommand();
    afx_msg void OnSwitchStyle(UINT id);
    afx_msg void OnSwitchHiddenList();
    afx_msg void OnSelectAll();
    afx_msg void OnCopy();
    afx_msg void OnRightClick(NMHDR* notification, LRESULT* result);
    afx_msg void OnBeginEdit(NMHDR* notification, LRESULT* result);
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    DECLARE_MESSAGE_MAP()

    static constexpr UINT kReportId = 1;
    CReportCtrl m_report;
    RowOrder m_order{m_report};
    std::string m_path;

private:
    void LoadView();
    void SaveView();
    void Arrange();
    int Scaled(int pixels) { return ::MulDiv(pixels, m_report.GetResolution(), 96); }
    bool HasStyle(DWORD style) const { return (m_report.GetStyle() & style) != 0; }

    Use m_use;
    CReportSubItemListCtrl m_hiddenList;
    CWnd m_status;
    bool m_showHiddenList = false;
    Layout m_layout;
};
