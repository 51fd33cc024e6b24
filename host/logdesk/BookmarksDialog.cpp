#include "logdesk/BookmarksDialog.h"

#include "logdesk/Resource.h"

namespace logdesk
{

BEGIN_MESSAGE_MAP(BookmarksDialog, CDialog)
    ON_COMMAND(IDC_BOOKMARK_REMOVE, &BookmarksDialog::OnRemove)
    ON_COMMAND(IDC_BOOKMARK_REMOVE_ALL, &BookmarksDialog::OnRemoveAll)
    ON_CONTROL(LBN_DBLCLK, IDC_BOOKMARKS, &BookmarksDialog::OnOK)
END_MESSAGE_MAP()

BookmarksDialog::BookmarksDialog(CWnd* parent, std::vector<Line> lines,
                                 std::function<void(std::uint32_t)> remove)
    : CDialog(IDD_BOOKMARKS, parent), m_lines(std::move(lines)), m_remove(std::move(remove))
{
}

BOOL BookmarksDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    for (const Line& line : m_lines)
        SendList(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.text.c_str()));
    SendList(LB_SETCURSEL, 0);
    EnableButtons();
    GetDlgItem(IDC_BOOKMARKS)->SetFocus();
    return FALSE;
}

void BookmarksDialog::OnOK()
{
    const LRESULT at = SendList(LB_GETCURSEL);
    if (at < 0)
        return;
    m_chosen = m_lines[static_cast<std::size_t>(at)].number;
    EndDialog(IDOK);
}

// The one after it is selected then, or else the last one.
void BookmarksDialog::OnRemove()
{
    const LRESULT at = SendList(LB_GETCURSEL);
    if (at < 0)
        return;
    m_remove(m_lines[static_cast<std::size_t>(at)].number);
    m_lines.erase(m_lines.begin() + at);
    SendList(LB_DELETESTRING, static_cast<WPARAM>(at));
    if (SendList(LB_SETCURSEL, static_cast<WPARAM>(at)) == LB_ERR && !m_lines.empty())
        SendList(LB_SETCURSEL, m_lines.size() - 1);
    EnableButtons();
}

void BookmarksDialog::OnRemoveAll()
{
    for (const Line& line : m_lines)
        m_remove(line.number);
    m_lines.clear();
    SendList(LB_RESETCONTENT);
    EnableButtons();
}

LRESULT BookmarksDialog::SendList(UINT message, WPARAM wParam, LPARAM lParam)
{
    return GetDlgItem(IDC_BOOKMARKS)->SendMessage(message, wParam, lParam);
}

// A button with the focus hands it to the one that closes.
void BookmarksDialog::EnableButtons()
{
    if (m_lines.empty())
        GetDlgItem(IDCANCEL)->SetFocus();
    for (const int id : {IDOK, IDC_BOOKMARK_REMOVE, IDC_BOOKMARK_REMOVE_ALL})
        GetDlgItem(id)->EnableWindow(!m_lines.empty());
}

} // namespace logdesk
