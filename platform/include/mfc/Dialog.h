// Dialogs, and the exchange of data with their controls.
#pragma once

#include "mfc/Wnd.h"

// A dialog from a template of the resource module. DoModal runs it; Create shows it beside its parent, and
// the keys of a modeless dialog work while the message loop walks PreTranslateMessage.
class QMPLATFORM_API CDialog : public CWnd
{
public:
    CDialog() = default; // for Create
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    explicit CDialog(LPCSTR templateName, CWnd* parent = nullptr);
    ~CDialog() override;

    BOOL Create(UINT templateId, CWnd* parent = nullptr)
    {
        return Create(MAKEINTRESOURCE(templateId), parent);
    }
    BOOL Create(LPCSTR templateName, CWnd* parent = nullptr);

    // The same from a template in memory.
    BOOL CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr);
    BOOL InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr);

    // Runs the dialog over its parent, else the main window, which is disabled meanwhile. What EndDialog was
    // given; -1 when the dialog could not be created.
    virtual INT_PTR DoModal();

    // Ends DoModal; hides the dialog at once, and DoModal destroys it.
    void EndDialog(int result);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // The controls are there. By default fills them by UpdateData. FALSE when it has set the focus.
    virtual BOOL OnInitDialog();
    virtual void OnOK();     // UpdateData, then EndDialog(IDOK)
    virtual void OnCancel(); // EndDialog(IDCANCEL)
    DECLARE_MESSAGE_MAP()

private:
    LRESULT OnInitMessage(WPARAM, LPARAM);
    BOOL CreateWithTemplate(LPCDLGTEMPLATE dialogTemplate, HWND parent);

    LPCSTR m_templateName = nullptr;
    LPCDLGTEMPLATE m_template = nullptr;
    CWnd* m_parent = nullptr;
    bool m_ended = false;
    int m_endResult = -1;
};

// What DoDataExchange hands to the DDX functions.
class QMPLATFORM_API CDataExchange
{
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate);

    // The control; raises the resource exception when there is none. The edit one also is the place where
    // Fail puts the focus.
    HWND PrepareCtrl(int id);
    HWND PrepareEditCtrl(int id);

    // Puts the focus on the control that was prepared last and raises the user exception.
    [[noreturn]] void Fail();

    CWnd* m_pDlgWnd;
    BOOL m_bSaveAndValidate; // TRUE from the controls into the members

private:
    HWND m_control = nullptr;
    bool m_edit = false;
};

// Each moves one value, in the direction of the exchange.
QMPLATFORM_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control); // subclasses it once
QMPLATFORM_API void DDX_Text(CDataExchange* exchange, int id, CString& value);
QMPLATFORM_API void DDX_Text(CDataExchange* exchange, int id, LPSTR value, int size); // cut to fit
QMPLATFORM_API void DDX_Text(CDataExchange* exchange, int id, int& value); // tells the user what is no number
QMPLATFORM_API void DDX_CBString(CDataExchange* exchange, int id,
                                 CString& value); // of a list: the whole text

// `id` is the first radio button of a group; `value` is the position of the one that is chosen, -1 for none.
QMPLATFORM_API void DDX_Radio(CDataExchange* exchange, int id, int& value);
QMPLATFORM_API void DDX_Check(CDataExchange* exchange, int id, int& value);
