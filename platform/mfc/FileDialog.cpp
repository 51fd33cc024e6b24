#include "afxdlgs.h"

#include <algorithm>
#include <cstring>

HWND CCommonDialog::OwnerWindow() const
{
    CWnd* const owner = m_owner ? m_owner : AfxGetMainWnd();
    return owner && owner->m_hWnd ? ::GetAncestor(owner->m_hWnd, GA_ROOT) : nullptr;
}

CFileDialog::CFileDialog(BOOL open, LPCSTR extension, LPCSTR fileName, DWORD flags, LPCSTR filter,
                         CWnd* parent, DWORD size)
    : CCommonDialog(parent), m_open(open), m_extension(extension)
{
    if (fileName)
        std::strncpy(m_file, fileName, sizeof(m_file) - 1);
    if (filter)
    {
        m_filter = filter;
        std::replace(m_filter.begin(), m_filter.end(), '|', '\0');
        m_filter.append(2, '\0'); // also where the last bars are missing
    }
    m_ofn.lStructSize = size != 0 ? size : sizeof(m_ofn);
    m_ofn.lpstrFile = m_file;
    m_ofn.nMaxFile = sizeof(m_file);
    m_ofn.lpstrFileTitle = m_title;
    m_ofn.nMaxFileTitle = sizeof(m_title);
    m_ofn.lpstrDefExt = extension ? static_cast<LPCSTR>(m_extension) : nullptr;
    m_ofn.lpstrFilter = filter ? m_filter.c_str() : nullptr;
    m_ofn.Flags = flags | OFN_EXPLORER | OFN_ENABLESIZING;
}

INT_PTR CFileDialog::DoModal()
{
    if (!m_ofn.hwndOwner)
        m_ofn.hwndOwner = OwnerWindow();
    const BOOL chosen = m_open ? ::GetOpenFileName(&m_ofn) : ::GetSaveFileName(&m_ofn);
    return chosen ? IDOK : IDCANCEL;
}

CString CFileDialog::GetPathName() const
{
    return m_ofn.lpstrFile;
}

CString CFileDialog::GetFileName() const
{
    const char* const path = m_ofn.lpstrFile;
    const char* const folder = std::strrchr(path, '\\');
    return folder ? folder + 1 : path;
}

CString CFileDialog::GetFileExt() const
{
    const CString name = GetFileName();
    const char* const dot = std::strrchr(name, '.');
    return dot ? dot + 1 : "";
}

CString CFileDialog::GetFileTitle() const
{
    const std::string name = static_cast<LPCSTR>(GetFileName());
    return name.substr(0, name.rfind('.')).c_str();
}

BOOL CFileDialog::GetReadOnlyPref() const
{
    return (m_ofn.Flags & OFN_READONLY) != 0;
}

// A position is the place of a name in the buffer, counted from 1. Several files are their folder and their
// names, each ended by a NUL and all by another one; one file is its path.
POSITION CFileDialog::GetStartPosition() const
{
    return *m_ofn.lpstrFile ? reinterpret_cast<POSITION>(INT_PTR{1}) : nullptr;
}

CString CFileDialog::GetNextPathName(POSITION& position) const
{
    const char* const begin = m_ofn.lpstrFile;
    const char* const afterFolder = begin + std::strlen(begin) + 1;
    const bool several = (m_ofn.Flags & OFN_ALLOWMULTISELECT) != 0 && *afterFolder != '\0';
    if (!several)
    {
        position = nullptr;
        return begin;
    }
    const INT_PTR place = reinterpret_cast<INT_PTR>(position) - 1;
    const char* const name = place == 0 ? afterFolder : begin + place;
    const char* const next = name + std::strlen(name) + 1;
    position = *next ? reinterpret_cast<POSITION>(next - begin + 1) : nullptr;
    std::string path = begin;
    if (!path.ends_with('\\')) // a drive's has one
        path += '\\';
    return (path + name).c_str();
}
