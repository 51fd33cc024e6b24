// The report control: a list of many columns whose items may form a tree.
#pragma once

#include "QmLogApi.h"
#include "ReportItem.h"
#include "afxcmn.h" // TVI_ROOT and its like
#include "afxtempl.h"
#include "zemacore/String.h"

#include <memory>
#include <vector>

class CReportHeaderCtrl;
class CReportSubItemListCtrl;

namespace report
{
struct RowRange;
} // namespace report

// Styles of the control.
constexpr DWORD RVS_SINGLESELECT = 0x0001;
constexpr DWORD RVS_KEEPSELECTION = 0x0002;  // selected rows stay highlighted without the focus
constexpr DWORD RVS_KEEPTEXTCOLOR = 0x0004;  // an item's own text colour is kept when it is selected
constexpr DWORD RVS_ALTERNATEROWS = 0x0008;  // odd rows have colour 0 of the colour table
constexpr DWORD RVS_HORIZONTALGRID = 0x0010; // adds 1 to the item height
constexpr DWORD RVS_VERTICALGRID = 0x0020;
constexpr DWORD RVS_NOHEADER = 0x0040;
constexpr DWORD RVS_NOHEADERSORT = 0x0080;  // a click on a column header does not sort
constexpr DWORD RVS_DRAGCOLUMNS = 0x0100;   // a column dragged off the header is removed
constexpr DWORD RVS_FIXEDROW = 0x0200;      // the default item is shown above the rows
constexpr DWORD RVS_EXTENDGRID = 0x0400;    // the grid goes on below the last row
constexpr DWORD RVS_CALLBACK = 0x0800;      // items are asked for and not stored; there is no tree then
constexpr DWORD RVS_CELLFOCUS = 0x1000;     // a cell and not only a row has the focus
constexpr DWORD RVS_TIPS = 0x2000;          // texts that are cut off show in a tip
constexpr DWORD RVS_TREE = 0x4000;          // items form a tree
constexpr DWORD RVS_TREEALTERNATE = 0x8000; // so they do with this
constexpr DWORD RVS_TREEMASK = RVS_TREE | RVS_TREEALTERNATE;
constexpr DWORD RVS_FACEBACKGROUND = 0x08000000; // the background has the colour of dialogs

// Notifications, sent to the parent as WM_NOTIFY but for the first and RVN_ITEMCALLBACK. A non-zero answer
// to an input cancels what the control would do.
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

struct _RVHITTESTINFO
{
    POINT pt; // in client coordinates
    UINT flags;
    _TREEITEM* treeItem;
    int item;
    int subitem;
    int row;
    int column; // in display order
    RECT rect;  // of the part that was hit
};
static_assert(sizeof(void*) != 8 || sizeof(_RVHITTESTINFO) == 56);

// A notification about a row. What its sender does not fill is zero.
struct _NMREPORTVIEW
{
    NMHDR hdr;
    UINT keys;   // of the mouse message, or the key
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

// RVN_ITEMCALLBACK: what is asked for stands in `item`, and the answer goes there.
struct _NMRVITEMCALLBACK
{
    NMHDR hdr;
    _RVITEM item;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVITEMCALLBACK) == 96);

// RVN_ITEMDRAW: an owner-drawn cell is about to be painted, in its rectangle. RVN_ITEMDRAWPREVIEW: a preview
// is, in the rectangle below its item's line; the device context has the preview's colour and font, and a
// non-zero answer keeps the control from drawing the text.
struct _NMRVITEMDRAW
{
    NMHDR hdr;
    _RVITEM* item;
    HDC dc;
    RECT rect;
};
static_assert(sizeof(void*) != 8 || sizeof(_NMRVITEMDRAW) == 56);

