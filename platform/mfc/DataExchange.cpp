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
