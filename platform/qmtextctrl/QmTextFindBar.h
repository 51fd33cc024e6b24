// The bar at a text window's bottom edge in which the user enters what to find.
#pragma once

#include "afxwin.h"

class CQmTextCtrl;

// A child dialog of the text window, which owns it and gives it its place. Enter finds the next match,
// Shift+Enter the previous one, F3 and Shift+F3 likewise, and Esc closes.
class CQmTextFindBar : public CDialog
{
public:
    explicit CQmTextFindBar(CQmTextCtrl& textCtrl);
    ~CQmTextFindBar() override;

    // Makes the window when there is none; false when that fails. It has a height from now on, but is not
    // shown before it takes the focus.
    bool Open();
    void TakeFocus(const char* text);
    void Close();

    // Pixels; 0 while closed.
    int GetShownHeight() const;

    void ShowFound(bool found);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void OnOK() override;
    void OnCancel() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnPrevious();
    afx_msg void OnTextChange();
    DECLARE_MESSAGE_MAP()

private:
    CQmTextCtrl& m_textCtrl;
    bool m_open = false;
    int m_height = 0;
};
