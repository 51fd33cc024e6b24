// The notifications of the report control, and the records that they carry.
#pragma once

#include "ReportItem.h"
#include "afxwin.h"

// Codes of notifications. All but RVN_ITEMDRAWPREVIEW and RVN_ITEMCALLBACK go to the parent as WM_NOTIFY. A
// non-zero answer to an input cancels what the control would do.
constexpr UINT RVN_ITEMDRAWPREVIEW = static_cast<UINT>(-2048); // only to OnRvnItemDrawPreviewBypass
constexpr UINT RVN_ITEMCLICK = static_cast<UINT>(-2049);
constexpr UINT RVN_ITEMDBLCLICK = static_cast<UINT>(-2050);
constexpr UINT RVN_COLUMNCLICK = static_cast<UINT>(-2053);
constexpr UINT RVN_COLUMNCHANGED = static_cast<UINT>(-2054);
constexpr UINT RVN_ITEMCALLBACK = static_cast<UINT>(-2056); // only to OnRvnItemCallbackBypass
constexpr UINT RVN_BEGINITEMEDIT = static_cast<UINT>(-2057);
constexpr UINT RVN_ENDITEMEDIT = static_cast<UINT>(-2058);
constexpr UINT RVN_KEYDOWN = static_cast<UINT>(-2059);
constexpr UINT RVN_DIVIDERDBLCLICK = static_cast<UINT>(-2060);
constexpr UINT RVN_ITEMRCLICK = static_cast<UINT>(-2061);
constexpr UINT RVN_EDITTEXT = static_cast<UINT>(-2062);
constexpr UINT RVN_ITEMDRAW = static_cast<UINT>(-2063);
constexpr UINT RVN_HEADERRCLICK = static_cast<UINT>(-2066);
constexpr UINT RVN_CHECKITEMEDIT = static_cast<UINT>(-2070); // only with RVED_CHECK

// What lies at a point: HitTest fills all but `pt`.
struct _RVHITTESTINFO
{
    POINT pt;            // in client coordinates
    UINT flags;          // RVHT_*
    _TREEITEM* treeItem; // null without a tree style
    int item;            // RVI_NONE for none, RVI_DEFAULT for the fixed row
    int subitem;         // -1 for none
    int row;             // RVI_NONE for none, -1 for the fixed row
    int column;          // in display order; -1 for none
    RECT rect;           // of the part that was hit
};
static_assert(sizeof(void*) != 8 || sizeof(_RVHITTESTINFO) == 56);

// A notification about a row. Fields that its sender does not fill are zero.
struct _NMREPORTVIEW
{
    NMHDR hdr;
    UINT keys;   // the keys of the mouse message, or the key of RVN_KEYDOWN
    POINT point; // in client coordinates
    UINT flags;  // RVHT_*
    _TREEITEM* treeItem;
    int item;
    int subitem;
    UINT value;
    __int64 itemData;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMREPORTVIEW) == 72);

// A notification about a column.
struct _NMRVHEADER
{
    NMHDR hdr;
    int subitem;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVHEADER) == 32);

// RVN_ITEMCALLBACK: `item` says what is asked for, and takes the answer.
struct _NMRVITEMCALLBACK
{
    NMHDR hdr;
    _RVITEM item;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVITEMCALLBACK) == 96);

// RVN_BEGINITEMEDIT, RVN_ENDITEMEDIT and RVN_EDITTEXT. A non-zero answer to the first says that the parent
// deals with the edit; it puts the window of its editor into the record, if it has one, and ends it by
// EndEdit. After a non-zero answer to the second, nothing is written back. The third is sent whenever the
// user has changed the text in the editor; after a non-zero answer the editor takes the text that the parent
// has put into the record, with the caret at its end.
struct _NMRVITEMEDIT
{
    NMHDR hdr;
    int item;
    int subitem;
    HWND editor;      // null at the beginning
    RECT rect;        // of the cell, at the beginning
    UINT key;         // that has begun or ended it (RVEK_*); 0 for the focus that was lost
    const char* text; // of the cell, null if it has none; at the end that of the editor
    int extra;        // of the cell, at the beginning
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVITEMEDIT) == 80);

// RVN_CHECKITEMEDIT: whether `text` may become the text of the cell. A non-zero answer refuses it: the editor
// stays open, and shows `reason` if the parent has put a text there, which stays valid until the next
// message. If the cell moves or goes, the edit is cancelled.
struct NMRVEDITCHECK
{
    NMHDR hdr;
    int item;
    int subitem;
    const char* text;
    const char* reason; // null at first
};
static_assert(sizeof(void*) != 8 || sizeof(NMRVEDITCHECK) == 48);

// RVN_ITEMDRAW: an owner-drawn cell is about to be painted in `rect`; after a non-zero answer the control
// draws nothing there. RVN_ITEMDRAWPREVIEW: a preview is about to be painted in `rect`, which is below its
// item's line; the device context has the preview's colour and font. After a non-zero answer, or if `text` of
// the item has become null, the control does not draw the text.
struct _NMRVITEMDRAW
{
    NMHDR hdr;
    _RVITEM* item;
    HDC dc;
    RECT rect;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVITEMDRAW) == 56);