// Properties of ModifyProperty, with what `value` is.
constexpr unsigned __int64 RVP_MARGIN = 1;           // pixels left and right of a cell's contents
constexpr unsigned __int64 RVP_CHECKSIZE = 2;        // low 16 bits the width, next 16 the height
constexpr unsigned __int64 RVP_EMPTYTEXT = 3;        // const char*: what an empty list shows
constexpr unsigned __int64 RVP_GRIDSTYLE = 4;        // 0 dotted, 1 dashed, 2 solid
constexpr unsigned __int64 RVP_SORTCAPTION = 5;      // const char*; "%s" stands for the column's caption
constexpr unsigned __int64 RVP_NOTIFYMASK = 6;       // bit k lets code -2048 - k through
constexpr unsigned __int64 RVP_UNUSED = 7;           // accepted and ignored
constexpr unsigned __int64 RVP_CELLSEPARATOR = 8;    // a byte that no text contains; of all controls
constexpr unsigned __int64 RVP_SHOWPREVIEW = 9;      // flag
constexpr unsigned __int64 RVP_DOUBLEBUFFER = 10;    // flag: painted off the screen and copied in one piece
constexpr unsigned __int64 RVP_TREESTYLE = 11;       // 0, 1 or 2
constexpr unsigned __int64 RVP_IMAGEMODE = 12;       // RVIB_*: how images of selected and focused rows look
constexpr unsigned __int64 RVP_COLOR = 13;           // COLORREF; kept
constexpr unsigned __int64 RVP_STRINGSEPARATOR = 14; // a byte; of all controls
constexpr unsigned __int64 RVP_TREEINDENT = 15;      // const char*: an indentation level in GetItemString

// Values of RVP_IMAGEMODE: the share of the highlight colour in the images of selected rows, and of the
// window's colour in those of the focused row.
constexpr __int64 RVIB_NONE = 0;
constexpr __int64 RVIB_BLEND25 = 1;
constexpr __int64 RVIB_BLEND50 = 2;

// The system's colours that a control is drawn in (GetSystemColor).
constexpr int RVSC_WINDOW = 0;
constexpr int RVSC_HIGHLIGHT = 1;
constexpr int RVSC_INACTIVEHIGHLIGHT = 2; // selected rows without the focus
constexpr int RVSC_TEXT = 3;
constexpr int RVSC_HIGHLIGHTTEXT = 4;
constexpr int RVSC_INACTIVEHIGHLIGHTTEXT = 5;
constexpr int RVSC_GRID = 6;
constexpr int RVSC_FACE = 7;
constexpr int RVSC_LIGHT = 8;
constexpr int RVSC_SHADOW = 9;
constexpr int RVSC_HIGHLIGHTEDGE = 10; // of the fixed row, left and top
constexpr int RVSC_DARKSHADOW = 11;    // of the fixed row, right and bottom
constexpr int RVSC_COUNT = 12;

// What GetRowRect and GetItemRect answer: a row with its preview, a cell of its line; or what editing a cell
// starts from, which is the same.
constexpr unsigned RVRC_WHOLE = 0;
constexpr unsigned RVRC_EDIT = 3;

// Compares two cells for a sort: less than, equal to or greater than 0. `value` is what SetSortCallback got.
using RVSORTCALLBACK = int (*)(int item1, int subitem1, int item2, int subitem2, __int64 value);

// Shows items in rows, with a cell for each subitem; a subitem is shown while a column stands for it.
//
// Items are stored, or, with RVS_CALLBACK, asked for whenever one is needed: a control then shows millions of
// rows of which it keeps none. Stored items are numbered from 0; rows show them in an order that sorting
// changes while the items stay where they are. Item -1, the default item, is what the fixed row shows; -2
// stands for none. Subitems are numbered in the order of their definitions, columns in that of display.
//
// Operations answer 1 for done and 0 for not done, or a number with -1 or -2 for none. Where so stated, a
// number outside an array raises the invalid-argument exception. Everything the user does is offered to the
// parent first.
//
// The window's thread only. An owner may call back into the control from its notifications and callbacks and
// may destroy the window there; the object itself has to stay. While the control sorts, items are neither
// inserted nor deleted nor reordered nor expanded nor selected: the operations answer "not done".
class QMLOG_API CReportCtrl : public CWnd
{
public:
    using structITEM = report::Item;
    using structSUBITEM = report::SubItem;
    using structTREEITEM = _TREEITEM;

