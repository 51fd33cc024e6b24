// The dialogs that edit how a message viewer's service sorts and filters.
#pragma once

#include "afxcmn.h"
#include "logreport/model/LogConfig.h"

class CReportCtrlLog;

// "Log Configuration": three sort keys, three filters, and whether duplicates are shown. The viewer is asked
// for its service whenever it is needed, so that it may go or become another one meanwhile.
class CQmLogConfig : public CDialog
{
public:
    CQmLogConfig(CReportCtrlLog& viewer, CWnd* parent);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnHelp();
    DECLARE_MESSAGE_MAP()

private:
    CReportCtrlLog& m_viewer;
    logreport::LogConfig m_config;
};

// "Edit Filter": one field and what it has to contain.
class CQmLogDialogFilter : public CDialog
{
public:
    CQmLogDialogFilter(ILogMsgDataKind field, const std::string& value, CWnd* parent);

    ILogMsgDataKind GetField() const { return m_field; }
    const std::string& GetValue() const { return m_value; }

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    ILogMsgDataKind m_field;
    std::string m_value;
};
