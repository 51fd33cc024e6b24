// The message viewer: its saved layout.
#include "logreport/ReportCtrlLogData.h"

void CReportCtrlLog::ReadState(CQmLogState*) {}

void CReportCtrlLog::WriteState(CQmLogState*) {}

void CReportCtrlLog::SaveState() {}
