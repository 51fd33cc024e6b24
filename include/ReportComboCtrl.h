// A combo box in which a cell of a report control is edited.
#pragma once

#include "QmLogApi.h"
#include "afxwin.h"

class CReportCtrl;

// The control makes one itself for the cells of a subitem that has choices (CReportCtrl::SetSubItemChoices).
// A parent may bring its own in its answer to RVN_BEGINITEMEDIT: made with new and filled, its window in the
// record, and the answer 1. The control primes it with the key, deals with its end as with that of its own
// editor, and closes it; the object goes with its window.
//
// Return and Tab accept, as does the loss of the focus; Esc cancels, and Alt+Down opens the list. Texts are
// UTF-8, or in the system's code page where they are no valid UTF-8.
class QMLOG_API CReportComboCtrl : public CComboBox
{
public:
    CReportComboCtrl() = default;

    // A child of the control, in the rectangle of the cell. `kind` is CBS_DROPDOWN for a text that can be
    // typed, too, or CBS_DROPDOWNLIST for the choices alone. On failure the object is gone.
    BOOL Create(CReportCtrl* control, const RECT& rect, DWORD kind = CBS_DROPDOWN);

    // Adds a choice. With CBS_DROPDOWNLIST, a text that is none of the choices cannot be set.
    void AddChoice(const char* text);
    void SetText(const char* text);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void PostNcDestroy() override { delete this; }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnKillFocus(CWnd* focused);
    DECLARE_MESSAGE_MAP()

private:
    void LoseFocus();

    UINT m_endKey = 0;
};
