// The line in which the text of a cell is edited: a window of UTF-16.
#pragma once

#include "ReportNotify.h"
#include "mfc/Controls.h"

namespace report
{

constexpr UINT kEditorId = 1; // of the control's child windows

// Ends when it loses the focus; Tab, Return and Esc give the focus to the control. It tells the control of
// its end once (RVN_ENDITEMEDIT) and stays until it is closed. Allocated with new: the object goes with its
// window.
class CReportEditCtrl : public CEdit
{
public:
    CReportEditCtrl(int item, int subitem) : m_item(item), m_subitem(subitem) {}

    // A child of the control. On failure the object is gone.
    BOOL Create(const RECT& rect, CWnd& control, HFONT font, const char* text);

    // Ends the edit with a key, 0 for none, unless it has ended. The control may be gone afterwards.
    void End(UINT key);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void PostNcDestroy() override { delete this; }
    afx_msg void OnKillFocus(CWnd* focused);
    afx_msg void OnChar(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()

private:
    int m_item;
    int m_subitem;
    UINT m_endKey = 0;
    bool m_hasEnded = false;
};

} // namespace report
