// The message viewer: its saved layout.
#include "QmLogState.h"
#include "logreport/ReportCtrlLogData.h"
#include "logreport/model/MsgCells.h"
#include "logreport/model/ViewState.h"

namespace
{

void ShowColumns(CReportCtrlLog& viewer, const std::vector<CQmLogStateColumn>& columns)
{
    viewer.DeactivateAllSubItems();
    int position = 0;
    for (const CQmLogStateColumn& column : columns)
    {
        if (viewer.ActivateSubItem(column.GetField(), position) >= 0)
            ++position;
        if (column.GetWidth() != logreport::kOwnWidth)
            viewer.SetSubItemWidth(column.GetField(), column.GetWidth());
    }
}

} // namespace

void CReportCtrlLog::ReadState(CQmLogState* state)
{
    std::vector<CQmLogStateColumn> columns;
    columns.reserve(static_cast<std::size_t>(state->GetColumnCount()));
    for (std::int32_t i = 0; i < state->GetColumnCount(); ++i)
        columns.push_back(state->GetColumn(i));
    columns = logreport::ShowableColumns(columns);
    if (!columns.empty())
        ShowColumns(*this, columns);
    SetFollow(state->GetFollow());
    SetShowReport(state->GetReport());
    SetShowHeader(state->GetHeader());
    InsertColor(logreport::kWarningColor, state->GetWarningColor());
    InsertColor(logreport::kErrorColor, state->GetErrorColor());
}

void CReportCtrlLog::WriteState(CQmLogState* state)
{
    state->RemoveAllColumns();
    for (int column = 0; column < GetActiveSubItemCount(); ++column)
    {
        const int subitem = GetSubItemFromColumn(column);
        state->AddColumn({static_cast<ILogMsgDataKind>(subitem), GetSubItemWidth(subitem)});
    }
    state->SetFollow(GetFollow());
    state->SetReport(GetShowReport());
    state->SetHeader(GetShowHeader());
    state->SetWarningColor(GetColor(logreport::kWarningColor));
    state->SetErrorColor(GetColor(logreport::kErrorColor));
}

void CReportCtrlLog::SetSavesState(bool saves)
{
    m_data->savesState = saves;
}

void CReportCtrlLog::SaveState()
{
    CQmLogState state(this);
    state.SetEnabled(m_data->savesState);
    state.Save();
}
