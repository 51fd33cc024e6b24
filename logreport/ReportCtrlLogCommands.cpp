// The message viewer: what its commands do.
#include "logreport/QmLogConfig.h"
#include "logreport/ReportCtrlLogData.h"

void CReportCtrlLog::ConfigureView()
{
    CQmLogConfig(*this, this).DoModal();
    if (m_hWnd)
        RefreshHeader();
}

void CReportCtrlLog::EditFilter(ILogMsgDataKind field, const char* value)
{
    CQmLogDialogFilter dialog(field, value, this);
    if (dialog.DoModal() != IDOK || !m_hWnd || !m_data->service || m_data->service->IsBusy())
        return; // any of them may have gone meanwhile
    logreport::AddFilter(dialog.GetField(), dialog.GetValue(), *m_data->service);
    RefreshHeader();
}
