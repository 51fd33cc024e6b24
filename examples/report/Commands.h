// The commands of the windows, and the menus and keys that give them.
#pragma once

#include <ReportCtrl.h>

#include <iterator>

enum Command : UINT
{
    kSaveCommand = 100,
    kSaveAsCommand,
    kCloseCommand,
    kUndoCommand,
    kRedoCommand,
    kCopyCommand,
    kInsertRowCommand,
    kDeleteRowsCommand,
    kSelectAllCommand,
    kHiddenListCommand,
    kFirstStyleCommand
};

// The items of the menu "View" that switch styles of the control.
struct StyleSwitch
{
    const char* caption;
    DWORD styles;
};
inline constexpr StyleSwitch kSwitches[] = {{"&Grid Lines", RVS_HORIZONTALGRID | RVS_VERTICALGRID},
                                            {"&Alternating Rows", RVS_ALTERNATEROWS},
                                            {"Cell &Focus", RVS_CELLFOCUS}};
inline constexpr UINT kLastStyleCommand = kFirstStyleCommand + static_cast<UINT>(std::size(kSwitches)) - 1;

// Whether the window's rows are shown or edited, too.
enum class Use
{
    Show,
    Edit
};

// The menu bar, which the caller owns, and the menu of a right click.
HMENU MakeMenuBar(Use use);
void FillContextMenu(CMenu& menu, Use use);

// Turns keys into the commands of editing. While a cell is edited, most keys belong to its editor.
enum class Focus
{
    InRows,
    InEditor
};
bool TranslateEditKey(HWND wnd, MSG* message, Focus focus);
