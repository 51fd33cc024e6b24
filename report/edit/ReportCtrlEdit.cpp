// Editing cells in place: the report control's side.
#include "ReportComboCtrl.h"
#include "qmcommon/QmWindowText.h"
#include "report/ReportCtrlData.h"
#include "report/edit/EditorWindow.h"
#include "report/edit/ReportEditCtrl.h"

namespace
{

constexpr int kMaxCharacters = 65535; // a cell keeps as many bytes

// Gives a new editor the focus, and the caret its place.
void Prime(HWND editor, const report::Primer& primer)
{
    const HWND field = report::TextField(editor);
    ::SetFocus(field);
    const int length = ::GetWindowTextLengthW(field);
    ::SendMessage(field, EM_SETSEL, static_cast<WPARAM>(primer.selectsAll ? 0 : length), -1);
    ::SendMessage(field, EM_SCROLLCARET, 0, 0);
}

// A key that the owner has named: one or two bytes in the code page.
WCHAR CharacterOf(unsigned key)
{
    const char bytes[] = {static_cast<char>(key >> 8), static_cast<char>(key)};
    const bool isPair = key > 0xFF;
    WCHAR character = 0;
    ::MultiByteToWideChar(CP_ACP, 0, isPair ? bytes : bytes + 1, isPair ? 2 : 1, &character, 1);
    return character;
}

} // namespace

// Scrolls to a cell that is not seen as a whole, unless it is none to be edited.
void CReportCtrl::Data::ShowEdited(int row, int column)
{
    if (row < 0 || row >= rows.Count() || column < 0 || column >= control.GetActiveSubItemCount())
        return;
    _RVITEM read;
    read.item = rows.ItemAt(row);
    read.subitem = control.GetSubItemFromColumn(column);
    read.mask = RVIM_STATE;
    if (!control.GetItem(&read) || !report::MayEdit(read.state))
        return;
    ShowRow(row);
    const std::optional<EditedCell> cell = FindEdited(row, column);
    if (cell && (cell->rect.left < view.report.left || cell->rect.right > view.report.right))
        control.EnsureVisibleColumn(column);
}

// ---- Beginning

int CReportCtrl::BeginEdit(int row, int column, unsigned int key)
{
    const bool isTyped = m_data->edit.isTyping;
    if (m_data->edit.isEnding)
        EndEdit(0, nullptr);
    if (!m_hWnd || !m_data->FinishEdit(Data::EditEnd::Wanted))
        return 0;
    m_data->ShowEdited(row, column);
    std::optional<Data::EditedCell> cell = m_data->FindEdited(row, column);
    if (!cell || !report::MayEdit(cell->record.state))
        return 0;

    _NMRVITEMEDIT record = {};
    m_data->FillHeader(record.hdr, RVN_BEGINITEMEDIT);
    record.item = cell->record.item;
    record.subitem = cell->record.subitem;
    record.rect = cell->rect;
    record.key = key;
    record.text = cell->hasText ? cell->text.c_str() : nullptr;
    record.extra = cell->record.extra;
    const unsigned renumbered = m_data->renumbered;
    const LRESULT isTaken = Notify(reinterpret_cast<_NMREPORTVIEW*>(&record));
    if (!m_hWnd)
        return 0;
    HWND editor = isTaken ? record.editor : nullptr;
    if (!isTaken)
    {
        // The parent may have changed what it was asked about.
        cell = m_data->FindEdited(row, column);
        const bool isSame =
            cell && cell->record.item == record.item && cell->record.subitem == record.subitem;
        if (isSame && cell->hasText && renumbered == m_data->renumbered)
            editor = m_data->MakeEditor(*cell);
    }
    report::Primer primer = report::PrimerOf(key, isTyped);
    if (!isTyped)
        primer.character = CharacterOf(primer.character);
    return editor && m_data->StartEdit(*cell, editor, primer);
}

// Null if there is no room for it.
HWND CReportCtrl::Data::MakeEditor(const EditedCell& cell)
{
    if (!cell.editor)
        return nullptr;
    const bool isBold = (cell.record.state & RVIS_BOLD) != 0;
    const auto font = reinterpret_cast<WPARAM>(isBold ? look.fonts.Bold() : look.fonts.Plain());
    const std::vector<ZEMA::String>& choices = items.SubItemAt(cell.record.subitem).choices;
    if (!choices.empty())
    {
        auto* const combo = new CReportComboCtrl;
        CRect rect = ToRect(*cell.editor);
        rect.top = cell.rect.top;
        if (!combo->Create(&control, rect))
            return nullptr;
        combo->SendMessage(WM_SETFONT, font);
        for (const ZEMA::String& choice : choices)
            combo->AddChoice(choice.c_str());
        combo->SetText(cell.text.c_str());
        return combo->m_hWnd;
    }
    const bool typesC = (properties.editing & RVED_TYPEC) != 0;
    auto* const line = new report::CReportEditCtrl(cell.record.item, cell.record.subitem, typesC);
    if (!line->Create(ToRect(*cell.editor), control))
        return nullptr;
    line->SendMessage(WM_SETFONT, font);
    QmSetWindowText(line->m_hWnd, cell.text);
    return line->m_hWnd;
}

// Makes an editor, which may be the parent's, the active one. Returns whether it is still there afterwards:
// whatever the focus or a first character leads to may have ended it.
bool CReportCtrl::Data::StartEdit(const EditedCell& cell, HWND editor, const report::Primer& primer)
{
    CWnd* const made = CWnd::FromHandlePermanent(editor);
    edit.editor = editor;
    edit.isOwn = dynamic_cast<report::CReportEditCtrl*>(made) || dynamic_cast<CReportComboCtrl*>(made);
    edit.item = cell.record.item;
    edit.subitem = cell.record.subitem;
    edit.rect = cell.rect;
    edit.shown = edit.isOwn ? report::EditorText(editor) : cell.text;
    if (!edit.isOwn)
        ::SetFocus(editor);
    else
    {
        ::SendMessage(report::TextField(editor), EM_SETLIMITTEXT, kMaxCharacters, 0);
        GrowEditor();
        Prime(editor, primer);
    }
    if (edit.editor && edit.isOwn && primer.character != 0)
        ::SendMessageW(report::TextField(editor), WM_CHAR, primer.character, 0);
    return control.m_hWnd && edit.editor;
}
