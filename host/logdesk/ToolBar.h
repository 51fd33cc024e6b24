// The bar of buttons below the menu.
#pragma once

#include "afxcmn.h"
#include "logdesk/Tools.h"

namespace logdesk
{

// One button for each of Tools(). A click is a command message to the parent, with the first command's number
// plus that of the tool. The system's control: the mouse alone uses it, and every command is in a menu, too.
class ToolBar : public CWnd
{
public:
    ~ToolBar() override;

    // Visible at once if `show` says so.
    BOOL Create(CWnd* parent, UINT id, UINT firstCommand, bool show);

    // For the parent's NM_CUSTOMDRAW: the system draws buttons for light windows.
    static LRESULT Draw(const NMTBCUSTOMDRAW& draw);

    // In the size that the display wants now.
    bool LoadImages();

    // Paints only buttons that look different from before.
    void SetStates(const std::vector<ToolState>& states);

    bool IsShown() { return (GetStyle() & WS_VISIBLE) != 0; }
    int GetHeight(); // 0 while it is hidden

    // Pixels at which all buttons show; 0 while it is hidden.
    int GetLeastWidth();

protected:
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    DECLARE_MESSAGE_MAP()

private:
    void AddButtons();
    void SetTip(std::size_t tool, std::string tip);

    UINT m_firstCommand = 0;
    CImageList m_images;
    CImageList m_disabledImages;
    std::vector<ToolState> m_states;
};

} // namespace logdesk
