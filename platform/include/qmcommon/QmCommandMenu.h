// Menus made of a handler's commands.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmCommand.h"

// The command ids of menu items: the first one stands for the first entry of a scan, and so on. Hidden
// entries have an id too, so that an item keeps its own while others hide. They are the library's: a host
// gives its own commands other ids. Entries beyond the last id are not shown.
constexpr UINT kQmFirstCommand = 0xC000;
constexpr UINT kQmLastCommand = 0xCFFF;

// Adds one scan to the end of a menu: captions with their shortcuts, check marks, disabled items greyed, and
// the names of pictures, which CQmMenuDrawer draws. Two separators are never neighbours, and none is the
// menu's first or last item.
class QMPLATFORM_API CQmCommandDefineMenu : public IQmCommand
{
public:
    // `menu` is not owned and outlives this object.
    explicit CQmCommandDefineMenu(CMenu& menu);

    void Add(std::unique_ptr<IQmEntry> entry) override;
    void AddSeparator() override;

private:
    CMenu& m_menu;
    UINT m_nextId = kQmFirstCommand;
    bool m_separator = false; // one is due before the next item
};

// The popup menu of a handler's commands.
class QMPLATFORM_API CQmCommandDefinePopupMenu
{
public:
    // Fills the menu by a scan of `handler`, which is not owned.
    explicit CQmCommandDefinePopupMenu(IQmHandler* handler);

    CMenu& GetMenu() { return m_menu; }

    // Shows the menu at a screen point until the user has chosen or not, and executes what was chosen.
    // `owner` takes the menu's messages. TRUE when a command was executed: it may have destroyed owner and
    // handler.
    BOOL Show(CPoint screenPoint, CWnd* owner);

private:
    IQmHandler* m_handler;
    CMenu m_menu;
};
