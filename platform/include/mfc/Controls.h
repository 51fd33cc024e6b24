// The system's plain controls.
#pragma once

#include "mfc/Wnd.h"

// A field for text.
class QMPLATFORM_API CEdit : public CWnd
{
public:
    using CWnd::Create;
    // A child of `parent`; FALSE on failure.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
};

// A push button, check box or radio button.
class QMPLATFORM_API CButton : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCheck() const { return static_cast<int>(::SendMessage(m_hWnd, BM_GETCHECK, 0, 0)); }
    void SetCheck(int check) { ::SendMessage(m_hWnd, BM_SETCHECK, static_cast<WPARAM>(check), 0); }

    // BST_PUSHED and the like.
    UINT GetState() const { return static_cast<UINT>(::SendMessage(m_hWnd, BM_GETSTATE, 0, 0)); }
    void SetState(BOOL pushed) { ::SendMessage(m_hWnd, BM_SETSTATE, static_cast<WPARAM>(pushed), 0); }
    UINT GetButtonStyle() const
    {
        return static_cast<UINT>(::GetWindowLong(m_hWnd, GWL_STYLE)) & BS_TYPEMASK;
    }
    void SetButtonStyle(UINT style, BOOL redraw = TRUE)
    {
        ::SendMessage(m_hWnd, BM_SETSTYLE, style, MAKELPARAM(redraw, 0));
    }

    // Answers the icon before. Not owned.
    HICON SetIcon(HICON icon)
    {
        return reinterpret_cast<HICON>(
            ::SendMessage(m_hWnd, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon)));
    }
    HICON GetIcon() const
    {
        return reinterpret_cast<HICON>(::SendMessage(m_hWnd, BM_GETIMAGE, IMAGE_ICON, 0));
    }
};

// A list to choose from. Positions count from 0; answers are negative on failure (CB_ERR, CB_ERRSPACE).
class QMPLATFORM_API CComboBox : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCount() const { return Send(CB_GETCOUNT); }
    int AddString(LPCSTR text) { return Send(CB_ADDSTRING, 0, text); }
    int InsertString(int index, LPCSTR text) { return Send(CB_INSERTSTRING, index, text); }
    int DeleteString(UINT index) { return Send(CB_DELETESTRING, static_cast<int>(index)); }
    void ResetContent() { Send(CB_RESETCONTENT); }

    int GetCurSel() const { return Send(CB_GETCURSEL); }
    int SetCurSel(int index) { return Send(CB_SETCURSEL, index); }

    // Search after `after`, then from the beginning, without case: for a text that begins so, which the first
    // of them selects, and for the whole text.
    int SelectString(int after, LPCSTR text) { return Send(CB_SELECTSTRING, after, text); }
    int FindStringExact(int after, LPCSTR text) const { return Send(CB_FINDSTRINGEXACT, after, text); }

    int GetLBTextLen(int index) const { return Send(CB_GETLBTEXTLEN, index); }
    void GetLBText(int index, CString& text) const; // raises the invalid-argument exception for no entry

    DWORD_PTR GetItemData(int index) const
    {
        return static_cast<DWORD_PTR>(::SendMessage(m_hWnd, CB_GETITEMDATA, static_cast<WPARAM>(index), 0));
    }
    int SetItemData(int index, DWORD_PTR data)
    {
        return static_cast<int>(
            ::SendMessage(m_hWnd, CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
    }

    void ShowDropDown(BOOL show = TRUE) { Send(CB_SHOWDROPDOWN, show); }
    BOOL GetDroppedState() const { return Send(CB_GETDROPPEDSTATE); }

private:
    int Send(UINT message, int wParam = 0, LPCSTR text = nullptr) const
    {
        return static_cast<int>(
            ::SendMessage(m_hWnd, message, static_cast<WPARAM>(wParam), reinterpret_cast<LPARAM>(text)));
    }
};

// A list of texts. Positions count from 0; answers are negative on failure (LB_ERR, LB_ERRSPACE).
class QMPLATFORM_API CListBox : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCount() const { return Send(LB_GETCOUNT); }
    int AddString(LPCSTR text) { return Send(LB_ADDSTRING, 0, text); }
    int InsertString(int index, LPCSTR text) { return Send(LB_INSERTSTRING, index, text); }
    int DeleteString(UINT index) { return Send(LB_DELETESTRING, static_cast<int>(index)); }
    void ResetContent() { Send(LB_RESETCONTENT); }

    int GetCurSel() const { return Send(LB_GETCURSEL); }
    int SetCurSel(int index) { return Send(LB_SETCURSEL, index); }
    int FindStringExact(int after, LPCSTR text) const { return Send(LB_FINDSTRINGEXACT, after, text); }

    int GetTextLen(int index) const { return Send(LB_GETTEXTLEN, index); }
    void GetText(int index, CString& text) const; // raises the invalid-argument exception for no entry

    DWORD_PTR GetItemData(int index) const
    {
        return static_cast<DWORD_PTR>(::SendMessage(m_hWnd, LB_GETITEMDATA, static_cast<WPARAM>(index), 0));
    }
    int SetItemData(int index, DWORD_PTR data)
    {
        return static_cast<int>(
            ::SendMessage(m_hWnd, LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
    }

private:
    int Send(UINT message, int wParam = 0, LPCSTR text = nullptr) const
    {
        return static_cast<int>(
            ::SendMessage(m_hWnd, message, static_cast<WPARAM>(wParam), reinterpret_cast<LPARAM>(text)));
    }
};

// OnHScroll and OnVScroll get it for a scroll bar control with an object of its own, else null.
class QMPLATFORM_API CScrollBar : public CWnd
{
};
