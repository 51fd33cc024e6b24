// The dialog from which columns are added to a report control.
#pragma once

#include "ReportSubItemListCtrl.h"
#include "afxwin.h"
#include "qmcommon/QmHookWnd.h"

// "Column Picker": the list of the fields that a report control does not show. Beside what the list does with
// the mouse, Enter adds the chosen field as the last column, Delete takes the column of the control's focus
// away, else the last one, and Esc hides the dialog.
//
// There is one for the process. It stays with the control that first opened it until that control's window
// goes, whoever opens it meanwhile: deliberately so.
class CQmReportFieldChooser : public CDialog
{
public:
    CQmReportFieldChooser();
    ~CQmReportFieldChooser() override;

    // Shows the dialog; if it has no window, makes one for this control.
    void Open(CReportCtrl& report);

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;     // Enter
    void OnCancel() override; // hides
    afx_msg void OnDestroy();
    LRESULT OnListKey(WPARAM key, LPARAM list);
    DECLARE_MESSAGE_MAP()

private:
    void PlaceBeside(const CReportCtrl& report);
    void AddColumn();
    void RemoveColumn();
    void Choose(int subitem);

    CReportCtrl* m_report = nullptr;
    CReportSubItemListCtrl m_list;
    CQmEndHook m_controlHook{*this};
};
