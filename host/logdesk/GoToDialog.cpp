#include "logdesk/GoToDialog.h"

#include "logdesk/Resource.h"
#include "qmcommon/QmWindowText.h"

namespace logdesk
{

GoToDialog::GoToDialog(CWnd* parent, std::string& text, Go go)
    : CDialog(IDD_GO_TO, parent), m_text(text), m_go(std::move(go))
{
}

BOOL GoToDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    CWnd* const field = GetDlgItem(IDC_GO_TO_TEXT);
    QmSetWindowText(field->GetSafeHwnd(), m_text);
    field->SendMessage(EM_SETSEL, 0, -1);
    field->SetFocus();
    return FALSE;
}

void GoToDialog::OnOK()
{
    CWnd* const field = GetDlgItem(IDC_GO_TO_TEXT);
    const std::string text = QmGetWindowText(field->GetSafeHwnd());
    const std::string error = m_go(text);
    if (error.empty())
    {
        m_text = text;
        EndDialog(IDOK);
        return;
    }
    QmSetWindowText(GetDlgItem(IDC_GO_TO_ERROR)->GetSafeHwnd(), error);
    field->SendMessage(EM_SETSEL, 0, -1);
    field->SetFocus();
}

} // namespace logdesk
