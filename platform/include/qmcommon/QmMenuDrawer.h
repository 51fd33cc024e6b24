// Draws the popup menus of a window.
#pragma once

#include "qmcommon/QmHookWnd.h"

#include <memory>
#include <vector>

// Attached to the window that owns popup menus, it draws them while they are open: a column for check marks
// and for the pictures of items that CQmCommandDefineMenu made, where a check mark goes before the picture;
// the caption with its access key, the shortcut at the right edge, in the system's menu font and colours.
// Items keep their texts, and access keys work. Afterwards items are what they were. The window menu, bitmaps
// and items that their owner draws are left alone. While the window is dark (vkgrafic/WindowColors.h) its
// menus are dark, too, and the menu bar is drawn as well.
class QMPLATFORM_API CQmMenuDrawer : public CQmHookWnd
{
public:
    CQmMenuDrawer();
    ~CQmMenuDrawer() override;

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    struct Item; // of an open menu, which carries this record's address as its data

    bool HasDarkBar() const;
    void TakeBar();
    void TakeItems(HMENU menu, bool isBar);
    void AlignCaptions(HMENU menu);
    void GiveBackItems(HMENU menu);
    const Item* FindItem(ULONG_PTR data) const;

    std::vector<std::unique_ptr<Item>> m_items;
};
