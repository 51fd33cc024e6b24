// The report control's painting.
#include "report/ReportCtrlData.h"

void CReportCtrl::DrawItem(CDC*, CRect, _RVITEM*) {}
void CReportCtrl::DrawCtrl(CDC*) {}
void CReportCtrl::DrawRow(CDC*, CRect, CRect, int, _RVITEM*, int, int) {}
int CReportCtrl::DrawTreeBox(CDC*, CRect, int)
{
    return 0;
}
int CReportCtrl::DrawImage(CDC*, CRect, _RVITEM*)
{
    return 0;
}
int CReportCtrl::DrawCheck(CDC*, CRect, _RVITEM*)
{
    return 0;
}
int CReportCtrl::DrawText(CDC*, CRect, _RVITEM*)
{
    return 0;
}
void CReportCtrl::DrawBkgnd(CDC*, CRect, unsigned long) {}
void CReportCtrl::GetSysColors() {}
unsigned int CReportCtrl::GetMouseScrollLines()
{
    return 3;
}
int CReportCtrl::BeginEdit(int, int, unsigned int)
{
    return 0;
}
