#include "Commands.h"

namespace
{

void FillFileMenu(CMenu& menu, Use use)
{
    if (use == Use::Edit)
    {
        menu.AppendMenu(MF_STRING, kSaveCommand, "&Save\tCtrl+S");
        menu.AppendMenu(MF_STRING, kSaveAsCommand, "Save &As...");
        menu.AppendMenu(MF_SEPARATOR);
    }
    menu.AppendMenu(MF_STRING, kCloseCommand, "&Close\tAlt+F4");
}

void FillEditMenu(CMenu& menu, Use use)
{
    if (use == Use::Edit)
    {
        menu.AppendMenu(MF_STRING, kUndoCommand, "&Undo\tCtrl+Z");
        menu.AppendMenu(MF_STRING, kRedoCommand, "&Redo\tCtrl+Y");
        menu.AppendMenu(MF_SEPARATOR);
        menu.AppendMenu(MF_STRING, kInsertRowCommand, "&Insert Row\tIns");
        menu.AppendMenu(MF_STRING, kDeleteRowsCommand, "&Delete Rows\tDel");
        menu.AppendMenu(MF_SEPARATOR);
    }
    menu.AppendMenu(MF_STRING, kCopyCommand, "&Copy\tCtrl+C");
    menu.AppendMenu(MF_STRING, kSelectAllCommand, "&Select All\tCtrl+A");
}

void FillViewMenu(CMenu& menu)
{
    UINT id = kFirstStyleCommand;
    for (const StyleSwitch& item : kSwitches)
        menu.AppendMenu(MF_STRING, id++, item.caption);
    menu.AppendMenu(MF_STRING, kHiddenListCommand, "&Hidden Columns");
}

template <typename Fill> void AddMenu(CMenu& bar, const char* caption, Fill fill)
{
    CMenu menu;
    menu.CreatePopupMenu();
    fill(menu);
    bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(menu.Detach()), caption);
}

} // namespace

HMENU MakeMenuBar(Use use)
{
    CMenu bar;
    bar.CreateMenu();
    AddMenu(bar, "&File", [use](CMenu& menu) { FillFileMenu(menu, use); });
    AddMenu(bar, "&Edit", [use](CMenu& menu) { FillEditMenu(menu, use); });
    AddMenu(bar, "&View", FillViewMenu);
    return bar.Detach();
}

void FillContextMenu(CMenu& menu, Use use)
{
    menu.CreatePopupMenu();
    FillEditMenu(menu, use);
    menu.AppendMenu(MF_SEPARATOR);
    FillViewMenu(menu);
}

bool TranslateEditKey(HWND wnd, MSG* message, Focus focus)
{
    static ACCEL keys[] = {
        {FVIRTKEY | FCONTROL, 'S', kSaveCommand},  {FVIRTKEY | FCONTROL, 'Z', kUndoCommand},
        {FVIRTKEY | FCONTROL, 'Y', kRedoCommand},  {FVIRTKEY, VK_INSERT, kInsertRowCommand},
        {FVIRTKEY, VK_DELETE, kDeleteRowsCommand},
    };
    static const HACCEL inRows = ::CreateAcceleratorTable(keys, static_cast<int>(std::size(keys)));
    static const HACCEL inEditor = ::CreateAcceleratorTable(keys, 1);
    return ::TranslateAccelerator(wnd, focus == Focus::InRows ? inRows : inEditor, message) != 0;
}
