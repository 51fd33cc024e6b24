// A cell as it is edited, and as a tip shows it.
#include "report/ReportSnapshot.h"
#include "report/model/Editing.h"

std::optional<CReportCtrl::Data::EditedCell> CReportCtrl::Data::FindEdited(int row, int column)
{
    if (!report::IsPlaceToEdit(row, column, rows.Count(), style))
        return {};
    Snapshot snapshot(*this);
    const std::optional<report::ShownRow> shown = snapshot.geometry.FindRow(row);
    const std::optional<report::ShownCell> cell =
        shown ? snapshot.geometry.FindCell(*shown, column) : std::nullopt;
    EditedCell edited;
    if (!cell || !snapshot.rows.ReadCell(row, cell->subitem, edited.record, edited.text))
        return {};
    edited.hasText = std::exchange(edited.record.text, nullptr) != nullptr;
    edited.rect = CRect(cell->left, cell->rect.top, cell->rect.right, cell->rect.bottom);
    edited.editor = report::EditorRect(report::CellLayout(view), *cell, ContentsOf(edited.record));
    return edited;
}
