// The line in which the text of a cell is edited: a window of UTF-16.
#pragma once

#include "mfc/Controls.h"

namespace report
{

// Ends when it loses the focus; Tab, Return and Esc give the focus to the control. It stays until it is
// closed. Allocated with new: the object goes with its window.
class CReportEditCtrl : public CEdit
{
public:
    // `typesC`: the letter C can be typed, and Ctrl+C copies; else the key C copies.
    CReportEditCtrl(int item, int subitem, bool typesC) : m_item(item), m_subitem(subitem), m_typesC(typesC)
    {
    }

    // A child of the control. On failure the object is gone.
    BOOL Create(const RECT& rect, CWnd& control);

    int GetItem() const { return m_item; }
    int GetSubItem() const { return m_subitem; }

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void PostNcDestroy() override { delete this; }
    afx_msg void OnKillFocus(CWnd* focused);
    afx_msg void OnChar(UINT key, UINT repeat, UINT flags);
    DECLARE_MESSAGE_MAP()

private:
    int m_item;
    int m_subitem;
    bool m_typesC;
    UINT m_endKey = 0;
};

} // namespace report
