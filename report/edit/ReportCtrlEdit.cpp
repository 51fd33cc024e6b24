// Editing cells in place: the report control's side.
#include "qmcommon/QmWindowText.h"
#include "report/ReportCtrlData.h"
#include "report/edit/ReportEditCtrl.h"
#include "report/model/Editing.h"

namespace
{

// Gives a new editor the focus, and the caret its place.
void Prime(CWnd& editor, const report::Primer& primer)
{
    editor.SetFocus();
    const int length = ::GetWindowTextLength(editor.m_hWnd);
    editor.SendMessage(EM_SETSEL, static_cast<WPARAM>(primer.selectsAll ? 0 : length), -1);
    editor.SendMessage(EM_SCROLLCARET);
}

// In the code page of the process, each of them a message.
std::size_t BytesOfCharacter(unsigned char first)
{
    if (::GetACP() != CP_UTF8)
        return ::IsDBCSLeadByte(first) ? 2 : 1;
    return first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
}

} // namespace

int CReportCtrl::BeginEdit(int row, int column, unsigned int key)
{
    const bool isTyped = m_data->edit.isTyping;
    if (!m_data->FinishEdit())
        return 0;
    const std::optional<Data::EditedCell> cell = m_data->FindEdited(row, column);
    if (!cell || (cell->record.state & RVIS_READONLY) != 0)
        return 0;

    _NMRVITEMEDIT record = {};
    m_data->FillHeader(record.hdr, RVN_BEGINITEMEDIT);
    record.item = cell->record.item;
    record.subitem = cell->record.subitem;
    record.rect = cell->rect;
    record.key = key;
    record.text = cell->hasText ? cell->text.c_str() : nullptr;
    record.extra = cell->record.extra;
    const LRESULT isTaken = Notify(reinterpret_cast<_NMREPORTVIEW*>(&record));
    if (!m_hWnd)
        return 0;
    m_data->edit.item = cell->record.item;
    m_data->edit.subitem = cell->record.subitem;
    m_data->edit.text = cell->text;
    if (isTaken)
    {
        m_data->edit.editor = record.editor;
        if (record.editor)
            ::SetFocus(record.editor);
        return m_hWnd && record.editor ? 1 : 0;
    }

    // The parent may have changed what it was asked about.
    const std::optional<Data::EditedCell> again = m_data->FindEdited(row, column);
    if (!again || again->record.item != cell->record.item || again->text != cell->text || !again->hasText ||
        !again->editor)
        return 0;
    auto* const editor = new report::CReportEditCtrl(cell->record.item, cell->record.subitem);
    const bool isBold = (again->record.state & RVIS_BOLD) != 0;
    const HGDIOBJ font = isBold ? m_data->look.fonts.Bold() : m_data->look.fonts.Plain();
    if (!editor->Create(ToRect(*again->editor), *this, static_cast<HFONT>(font), again->text.c_str()))
        return 0;
    m_data->edit.editor = editor->m_hWnd;
    m_data->edit.shown = QmGetWindowText(editor->m_hWnd);
    const report::Primer primer = report::PrimerOf(key, isTyped);
    Prime(*editor, primer);
    if (m_data->edit.editor && primer.character != 0)
        m_data->TypeByte(primer.character);
    return m_hWnd && m_data->edit.editor ? 1 : 0;
}

void CReportCtrl::EndEdit(int update, _NMRVITEMEDIT* info)
{
    const report::EditState edit = std::exchange(m_data->edit, {});
    if (update && !(m_data->style & RVS_CALLBACK))
    {
        const std::string text = info ? "" : QmGetWindowText(edit.editor);
        const char* const wanted = info ? info->text : text.c_str();
        const bool isSameCell = edit.text == GetItemText(edit.item, edit.subitem).c_str(); // as it was
        const bool isOwn = dynamic_cast<report::CReportEditCtrl*>(CWnd::FromHandlePermanent(edit.editor));
        if (wanted && (isOwn ? edit.shown : edit.text) != wanted && isSameCell)
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
    if (!m_data->edit.editor || header->hwndFrom != m_data->edit.editor)
        return;
    _NMRVITEMEDIT record = ended;
    m_data->FillHeader(record.hdr, RVN_ENDITEMEDIT);
    record.item = m_data->edit.item;
    record.subitem = m_data->edit.subitem;
    const LRESULT isTaken = Notify(reinterpret_cast<_NMREPORTVIEW*>(&record));
    if (m_data->edit.editor != ended.hdr.hwndFrom)
        return; // the parent has ended it, or the control
    if (isTaken)
        EndEdit(0, nullptr);
    else
        EndEdit(record.key != RVEK_ESCAPE, &record);
}

void CReportCtrl::Data::TypeByte(UINT byte)
{
    if (byte > 0xFF)
        edit.typed += static_cast<char>(byte >> 8);
    edit.typed += static_cast<char>(byte);
    if (edit.typed.size() < BytesOfCharacter(static_cast<unsigned char>(edit.typed[0])))
        return;
    const std::string character = std::exchange(edit.typed, {});
    const HWND editor = edit.editor;
    WCHAR wide[4] = {};
    const int count = ::MultiByteToWideChar(CP_ACP, 0, character.data(), static_cast<int>(character.size()),
                                            wide, static_cast<int>(std::size(wide)));
    for (int i = 0; i < count; ++i)
        ::SendMessageW(editor, WM_CHAR, wide[i], 0);
}

bool CReportCtrl::Data::FinishEdit()
{
    if (auto* const own = dynamic_cast<report::CReportEditCtrl*>(CWnd::FromHandlePermanent(edit.editor)))
        own->End(0);
    else if (IsEditing())
        control.EndEdit(1, nullptr);
    return control.m_hWnd != nullptr;
}

// A parent may destroy its editor without a word.
bool CReportCtrl::Data::IsEditing()
{
    if (edit.editor && !::IsWindow(edit.editor))
        edit = {};
    return edit.editor != nullptr;
}
