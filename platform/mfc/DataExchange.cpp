#include "afxwin.h"

BOOL CWnd::UpdateData(BOOL saveAndValidate)
{
    CDataExchange exchange(this, saveAndValidate);
    try
    {
        DoDataExchange(&exchange);
        return TRUE;
    }
    catch (CUserException* exception)
    {
        exception->Delete();
        return FALSE;
    }
}

void CWnd::DoDataExchange(CDataExchange*) {}

CDataExchange::CDataExchange(CWnd* dialog, BOOL saveAndValidate)
    : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate)
{
}

HWND CDataExchange::PrepareCtrl(int id)
{
    m_control = ::GetDlgItem(m_pDlgWnd->m_hWnd, id);
    m_edit = false;
    if (!m_control)
        AfxThrowResourceException();
    return m_control;
}

HWND CDataExchange::PrepareEditCtrl(int id)
{
    PrepareCtrl(id);
    m_edit = true;
    return m_control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_control)
    {
        ::SetFocus(m_control);
        if (m_edit)
            ::SendMessage(m_control, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control)
{
    if (!control.m_hWnd && !control.SubclassWindow(exchange->PrepareCtrl(id)))
        AfxThrowResourceException();
}

void DDX_Text(CDataExchange* exchange, int id, CString& value)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate)
        CWnd::FromHandle(control)->GetWindowText(value);
    else
        ::SetWindowText(control, value);
}

void DDX_Text(CDataExchange* exchange, int id, LPSTR value, int size)
{
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate)
        ::GetWindowText(control, value, size);
    else
        ::SetWindowText(control, value);
}

void DDX_Text(CDataExchange* exchange, int id, int& value)
{
    exchange->PrepareEditCtrl(id);
    const HWND dialog = exchange->m_pDlgWnd->m_hWnd;
    if (!exchange->m_bSaveAndValidate)
    {
        ::SetDlgItemInt(dialog, id, static_cast<UINT>(value), TRUE);
        return;
    }
    BOOL valid = FALSE;
    const UINT number = ::GetDlgItemInt(dialog, id, &valid, TRUE);
    if (!valid)
    {
        AfxMessageBox("Please enter an integer.");
        exchange->Fail();
    }
    value = static_cast<int>(number);
}

void DDX_Check(CDataExchange* exchange, int id, int& value)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessage(control, BM_GETCHECK, 0, 0));
    else
        ::SendMessage(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_CBString(CDataExchange* exchange, int id, CString& value)
{
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
    {
        CWnd::FromHandle(control)->GetWindowText(value);
        return;
    }
    const auto text = reinterpret_cast<LPARAM>(static_cast<LPCSTR>(value));
    const LRESULT found = ::SendMessage(control, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text);
    ::SendMessage(control, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
    if (found < 0)
        ::SetWindowText(control, value); // where it can be typed
}

// The group goes from the button to the next control that begins one.
void DDX_Radio(CDataExchange* exchange, int id, int& value)
{
    HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        value = -1;
    int position = 0;
    do
    {
        if (::SendMessage(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON)
        {
            if (!exchange->m_bSaveAndValidate)
                ::SendMessage(control, BM_SETCHECK, position == value, 0);
            else if (::SendMessage(control, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = position;
            ++position;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control && !(::GetWindowLong(control, GWL_STYLE) & WS_GROUP));
}
