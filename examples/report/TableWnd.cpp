#include "TableWnd.h"

#include "../common/CsvFile.h"
#include "LinesEdit.h"

#include <afxdlgs.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace
{

constexpr UINT kLookAtFileMessage = WM_APP;
constexpr std::size_t kLongestLine = 0x7000; // bytes that a cell's own editor certainly takes

std::string RowsText(int count)
{
    return std::to_string(count) + (count == 1 ? " row" : " rows");
}

} // namespace

BEGIN_MESSAGE_MAP(TableWnd, ReportWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_ACTIVATE()
    ON_WM_INITMENUPOPUP()
    ON_MESSAGE(WM_QUERYENDSESSION, &TableWnd::OnQueryEndSession)
    ON_COMMAND(kSaveCommand, &TableWnd::OnSave)
    ON_COMMAND(kSaveAsCommand, &TableWnd::OnSaveAs)
    ON_COMMAND(kUndoCommand, &TableWnd::OnUndo)
    ON_COMMAND(kRedoCommand, &TableWnd::OnRedo)
    ON_COMMAND(kInsertRowCommand, &TableWnd::OnInsertRow)
    ON_COMMAND(kDeleteRowsCommand, &TableWnd::OnDeleteRows)
    ON_NOTIFY(RVN_BEGINITEMEDIT, kReportId, &TableWnd::OnBeginEdit)
    ON_NOTIFY(RVN_CHECKITEMEDIT, kReportId, &TableWnd::OnCheckEdit)
    ON_NOTIFY(RVN_ENDITEMEDIT, kReportId, &TableWnd::OnEndEdit)
    ON_MESSAGE(kLookAtFileMessage, &TableWnd::OnLookAtFile)
END_MESSAGE_MAP()

int TableWnd::OnCreate(LPCREATESTRUCT create)
{
    if (ReportWnd::OnCreate(create) != 0)
        return -1;
    m_report.ModifyProperty(RVP_EDITING, RVED_ALL);
    return 0;
}

void TableWnd::Load(const std::string& path)
{
    const CWaitCursor waiting;
    TableFile file(path);
    const std::string bytes = file.Read();
    try
    {
        m_view.Load(bytes, ShowProgress(path));
    }
    catch (const std::runtime_error& error)
    {
        throw std::runtime_error(path + ": " + error.what());
    }
    m_file = std::move(file);
    ShowState();
}

std::string TableWnd::Title()
{
    return (m_view.Table().IsChanged() ? "*" : "") + m_file.Path() + " - report";
}

// What the status bar says besides is `news`, until something else happens.
void TableWnd::ShowState(const std::string& news)
{
    UpdateTitle();
    SetStatus(RowsText(m_view.Table().RowCount()) + (news.empty() ? "" : ".  ") + news);
}

BOOL TableWnd::PreTranslateMessage(MSG* message)
{
    const bool isHere = ::GetFocus() == m_report || IsEditing();
    if (isHere && TranslateEditKey(*this, message, IsEditing() ? Focus::InEditor : Focus::InRows))
        return TRUE;
    return ReportWnd::PreTranslateMessage(message);
}

bool TableWnd::IsEditing() const
{
    return ::IsChild(m_report, ::GetFocus()) != FALSE;
}

// ---- The file

int TableWnd::Ask(const std::string& question, UINT buttons)
{
    m_isAsking = true;
    const int answer = MessageBox(question.c_str(), "report", buttons | MB_ICONWARNING);
    m_isAsking = false;
    return answer;
}

// A text that is refused stays in its editor.
bool TableWnd::EndEdit()
{
    const HWND editor = ::GetFocus();
    m_reason.clear();
    if (IsEditing())
        m_report.SetFocus();
    if (!m_reason.empty())
        ::SetFocus(editor);
    return m_reason.empty();
}

bool TableWnd::Save(TableFile file)
{
    const CWaitCursor waiting;
    try
    {
        file.Save(m_view.Table().Bytes());
    }
    catch (const std::runtime_error& error)
    {
        Ask(error.what(), MB_OK);
        return false;
    }
    m_file = std::move(file);
    m_view.Table().SetSaved();
    ShowState("Saved");
    return true;
}

void TableWnd::OnSave()
{
    if (!EndEdit())
        return;
    if (!m_file.HasChanged() || Ask(m_file.Name() + " has been changed by another program. Save anyway?",
                                    MB_YESNO | MB_DEFBUTTON2) == IDYES)
        Save(m_file);
}

void TableWnd::OnSaveAs()
{
    if (!EndEdit())
        return;
    CFileDialog dialog(FALSE, nullptr, m_file.Path().c_str(),
                       OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR,
                       "Tables (*.csv, *.tsv, *.txt)|*.csv;*.tsv;*.txt|All files|*.*||", this);
    if (dialog.DoModal() == IDOK)
        Save(TableFile(std::string(dialog.GetPathName())));
}

bool TableWnd::MayLoseChanges()
{
    if (!EndEdit())
        return false;
    if (!m_view.Table().IsChanged())
        return true;
    const int answer = Ask("Save changes to " + m_file.Name() + "?", MB_YESNOCANCEL);
    if (answer == IDYES)
        OnSave();
    return answer == IDNO || (answer == IDYES && !m_view.Table().IsChanged());
}

void TableWnd::OnClose()
{
    if (MayLoseChanges())
        ReportWnd::OnClose();
}

LRESULT TableWnd::OnQueryEndSession(WPARAM, LPARAM)
{
    return MayLoseChanges();
}

// The window has to be active before it asks.
void TableWnd::OnActivate(UINT state, CWnd* other, BOOL minimized)
{
    ReportWnd::OnActivate(state, other, minimized);
    if (state != WA_INACTIVE && !minimized)
        PostMessage(kLookAtFileMessage);
}

LRESULT TableWnd::OnLookAtFile(WPARAM, LPARAM)
{
    if (m_isAsking || m_file.Path().empty() || !m_file.HasChangedSinceLook())
        return 0;
    const bool losesChanges = m_view.Table().IsChanged();
    if (Ask(m_file.Name() + " has been changed by another program. Read it again" +
                (losesChanges ? " and lose your changes?" : "?"),
            losesChanges ? MB_YESNO | MB_DEFBUTTON2 : MB_YESNO) != IDYES)
        return 0;
    const int row = m_report.GetCurrentFocus();
    const int column = m_report.GetCurrentFocusColumn();
    try
    {
        const std::string path = m_file.Path();
        Load(path);
    }
    catch (const std::runtime_error& error)
    {
        Ask(error.what(), MB_OK);
    }
    m_report.AdjustFocus(std::min(row, m_report.GetRowCount() - 1), column);
    return 0;
}

// ---- Editing

void TableWnd::OnInitMenuPopup(CMenu* popup, UINT index, BOOL system)
{
    ReportWnd::OnInitMenuPopup(popup, index, system);
    const auto enable = [popup](UINT command, bool isEnabled) {
        ::EnableMenuItem(*popup, command, isEnabled ? MF_ENABLED : MF_GRAYED);
    };
    int first = 0;
    int last = 0;
    m_report.GetSelectedRows(&first, &last);
    enable(kUndoCommand, IsEditing() || m_view.Table().CanUndo());
    enable(kRedoCommand, !IsEditing() && m_view.Table().CanRedo());
    enable(kDeleteRowsCommand, last >= first);
}

void TableWnd::OnUndo()
{
    if (IsEditing())
        ::SendMessage(::GetFocus(), WM_UNDO, 0, 0);
    else if (m_view.Undo())
        ShowState("Undone");
}

void TableWnd::OnRedo()
{
    if (!IsEditing() && m_view.Redo())
        ShowState("Done again");
}

void TableWnd::OnInsertRow()
{
    if (!EndEdit())
        return;
    m_view.InsertRow();
    ShowState();
}

void TableWnd::OnDeleteRows()
{
    if (!EndEdit())
        return;
    const CWaitCursor waiting;
    if (const int count = m_view.DeleteRows())
        ShowState(RowsText(count) + " deleted");
}

// The control's own editors take a single line, and not a very long one. For others the window brings one.
void TableWnd::OnBeginEdit(NMHDR* notification, LRESULT* result)
{
    auto& edit = *reinterpret_cast<_NMRVITEMEDIT*>(notification);
    const std::string text = m_view.Text(edit.item, edit.subitem);
    *result = text != CellText(text) || text.size() > kLongestLine;
    if (text.find('\0') != std::string::npos)
        ShowState("This text has a NUL byte and cannot be edited");
    else if (*result != 0)
        edit.editor = EditLines(edit.item, edit.subitem, text, edit.rect);
}

HWND TableWnd::EditLines(int item, int subitem, const std::string& text, const CRect& cell)
{
    auto* const editor = new LinesEdit(text, [=, this](bool isAccepted, const std::string& typed) {
        if (isAccepted && !TakeText(item, subitem, typed))
            return false;
        m_report.EndEdit(0, nullptr); // which closes the editor
        if (IsEditing())
            m_report.SetFocus();
        return true;
    });
    return editor->Create(m_report, cell) ? editor->m_hWnd : nullptr;
}

void TableWnd::OnCheckEdit(NMHDR* notification, LRESULT* result)
{
    auto& check = *reinterpret_cast<NMRVEDITCHECK*>(notification);
    try
    {
        m_view.CheckText(check.item, check.text);
    }
    catch (const std::runtime_error& error)
    {
        m_reason = error.what();
        check.reason = m_reason.c_str();
        ShowState(m_reason);
        *result = 1;
    }
}

// What is typed goes into the table, which has the control show it.
void TableWnd::OnEndEdit(NMHDR* notification, LRESULT* result)
{
    const auto& edit = *reinterpret_cast<const _NMRVITEMEDIT*>(notification);
    *result = 1;
    if (edit.key != RVEK_ESCAPE)
        TakeText(edit.item, edit.subitem, edit.text);
}

// False for a text that is refused.
bool TableWnd::TakeText(int item, int subitem, const std::string& text)
{
    try
    {
        m_view.SetText(item, subitem, text);
        ShowState();
        return true;
    }
    catch (const std::runtime_error& error)
    {
        m_view.FillItem(item); // the control may have taken it already
        m_reason = error.what();
        ShowState(m_reason);
        ::MessageBeep(MB_ICONWARNING);
        return false;
    }
}