    // Registers the window class "QmReportCtrl"; raises the resource exception when that fails.
    CReportCtrl();
    ~CReportCtrl() override;

    // FALSE on failure. Columns need the window, everything else can be filled before.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context = nullptr);

    // Changes styles; the new ones take effect at once. 0 when nothing changed. Between a list and a tree all
    // rows are made anew, and focus and selection go. The base's operation goes past the control and is not
    // for use here.
    int ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);

    // RVP_*. 0 for an unknown id or a value that is refused; nothing has changed then.
    int ModifyProperty(unsigned __int64 id, __int64 value);

    // ---- Items

    // Stored items; with RVS_CALLBACK what SetItemCount said.
    int GetItemCount();

    // The number of items that the callback answers for. Focus and selection are cut to it, and the control
    // is painted at once.
    void SetItemCount(int count);

    // Reads a cell and its item: `item` and `subitem` say which, `mask` has RVIM_TEXT when `text` is a buffer
    // of `textMax` bytes, and RVIM_STATE when RVIS_SELECTED is wanted. `mask` becomes what the item has. A
    // text is cut to fit; nothing is written with a `textMax` of 0 or less. The text of subitem -1, the
    // preview, is not cut: the buffer must hold it. 0 when there is no such item or subitem.
    int GetItem(_RVITEM* item);

    // Changes what `mask` says. A null text takes the cell's text away; texts are kept up to 65,535 bytes. Of
    // the state, RVIS_FOCUSED, RVIS_COLLAPSED and RVIS_EXPANDED are taken. Subitem -1 changes the item but
    // not its preview. 0 with RVS_CALLBACK and where GetItem answers 0.
    int SetItem(_RVITEM* item);

    int SetItemText(int item, int subitem, const char* text);
    int SetItemImage(int item, int subitem, int image);
    int SetItemCheck(int item, int subitem, int check);
    int SetItemData(int item, unsigned long data);

    // Copies the text, cut to `max` bytes with its NUL; its length. 0, and an empty text, when there is none.
    int GetItemText(int item, int subitem, char* buffer, int max);
    ZEMA::String GetItemText(int item, int subitem);
    int GetItemImage(int item, int subitem); // -1 when there is none, so too the check state
    int GetItemCheck(int item, int subitem);
    unsigned long GetItemData(int item); // the low 32 bits

    // The item's cells in the order of the columns, a separator after each, a line feed after the last.
    // Separators within a text become blanks. Items of a tree begin with their indentation (RVP_TREEINDENT)
    // and a sign, '-' for one with children.
    virtual ZEMA::String GetItemString(int item, char separator);

    // Inserts a stored item before `item`, or at the end when `item` is not below the count; `text` becomes
    // the text of subitem 0 when not null. The row comes in before that of the item there. In a tree the item
    // has no row until a tree item shows it. The number of the new item; -1 with RVS_CALLBACK, for a negative
    // number, during a sort, or without memory.
    int InsertItem(int item, const char* text = nullptr);

    // Deletes an item; in a tree with all below it. Later items move up. 0 where there is no such stored item
    // and during a sort.
    int DeleteItem(int item);
    int DeleteAllItems();

    // While switched off, changes are not shown. 1 at first.
    void SetRedraw(int redraw);

    // A copy of the order of items: valid until the next call. SetItemRowArray puts an order in its place:
    // 0 with RVS_CALLBACK, during a sort, and when it has another length.
    CArray<int, int>* GetItemRowArray();
    int SetItemRowArray(CArray<int, int>& items);

    int GetRowCount();

    // -1 for -1; -2 when no row shows the item.
    int GetRowFromItem(int item);

    // -1 for -1 and -2 for -2; invalid argument outside the rows.
    int GetItemFromRow(int row);

    // ---- Subitems and columns

    // Defines a subitem before number `subitem`; later ones move up, and every item gains an undefined cell.
    // The number; -1 without memory. Invalid argument outside 0 to GetSubItemCount(). `list`: whether an
    // attached list of hidden subitems is brought up to date.
    int DefineSubItem(int subitem, _RVSUBITEM* definition, int list = 1);

    // Replaces a definition; columns that show it follow. The number.
    int RedefineSubItem(int subitem, _RVSUBITEM* definition, int list = 1);

    // Takes a definition and its cells away; 0 when there is none.
    int UndefineSubItem(int subitem);
    void UndefineAllSubItems();
    int GetSubItemCount();

    // Shows a subitem as column `column`, the last one when there are fewer or `column` is negative. Its
    // column; one that is shown already stays where it is. -1 when there is no such subitem or no window.
    int ActivateSubItem(int subitem, int column);
    int DeactivateSubItem(int subitem, int list = 1); // 0 when it is not shown
    void DeactivateAllSubItems();
    int IsActiveSubItem(int subitem);
    int GetActiveSubItemCount();

    int GetColumnFromSubItem(int subitem); // -1 when it is not shown
    int GetSubItemFromColumn(int column);  // -1 for a negative column; invalid argument past the columns
    int GetSubItemWidth(int subitem);      // pixels; invalid argument outside the definitions
    int SetSubItemWidth(int subitem, int width);

    // ---- Colours and images

    // The colour table that items refer to by index. An index beyond the end fills what lies between with
    // black. The index; -1 when palette or memory cannot be had; invalid argument when negative.
    int InsertColor(int index, COLORREF color);
    int SetColor(int index, COLORREF color); // 0 when there is no such index
    COLORREF GetColor(int index);            // black past the end; invalid argument when negative
    int DeleteColor(int index);              // 0 past the end; invalid argument when negative
    void DeleteAllColors();

    // The images of cells and of check states; null for none. Not owned.
    void SetImageList(CImageList* items, CImageList* checks);

    // The picture behind the rows, from a file or a resource of the program; null or 0 for none. 0 when it
    // cannot be had; there is none then.
    int SetBkImage(const char* path);
    int SetBkImage(unsigned int resourceId);

    // ---- Tree

    // The tree item of a stored item; null for a negative number, invalid argument past the items.
    _TREEITEM* GetItemHandle(int item);
    int GetItemIndex(_TREEITEM* item);

    // RVGN_*: null where there is none. TVI_ROOT stands for the root wherever a tree item is taken. Of null
    // all of these answer that there is none.
    _TREEITEM* GetNextItem(_TREEITEM* item, unsigned int code);
    int GetItemCount(_TREEITEM* parent, int recursive);
    int HasChildren(_TREEITEM* item);
    int IsChild(_TREEITEM* parent, _TREEITEM* item);
    int IsDescendent(_TREEITEM* ancestor, _TREEITEM* item); // an item is none of itself
    void SetTreeSubItem(_TREEITEM* item, int subitem);      // redraws nothing

    // Adds a stored item and its tree item under `parent`, after a sibling or at TVI_FIRST, TVI_LAST or
    // TVI_SORT (by the header's sort column, else subitem 0). Rows are made anew once, when they are next
    // asked for. Null where InsertItem answers -1 and without a tree style.
    _TREEITEM* InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text = nullptr);

    // Deletes a tree item and all below it, with their items; TVI_ROOT deletes the whole tree.
    int DeleteTreeItem(_TREEITEM* item);

    // RVE_*; a focused row that disappears hands its focus to the item collapsed. 0 when nothing changed.
    int Expand(_TREEITEM* item, unsigned int action);

    // ---- Sorting and finding

    // Sorts by a shown subitem and marks its column; in a tree each list of siblings. 0 with RVS_CALLBACK,
    // for a subitem without a column, when there are no rows, and during a sort.
    int SortItems(int subitem, int ascending);
    int ResortItems();

    // 1 when a column carries the sort mark; else 0, and the subitem is -1.
    int GetSortSettings(int* subitem, int* ascending);
    int SetSortCallback(RVSORTCALLBACK callback, __int64 value);
    RVSORTCALLBACK GetSortCallback();

    // 0 while nothing is being sorted, else a number that no earlier sort had: lets a callback keep what it
    // has read for as long as it holds.
    unsigned GetSortNumber() const;

    // By the sort callback; without one by text, check state, image. Cells are read once a sort.
    // Long lists of siblings sort quickly only as long as this, with one of CReportSorter's orders or
    // none, is what compares; an override that answers something else has them sorted by insertion.
    virtual int CompareItems(int item1, int subitem1, int item2, int subitem2);

    // Two records. Empty texts count as none here, unlike above.
    virtual int CompareItems(_RVITEM* item1, _RVITEM* item2);

    // The first item from the neighbour of `start` on, in the direction of `flags`, that meets all criteria;
    // -2 when none does. With RVFI_WRAP the default item -1 is on the way, and may be the answer. 0 with
    // RVS_CALLBACK.
    int FindItem(_RVFINDINFO* info, int subitem, int start);

    // ---- Header

    // Hiding the header takes the fixed row away too; showing it adds the fixed row when only previews are
    // shown.
    void SetShowHeader(int show);
    int GetShowHeader();
    CReportHeaderCtrl* GetHeaderCtrl();
    int GetHeaderWidth(); // pixels: of its rectangle, not of the columns

    // The list of hidden subitems that columns are dragged to and from; null for none. Not owned: it detaches
    // itself when it ends.
    int SetReportSubItemListCtrl(CReportSubItemListCtrl* list);
    CReportSubItemListCtrl* GetReportSubItemListCtrl();

    // ---- Focus and selection

    int GetCurrentFocus();                       // the row: -2 none, -1 the fixed row
    int GetCurrentFocusColumn();                 // -1: the whole row
    void GetSelectedRows(int* first, int* last); // `last` before `first` when none is

    // Moves the focus to `row` and, with `select`, the selection to the rows between `row` and `anchor`. With
    // `toggle`, a row that is the only selected one is taken out; `add` leaves the rows a selection has.
    // There is one range. Nothing happens for row -1 or without rows.
    virtual void SelectRows(int row, int anchor, int select, int add, int toggle, int redraw);
    void SelectAll();

    // Puts the focus on a cell, with -1 on the whole row, and leaves the selection alone. Row -1 is the fixed
    // row. 0 outside rows and columns.
    int AdjustFocus(int row, int column);

    // Move the focus by a page, as the keys do.
    void PageUp();
    void PageDown();

    // Swap a row with its neighbour; the focus goes with it. 0 at the ends, with RVS_CALLBACK, and during a
    // sort.
    int MoveUp(int row);
    int MoveDown(int row);
    int HaveRowsMoved(); // by these two, ever

    // ---- Layout and scrolling

    void Layout(int cx, int cy);
    int SetItemHeight(int height); // pixels, up to 32,767
    int GetItemHeight();

    // FALSE hides the items' lines and shows their previews alone; TRUE shows the lines and no previews.
    void SetShowReport(int show);
    int GetShowReport();

    // Have rows painted anew; `update` at once. `last` RVI_NONE: only the first.
    void RedrawRows(int first, int last, int update);
    void RedrawItems(int first, int last);

    // 0 horizontal, in pixels; 1 vertical, in rows. Positions are cut to the width of the rows and their
    // count. `trackPosition` asks for where the thumb is being dragged to.
    int ScrollWindow(int bar, int position);
    int GetScrollPos32(int bar, int trackPosition = 0);
    int SetScrollPos32(int bar, int position, int redraw);

    // ---- Geometry, in client pixels

    // The height of a row with its preview. False when there is no such row.
    bool GetRowHeight(int row, int& height);

    // What a cell's contents need, from (0, 0): text between margins and, but for `noDecorations`, image and
    // check box. 1.
    int MeasureItem(int item, int subitem, RECT* rect, int noDecorations);

    // RVRC_*; a row (column or subitem -1) or a cell; the fixed row for row -1. 0 when there is no such
    // column and when none of the row is in view.
    int GetRowRect(int row, int column, RECT* rect, unsigned int part);
    int GetItemRect(int item, int subitem, RECT* rect, unsigned int part);

    int GetTopIndex(); // the first row shown

    // The rows seen whole when `fromRow` is the first of them, or with `reverse` the last; at least that
    // one. Their number.
    int GetVisibleRows(int fromRow, int* first, int* last, int reverse);
    int GetVisibleCount(int partly);          // rows seen whole; `partly` counts one that is cut, too
    int IsItemVisible(int item, int subitem); // some of it; subitem -1: of its row
    // Scrolls no more than needed; EnsureVisible rows alone, whatever the subitem. 0 when no row shows the
    // item.
    int EnsureVisible(int item, int subitem);
    int EnsureVisibleColumn(int column);     // ignored when there is no such column
    int HitTest(_RVHITTESTINFO* info);       // fills `info` from its point; the item, RVI_NONE for none
    COLORREF GetSystemColor(int slot) const; // RVSC_*

    // Sends a notification to the parent; its answer. 0 when its code is switched off (RVP_NOTIFYMASK) or
    // there is no parent.
    virtual LRESULT Notify(_NMREPORTVIEW* notification);

