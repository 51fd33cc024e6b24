#include "qmcommon/QmCommandMenu.h"

#include "qmcommon/MenuImage.h"
#include "qmcommon/QmCommandShortcut.h"

CQmCommandDefineMenu::CQmCommandDefineMenu(CMenu& menu) : m_menu(menu) {}

void CQmCommandDefineMenu::Add(std::unique_ptr<IQmEntry> entry)
{
    const UINT id = m_nextId++;
    const char* const caption = entry->GetCaption();
    if (!caption || id > kQmLastCommand)
        return;

    if (m_separator)
        m_menu.AppendMenu(MF_SEPARATOR);
    m_separator = false;

    std::string text = caption;
    const std::string shortcut = QmShortcutText(entry->GetKey(), entry->GetModifiers());
    if (!shortcut.empty())
        text += "\t" + shortcut;
    UINT flags = MF_STRING;
    if (entry->IsChecked())
        flags |= MF_CHECKED;
    if (!entry->IsEnabled())
        flags |= MF_GRAYED;
    m_menu.AppendMenu(flags, id, text.c_str());

    MENUITEMINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_DATA;
    info.dwItemData = qmcommon::ImageData(entry->GetImage());
    ::SetMenuItemInfo(m_menu, id, FALSE, &info);
}

void CQmCommandDefineMenu::AddSeparator()
{
    const int count = m_menu.GetMenuItemCount();
    m_separator =
        count > 0 && (m_menu.GetMenuState(static_cast<UINT>(count - 1), MF_BYPOSITION) & MF_SEPARATOR) == 0;
}

CQmCommandDefinePopupMenu::CQmCommandDefinePopupMenu(IQmHandler* handler) : m_handler(handler)
{
    m_menu.CreatePopupMenu();
    CQmCommandDefineMenu filled(m_menu);
    m_handler->Scan(filled);
}

BOOL CQmCommandDefinePopupMenu::Show(CPoint screenPoint, CWnd* owner)
{
    const HWND ownerWindow = owner->GetSafeHwnd();
    const BOOL chosen =
        m_menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, screenPoint.x, screenPoint.y, owner);
    // While the menu was open its owner could be destroyed, and the handler with it.
    if (chosen == 0 || !::IsWindow(ownerWindow))
        return FALSE;
    CQmCommandExecute record(chosen - static_cast<int>(kQmFirstCommand));
    return m_handler->Dispatch(record);
}
