// Menus.
#pragma once

#include "afx.h"

class CWnd;

// Owns a menu: it is destroyed, submenus and all, with this object unless detached. A menu that a window or
// another menu has taken is theirs: detach it. Positions are counted from 0; the flags MF_BYCOMMAND and
// MF_BYPOSITION say whether an item is named by its id or its position.
class QMPLATFORM_API CMenu : public CObject
{
public:
    CMenu() = default;
    ~CMenu() override;

    BOOL CreateMenu() { return Attach(::CreateMenu()); }
    BOOL CreatePopupMenu() { return Attach(::CreatePopupMenu()); }
    BOOL DestroyMenu() { return m_hMenu && ::DestroyMenu(Detach()); }

    // Takes `menu` over; FALSE when it is null. Detach gives it up without destroying it.
    BOOL Attach(HMENU menu);
    HMENU Detach();

    // Null for a null handle; else the object that owns it, or a temporary one, good until the thread is
    // idle.
    static CMenu* FromHandle(HMENU menu);
    static void DeleteTempMap();

    operator HMENU() const { return m_hMenu; }

    BOOL AppendMenu(UINT flags, UINT_PTR item = 0, LPCSTR text = nullptr)
    {
        return ::AppendMenu(m_hMenu, flags, item, text);
    }
    // Destroys the item's submenu, too.
    BOOL DeleteMenu(UINT item, UINT flags) { return ::DeleteMenu(m_hMenu, item, flags); }

    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(m_hMenu, item, flags); }

    // Shows the menu at a screen point until the user has chosen; the id with TPM_RETURNCMD.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* wnd, LPCRECT rect = nullptr);

    HMENU m_hMenu = nullptr;
};
