#include "mfc/WndCall.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_MESSAGE(WM_INITDIALOG, &ThisClass::OnInitMessage)
    ON_COMMAND(IDOK, &ThisClass::OnOK)
    ON_COMMAND(IDCANCEL, &ThisClass::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog(UINT templateId, CWnd* parent) : CDialog(MAKEINTRESOURCE(templateId), parent) {}

CDialog::CDialog(LPCSTR templateName, CWnd* parent) : m_templateName(templateName), m_parent(parent) {}

CDialog::~CDialog()
{
    CDialog::DestroyWindow(); // while it still is a dialog
}

// The template as it lies in the module; null when there is none.
static LPCDLGTEMPLATE FindTemplate(LPCSTR name)
{
    const HINSTANCE module = AfxGetResourceHandle();
    const HRSRC resource = ::FindResource(module, name, RT_DIALOG);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    return data ? static_cast<LPCDLGTEMPLATE>(::LockResource(data)) : nullptr;
}

BOOL CDialog::Create(LPCSTR templateName, CWnd* parent)
{
    return CreateIndirect(FindTemplate(templateName), parent);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent)
{
    return CreateWithTemplate(dialogTemplate, HandleOf(parent ? parent : AfxGetMainWnd()));
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent)
{
    m_template = dialogTemplate;
    m_parent = parent;
    return dialogTemplate != nullptr;
}

// Everything comes by the window procedure. An exception would have to pass through the system's frames to
// leave a dialog procedure.
static INT_PTR CALLBACK DialogProc(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

LRESULT CDialog::OnInitMessage(WPARAM, LPARAM)
{
    return OnInitDialog();
}

BOOL CDialog::CreateWithTemplate(LPCDLGTEMPLATE dialogTemplate, HWND parent)
{
    if (m_hWnd)
        return FALSE; // and lives on
    HWND hwnd = nullptr;
    bool hasSeenWindow = false;
    if (dialogTemplate)
    {
        const CreationHook hook(*this);
        hwnd = ::CreateDialogIndirectParam(AfxGetResourceHandle(), dialogTemplate, parent, &DialogProc, 0);
        hasSeenWindow = hook.HasSeenWindow();
    }
    if (!hasSeenWindow)
        PostNcDestroy();
    return hwnd != nullptr;
}

INT_PTR CDialog::DoModal()
{
    CWnd* const parent = m_parent ? m_parent : AfxGetMainWnd();
    const HWND owner = parent ? ::GetAncestor(parent->m_hWnd, GA_ROOT) : ::GetActiveWindow();
    const bool disable = owner && ::IsWindowEnabled(owner);
    if (disable)
        ::EnableWindow(owner, FALSE);

    INT_PTR result = -1;
    m_ended = false;
    if (CreateWithTemplate(m_template ? m_template : FindTemplate(m_templateName), owner))
    {
        if (!m_ended) // by OnInitDialog
        {
            ShowWindow(SW_SHOW);
            m_endResult = RunModalLoop();
        }
        result = m_endResult;
    }

    // Enabled again before the dialog goes, or another program's window would become the active one.
    if (disable)
        ::EnableWindow(owner, TRUE);
    if (m_hWnd && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(owner);
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int result)
{
    m_ended = true;
    m_endResult = result;
    // Without giving up its activation, which would go to any window but the disabled owner.
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                   SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EndModalLoop(result);
}

BOOL CDialog::PreTranslateMessage(MSG* message)
{
    const bool key = message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST;
    return key && ::IsDialogMessageW(m_hWnd, message);
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}