protected:
    // ---- Drawing. Overrides may draw what they like; nothing here may destroy items or columns.

    // One cell, within its margins: image, check box and text, from left to right.
    virtual void DrawItem(CDC* dc, CRect rect, _RVITEM* item);

    // All that lies in the device context's clip box, but for the header.
    virtual void DrawCtrl(CDC* dc);

    // A row: its background and the cells of its line. `rowRect` has the preview too and begins behind the
    // tree's indentation; `odd` and `fixed` are flags.
    virtual void DrawRow(CDC* dc, CRect rowRect, CRect clipRect, int row, _RVITEM* item, int odd, int fixed);

    // These answer the width that they used; 0 when they drew nothing and want no room.
    virtual int DrawTreeBox(CDC* dc, CRect rect, int expanded);
    virtual int DrawImage(CDC* dc, CRect rect, _RVITEM* item);
    virtual int DrawCheck(CDC* dc, CRect rect, _RVITEM* item);
    virtual int DrawText(CDC* dc, CRect rect, _RVITEM* item);

    // A colour, or the picture behind the rows.
    virtual void DrawBkgnd(CDC* dc, CRect rect, unsigned long color);

    // Reads the colours of GetSystemColor anew.
    virtual void GetSysColors();

    // Lines a notch of the wheel; 0xFFFFFFFF for a page. 3 when the system has no such setting.
    virtual unsigned int GetMouseScrollLines();

    // Starts editing a cell; 1 when an edit is active afterwards. `key` is what started it, 1 for the mouse.
    // The control brings no editor: it answers 0.
    virtual int BeginEdit(int row, int column, unsigned int key);

    // ---- Data and notifications

    // Called by Create and when a window is subclassed: makes the child windows. FALSE when they fail.
    virtual BOOL CreateCommon();

    // Item -1 is the default item; invalid argument outside the stored items. With RVS_CALLBACK a scratch
    // item that LoadItemData has filled, good until the next call; the default item when it could not.
    virtual structITEM& GetItemStruct(int item, int subitem, unsigned int mask);
    virtual void SetItemStruct(int item, structITEM& record);

    // Asks OnRvnItemCallbackBypass and puts the answer into `record`, whose cells are undefined before;
    // 0 if the item is not available. What the record holds afterwards is what is read and painted.
    virtual int LoadItemData(structITEM* record, int item, int subitem, unsigned int mask);

    // What a subclass answers items from: fills the record's `item` (a _NMRVITEMCALLBACK), its mask and text,
    // with a NUL behind it, and answers 0; anything else when the item is not available.
    virtual __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification);
    virtual __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification);

    // Rows `low` to `high`, and the children of `parent`. Both have their parts sorted through these same
    // operations.
    virtual void QuickSort(int subitem, int ascending, int low, int high);
    virtual void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive);

    LRESULT Notify(unsigned int code, int item, int subitem, unsigned int value, __int64 data);
    LRESULT Notify(unsigned int code, unsigned int keys, _RVHITTESTINFO* hit);
    LRESULT NotifyHdr(_NMRVHEADER* notification, unsigned int code, int column);

    // Makes the rows from the tree; the second appends those below `parent`.
    void BuildTree();
    void BuildTree(structTREEITEM* parent);

    // Links a tree item that the caller owns under `parent`, null or TVI_ROOT for a top-level item, and sets
    // its parent and level. Its item number is the caller's, and so is BuildTree. The result of the
    // comparison when TVI_SORT put the item in front, else 0.
    int InsertTree(int subitem, structTREEITEM* parent, structTREEITEM* after, structTREEITEM* item,
                   int ascending);
    structTREEITEM* GetVisibleAncestor(structTREEITEM* item);
    structTREEITEM* GetVisibleAncestor(structTREEITEM* item, int* found);

    // Takes the focus off its row and answers its tree item; and puts it on the row of a tree item or of its
    // visible ancestor, and shows it.
    structTREEITEM* GetTreeFocus();
    void SetTreeFocus(structTREEITEM* item);

    // Changes the state of the item that a row shows; row -1 the default item. Nothing with RVS_CALLBACK.
    void SetState(int row, unsigned int bits, unsigned int mask);

    // Makes the palette from the colour table and the picture behind the rows; 0 when both have no colours.
    int CreatePalette();

    void PreSubclassWindow() override;

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnMouseHWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnSysColorChange();
    afx_msg void OnSettingChange(UINT flags, LPCSTR section);
    afx_msg BOOL OnQueryNewPalette();
    afx_msg void OnPaletteChanged(CWnd* changed);
    afx_msg LRESULT OnSetFont(WPARAM font, LPARAM redraw);
    afx_msg LRESULT OnGetFont(WPARAM, LPARAM);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnChar(UINT key, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* wnd);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnKillFocus(CWnd* focused);
    afx_msg void OnHdnItemClick(NMHDR* header, LRESULT* result);
    afx_msg void OnHdnItemChanged(NMHDR* header, LRESULT* result);
    afx_msg void OnHdnEndDrag(NMHDR* header, LRESULT* result);
    afx_msg void OnHdnDividerDblClick(NMHDR* header, LRESULT* result);
    afx_msg void OnHeaderRClick(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    friend class CReportSubItemListCtrl; // which shows captions
    struct Data;
    struct Places;
    class Painting;
    class RowSource;
    class InputPort;

    void FillHeader(NMHDR& header, unsigned int code);
    void RowsRemoved();
    int SwapRows(int row, int moved);
    void LayoutClient();
    void FitColumn(int subitem);
    void PlaceHeader();
    void ShowRow(int row);
    void FitScrolling();
    void UpdateScrollBars();
    void UpdateScrollBar(int bar, int count, int page, int position);
    void Scroll(int bar, UINT code);
    void Redraw();
    void InvalidateRowRange(report::RowRange rows);
    void ReadSystem();
    void UseFont(HFONT font);

    // Painting
    COLORREF GetPlainColor() const;
    COLORREF GetTextColorOf(int index, bool selected) const;
    bool IsRowSelected(int row) const;
    void DrawFixedRow(CDC* dc, const CRect& clip, Places& places);
    int DrawRows(CDC* dc, const CRect& clip, Places& places);
    void DrawRowFocus(CDC* dc, CRect rect);
    void DrawGrid(CDC* dc, const CRect& clip, Places& places, int bottom);
    void DrawEmptyText(CDC* dc);
    void DrawCell(CDC* dc, int row, int column, int subitem, const CRect& rect, bool selected);
    void DrawPreview(CDC* dc, const CRect& rect, int row);
    bool NotifyDraw(CDC* dc, _RVITEM* cell, const CRect& rect);
    void DrawListImage(CDC* dc, const CRect& rect, CImageList* list, int image, int height, UINT style,
                       int blend);

    // Input
    void HandleClick(const _RVHITTESTINFO& hit, UINT flags);
    void ToggleBox(const _RVHITTESTINFO& hit);
    void DragSelection(CPoint point);
    bool NotifyKey(UINT key);

    int SetBackground(HANDLE bitmap, bool none);

    std::unique_ptr<Data> m_data;
};
