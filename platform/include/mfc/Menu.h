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

    HMENU GetSafeHmenu() const { return m_hMenu; }
    operator HMENU() const { return m_hMenu; }

    BOOL AppendMenu(UINT flags, UINT_PTR item = 0, LPCSTR text = nullptr)
    {
        return ::AppendMenu(m_hMenu, flags, item, text);
    }
    BOOL InsertMenuItem(UINT item, MENUITEMINFO* info, BOOL byPosition = FALSE)
    {
        return ::InsertMenuItem(m_hMenu, item, byPosition, info);
    }
    BOOL GetMenuItemInfo(UINT item, MENUITEMINFO* info, BOOL byPosition = FALSE)
    {
        return ::GetMenuItemInfo(m_hMenu, item, byPosition, info);
    }
    BOOL SetMenuItemInfo(UINT item, MENUITEMINFO* info, BOOL byPosition = FALSE)
    {
        return ::SetMenuItemInfo(m_hMenu, item, byPosition, info);
    }
    // DeleteMenu destroys the item's submenu, RemoveMenu leaves it to its owner.
    BOOL DeleteMenu(UINT item, UINT flags) { return ::DeleteMenu(m_hMenu, item, flags); }
    BOOL RemoveMenu(UINT item, UINT flags) { return ::RemoveMenu(m_hMenu, item, flags); }

    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
    UINT GetMenuItemID(int position) const { return ::GetMenuItemID(m_hMenu, position); }
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(m_hMenu, item, flags); }
    int GetMenuString(UINT item, LPSTR text, int size, UINT flags) const
    {
        return ::GetMenuString(m_hMenu, item, text, size, flags);
    }
    CMenu* GetSubMenu(int position) const { return FromHandle(::GetSubMenu(m_hMenu, position)); }

    UINT CheckMenuItem(UINT item, UINT check) { return ::CheckMenuItem(m_hMenu, item, check); }
    UINT EnableMenuItem(UINT item, UINT enable)
    {
        return static_cast<UINT>(::EnableMenuItem(m_hMenu, item, enable));
    }

    // Shows the menu at a screen point until the user has chosen; the id with TPM_RETURNCMD.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* wnd, LPCRECT rect = nullptr);

    HMENU m_hMenu = nullptr;
};
