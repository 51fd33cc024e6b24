// What becomes of an edit: its text changes, it ends, and it goes on in another cell.
#include "qmcommon/QmWindowText.h"
#include "report/ReportSnapshot.h"
#include "report/edit/EditorWindow.h"
#include "zemacore/WideText.h"

namespace report
{

const UINT kEditMessage = ::RegisterWindowMessageA("QmReportCtrl.edit");

} // namespace report

// ---- While it is active

void CReportCtrl::OnEditorChange()
{
    const HWND editor = m_data->edit.editor;
    if (!m_data->IsEditing() || !m_data->edit.isOwn || m_data->edit.isSettingText)
        return;
    const ZEMA::Flagged setting(m_data->edit.isSettingText);
    const std::string text = report::EditorText(editor);
    _NMRVITEMEDIT record = {};
    m_data->FillHeader(record.hdr, RVN_EDITTEXT);
    record.item = m_data->edit.item;
    record.subitem = m_data->edit.subitem;
    record.editor = editor;
    record.rect = m_data->edit.rect;
    record.text = text.c_str();
    const LRESULT isChanged = Notify(reinterpret_cast<_NMREPORTVIEW*>(&record));
    if (m_data->edit.editor != editor)
        return;
    const std::string wanted = isChanged && record.text ? record.text : text;
    if (isChanged || wanted != QmGetWindowText(editor))
    {
        QmSetWindowText(editor, wanted);
        const auto end = static_cast<WPARAM>(::GetWindowTextLengthW(editor));
        ::SendMessage(report::TextField(editor), EM_SETSEL, end, static_cast<LPARAM>(end));
    }
    m_data->reasonTip.Hide();
    m_data->GrowEditor();
}

// A choice is not in the field yet when the box tells of it.
void CReportCtrl::OnEditorPick()
{
    m_data->edit.hasPicked = true;
    m_data->PostEditMessage();
}

