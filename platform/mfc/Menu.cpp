#include "mfc/ThreadState.h"

CMenu::~CMenu()
{
    DestroyMenu();
}

BOOL CMenu::Attach(HMENU menu)
{
    if (!menu)
        return FALSE;
    DestroyMenu();
    m_hMenu = menu;
    GetThreadState().menus.Add(menu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    if (m_hMenu)
        GetThreadState().menus.Remove(m_hMenu, this);
    return std::exchange(m_hMenu, nullptr);
}

CMenu* CMenu::FromHandle(HMENU menu)
{
    if (!menu)
        return nullptr;
    HandleMap<CMenu>& map = GetThreadState().menus;
    if (CMenu* const found = map.Find(menu))
        return found;
    auto made = std::make_unique<CMenu>();
    made->m_hMenu = menu;
    return map.AddTemporary(menu, std::move(made));
}

void CMenu::DeleteTempMap()
{
    GetThreadState().menus.DeleteTemporary();
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* wnd, LPCRECT rect)
{
    return ::TrackPopupMenu(m_hMenu, flags, x, y, 0, wnd->m_hWnd, rect);
}
