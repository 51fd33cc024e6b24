// The system's common dialogs.
#pragma once

#include "afxwin.h"

#include <commdlg.h>

// Where an iteration stands; null before its beginning and after its end.
struct AfxPosition;
using POSITION = AfxPosition*;

// A dialog that the system makes. Its window has no object.
class QMPLATFORM_API CCommonDialog : public CDialog
{
public:
    explicit CCommonDialog(CWnd* parent = nullptr) : m_owner(parent) {}

protected:
    // The window that the dialog disables: the top-level one of the parent, else of the main window.
    HWND OwnerWindow() const;

private:
    CWnd* m_owner;
};

// Asks for a file to open or to save, or for several files.
class QMPLATFORM_API CFileDialog : public CCommonDialog
{
public:
    // `open`       TRUE to open, FALSE to save
    // `extension`  given to a name that is typed without one; null for none
    // `fileName`   what the dialog begins with; null for nothing
    // `flags`      OFN flags. With OFN_ALLOWMULTISELECT give m_ofn a larger buffer of your own.
    // `filter`     pairs of a text and patterns, "Text files (*.txt)|*.txt;*.log|All files|*.*||"
    // `size`       of the OPENFILENAME that m_ofn is taken for; 0 for the system's
    explicit CFileDialog(BOOL open, LPCSTR extension = nullptr, LPCSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR filter = nullptr,
                         CWnd* parent = nullptr, DWORD size = 0);

    // IDOK, or IDCANCEL also if the dialog cannot be made; CommDlgExtendedError tells why.
    INT_PTR DoModal() override;

    // What was chosen, after IDOK; of several files the folder is the path, and the names are had by
    // GetNextPathName.
    CString GetPathName() const;
    CString GetFileName() const;  // without folder
    CString GetFileExt() const;   // without its dot
    CString GetFileTitle() const; // without folder and extension
    BOOL GetReadOnlyPref() const; // whether the read-only box is ticked

    // The chosen files one by one, with their folder: `position` becomes null after the last.
    POSITION GetStartPosition() const;
    CString GetNextPathName(POSITION& position) const;

    // What the system is handed. May be changed before DoModal.
    OPENFILENAME m_ofn = {};

private:
    BOOL m_open;
    CString m_extension;
    std::string m_filter;           // with NULs
    char m_file[4 * MAX_PATH] = {}; // in UTF-8 a letter has up to four bytes
    char m_title[MAX_PATH] = {};
};