void CReportCtrl::Data::GrowEditor()
{
    if (!(properties.editing & RVED_GROW) || report::TextField(edit.editor) != edit.editor)
        return;
    const std::string text = report::EditorText(edit.editor);
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    SIZE size = {};
    {
        CClientDC dc(&control);
        const auto font = reinterpret_cast<HFONT>(::SendMessage(edit.editor, WM_GETFONT, 0, 0));
        const HGDIOBJ old = ::SelectObject(dc, font);
        ::GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
        ::SelectObject(dc, old);
    }
    CRect rect;
    ::GetWindowRect(edit.editor, rect);
    control.ScreenToClient(rect);
    const int right = report::GrownRight(ToRect(rect), size.cx, view.report.right);
    if (right == rect.right)
        return;
    ::SetWindowPos(edit.editor, nullptr, 0, 0, right - rect.left, rect.Height(),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    // What had no room has been scrolled out of sight at the left, and stays so.
    DWORD begin = 0;
    DWORD end = 0;
    ::SendMessage(edit.editor, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    ::SendMessage(edit.editor, EM_SETSEL, 0, 0);
    ::SendMessage(edit.editor, EM_SCROLLCARET, 0, 0);
    ::SendMessage(edit.editor, EM_SETSEL, begin, static_cast<LPARAM>(end));
    ::SendMessage(edit.editor, EM_SCROLLCARET, 0, 0);
}

// A parent may destroy its editor without a word.
bool CReportCtrl::Data::IsEditing()
{
    if (edit.editor && !::IsWindow(edit.editor))
        edit = {};
    return edit.editor != nullptr;
}

// ---- Its end

void CReportCtrl::EndEdit(int update, _NMRVITEMEDIT* info)
{
    const report::EditState edit = std::exchange(m_data->edit, {});
    m_data->reasonTip.Hide();
    if (update && !(m_data->style & RVS_CALLBACK))
    {
        const std::string text = info ? "" : report::EditorText(edit.editor);
        const char* const wanted = info ? info->text : text.c_str();
        if (wanted && edit.shown != wanted)
            SetItemText(edit.item, edit.subitem, wanted);
    }
    if (::IsWindow(edit.editor))
        ::PostMessage(edit.editor, WM_CLOSE, 0, 0);
    const HWND focus = ::GetFocus();
    if (!m_hWnd)
        return;
    if (focus != m_hWnd && !::IsChild(m_hWnd, focus))
        m_data->window.hasFocus = false;
    const int row = GetCurrentFocus();
    CRect rect;
    if (row != RVI_NONE && GetRowRect(row, -1, rect, RVRC_WHOLE))
        InvalidateRect(rect);
}

void CReportCtrl::OnRvnEndItemEdit(NMHDR* header, LRESULT* result)
{
    *result = 0;
    const auto& ended = *reinterpret_cast<const _NMRVITEMEDIT*>(header);
    if (header->hwndFrom && header->hwndFrom == m_data->edit.editor && !m_data->edit.isEnding)
        m_data->EndOwn(ended.key, ended.text, Data::EditEnd::Wanted);
}

void CReportCtrl::Data::EndOwn(UINT key, const char* text, EditEnd why)
{
    const HWND editor = edit.editor;
    edit.isEnding = true;
    const bool isRefused = key != RVEK_ESCAPE && IsRefused(text);
    if (edit.editor != editor)
        return;
    if (isRefused && why == EditEnd::Wanted)
    {
        edit.isEnding = false;
        edit.isRefused = true;
        return PostEditMessage();
    }
    _NMRVITEMEDIT record = {};
    FillHeader(record.hdr, RVN_ENDITEMEDIT);
    record.item = edit.item;
    record.subitem = edit.subitem;
    record.editor = editor;
    record.key = isRefused ? RVEK_ESCAPE : key;
    record.text = text;
    const LRESULT isTaken = control.Notify(reinterpret_cast<_NMREPORTVIEW*>(&record));
    if (edit.editor != editor)
        return; // the parent has ended it, or the control
    const report::GoOn goOn = report::GoOnAfter(record.key, ::GetKeyState(VK_SHIFT) < 0);
    if ((properties.editing & RVED_GOON) && goOn != report::GoOn::Nowhere)
    {
        nextEdit = {edit.item, edit.subitem, goOn};
        PostEditMessage();
    }
    if (isTaken)
        control.EndEdit(0, nullptr);
    else
        control.EndEdit(record.key != RVEK_ESCAPE, &record);
}

// What the parent says of a text.
bool CReportCtrl::Data::IsRefused(const char* text)
{
    if (!(properties.editing & RVED_CHECK) || edit.shown == text)
        return false;
    const HWND editor = edit.editor;
    NMRVEDITCHECK check = {};
    FillHeader(check.hdr, RVN_CHECKITEMEDIT);
    check.item = edit.item;
    check.subitem = edit.subitem;
    check.text = text;
    const LRESULT isRefused = control.Notify(reinterpret_cast<_NMREPORTVIEW*>(&check));
    if (isRefused && edit.editor == editor)
        edit.reason = check.reason ? check.reason : "";
    return isRefused != 0;
}

bool CReportCtrl::Data::FinishEdit(EditEnd why)
{
    if (why == EditEnd::Renumbered)
        ++renumbered;
    if (!IsEditing() || (edit.isEnding && why != EditEnd::Renumbered))
        return true;
    const HWND editor = edit.editor;
    if (edit.isEnding)
        control.EndEdit(0, nullptr);
    else if (!edit.isOwn)
        control.EndEdit(1, nullptr);
    else
        EndOwn(0, report::EditorText(editor).c_str(), why);
    return control.m_hWnd && edit.editor != editor;
}

// ---- Afterwards

void CReportCtrl::Data::PostEditMessage()
{
    if (control.m_hWnd && !std::exchange(isEditMessagePosted, true))
        control.PostMessage(report::kEditMessage);
}

// What could not be done in the midst of another message: the focus was moving, or cells were.
LRESULT CReportCtrl::OnEditMessage(WPARAM, LPARAM)
{
    m_data->isEditMessagePosted = false;
    const report::NextEdit next = std::exchange(m_data->nextEdit, {});
    if (std::exchange(m_data->edit.hasPicked, false))
        OnEditorChange();
    if (m_data->IsEditing())
        m_data->CheckEditor();
    else if (next.goOn != report::GoOn::Nowhere)
        m_data->EditNext(next);
    return 0;
}

// Ends an edit whose cell is not where it was. A text that was refused has the focus again, if another
// program does not have it.
void CReportCtrl::Data::CheckEditor()
{
    const std::optional<EditedCell> cell =
        FindEdited(rows.RowOf(edit.item), control.GetColumnFromSubItem(edit.subitem));
    if (!cell || cell->rect != edit.rect)
        FinishEdit(EditEnd::Moved);
    else if (std::exchange(edit.isRefused, false) && ::GetActiveWindow() == ::GetAncestor(control, GA_ROOT))
    {
        ::SetFocus(report::TextField(edit.editor));
        if (IsEditing()) // shown before, it would lie below a window that comes to the front
            reasonTip.Show(edit.editor, edit.reason);
    }
}

// To the next cell that lets itself be edited, in this row or the next one; or to the one below, edited or
// not.
void CReportCtrl::Data::EditNext(const report::NextEdit& next)
{
    const int columns = control.GetActiveSubItemCount();
    report::CellPlace cell = {rows.RowOf(next.item), control.GetColumnFromSubItem(next.subitem)};
    const report::CellPlace before = cell;
    const int tries = next.goOn == report::GoOn::Below ? 1 : 2 * columns;
    for (int i = 0; i < tries && cell.row != report::kNoRow && cell.column >= 0; ++i)
    {
        cell = report::NextCell(cell, next.goOn, rows.Count(), columns);
        if (cell.row == report::kNoRow)
            break;
        if (items.FormatOf(control.GetSubItemFromColumn(cell.column)) & RVSF_NOCELLFOCUS)
            continue;
        FocusCell(cell);
        if (control.BeginEdit(cell.row, cell.column, RVEK_TAB) || !control.m_hWnd || IsEditing())
            return;
    }
    if (next.goOn != report::GoOn::Below && before.column >= 0)
        FocusCell(before);
}

void CReportCtrl::Data::FocusCell(report::CellPlace cell)
{
    const bool hasCells = (style & RVS_CELLFOCUS) != 0 || cell.row == report::kFixedRow;
    if (cell.row >= 0)
    {
        control.SelectRows(cell.row, cell.row, 1, 0, 0, 1);
        rows.selection.anchor = cell.row;
    }
    if (hasCells)
        control.AdjustFocus(cell.row, cell.column);
    ShowRow(cell.row);
    if (hasCells)
        control.EnsureVisibleColumn(cell.column);
}
