// The report control: a list of many columns whose items may form a tree.
#pragma once

#include "QmLogApi.h"
#include "ReportItem.h"
#include "ReportNotify.h"
#include "ReportStyle.h"
#include "afxcmn.h" // TVI_ROOT and its like
#include "afxtempl.h"
#include "zemacore/String.h"

#include <memory>
#include <vector>

class CReportHeaderCtrl;
class CReportSubItemListCtrl;

// Compares two cells for a sort: less than, equal to or greater than 0. `value` is what SetSortCallback got.
using RVSORTCALLBACK = int (*)(int item1, int subitem1, int item2, int subitem2, __int64 value);

// Shows items in rows, with a cell for each subitem. A subitem is shown while a column stands for it.
//
// The control stores its items or, with RVS_CALLBACK, asks for one whenever it needs it: it can then show
// millions of rows without keeping any. Stored items are numbered from 0. Rows show them in an order that
// sorting changes while the items stay where they are. Item -1, the default item, is what the fixed row
// shows; -2 means none. Subitems are numbered in the order of their definitions, columns in the order of
// display.
//
// Operations return 1 for done and 0 for not done, or a number with -1 or -2 for none. Where the comment says
// "raises", a number outside an array raises the invalid-argument exception (CInvalidArgException*). What an
// owner's callback or override throws passes through, as does std::bad_alloc where no answer for it is named.
// The parent is told first of everything that the user does.
//
// Its window is one of UTF-16: WM_CHAR brings UTF-16, and the texts of messages that a subclass handles are
// UTF-16, too. Texts of cells are UTF-8, or in the system's code page where they are no valid UTF-8.
//
// Use the control on its window's thread only. An owner may call back into the control from its notifications
// and callbacks, and may destroy the window there; the object itself has to stay. While the control sorts, no
// item is inserted, deleted, reordered, expanded or selected: these operations then return 0 or their "none".
class QMLOG_API CReportCtrl : public CWnd
{
public:
    using structITEM = report::Item;
    using structSUBITEM = report::SubItem;
    using structTREEITEM = _TREEITEM;

    // Registers the window class "QmReportCtrl". Raises the resource exception if that fails.
    CReportCtrl();
    ~CReportCtrl() override;

    // Returns FALSE on failure, which in a comparison or a callback is another mode than that of the window
    // before (list, tree, callback). Columns need the window; everything else can be set before.
    // SubclassWindow takes over a window of the class "QmReportCtrl" instead, and raises the resource
    // exception on failure.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context = nullptr);

    // Changes styles (RVS_*), which take effect at once. Returns 0 if nothing has changed. A change between a
    // list and a tree makes all rows again, and focus and selection go. Do not use the base's operation here:
    // the control would not notice.
    int ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);

    // Sets a property (RVP_*). Returns 0 for an unknown id or a value that is refused; nothing has changed
    // then.
    int ModifyProperty(unsigned __int64 id, __int64 value);

    // Reads a property. Returns 0 for an unknown id. The address of a text is valid until the property
    // changes.
    int GetProperty(unsigned __int64 id, __int64* value);

    // ---- Items

    // Returns the number of stored items; with RVS_CALLBACK the number given to SetItemCount.
    int GetItemCount();

    // Sets the number of items that the callback answers for. Focus and selection are cut to it, and the
    // control is painted at once.
    void SetItemCount(int count);

    // Reads the cell that `item` and `subitem` name, and its item. Set RVIM_TEXT in `mask` if `text` is a
    // buffer of `textMax` bytes, and RVIM_STATE to learn of RVIS_SELECTED; afterwards `mask` says what the
    // item has. A text is cut to fit, and nothing is written if `textMax` is 0 or less. The text of subitem
    // -1, the preview, is not cut: the buffer must hold it. Returns 0 if there is no such item or subitem.
    int GetItem(_RVITEM* item);

    // Changes what `mask` says. A null text takes the cell's text away; at most 65,535 bytes are kept. Of the
    // state, only RVIS_FOCUSED, RVIS_COLLAPSED and RVIS_EXPANDED are taken. Subitem -1 changes the item but
    // not its preview. Returns 0 with RVS_CALLBACK and wherever GetItem returns 0.
    int SetItem(_RVITEM* item);

    // Each changes one value through SetItem.
    int SetItemText(int item, int subitem, const char* text);
    int SetItemImage(int item, int subitem, int image);
    int SetItemCheck(int item, int subitem, int check);
    int SetItemData(int item, unsigned long data);

    // Copies the text, cut to `max` bytes with its NUL, and returns its length. The text is empty, and the
    // length 0, if there is none.
    int GetItemText(int item, int subitem, char* buffer, int max);
    ZEMA::String GetItemText(int item, int subitem);

    // Both return -1 if the cell has none.
    int GetItemImage(int item, int subitem);
    int GetItemCheck(int item, int subitem);

    // Returns the low 32 bits.
    unsigned long GetItemData(int item);

    // Changes the bits in `mask` of an item's state: RVIS_BOLD, RVIS_READONLY, RVIS_OWNERDRAWN, and any other
    // than those of focus, selection and tree, which the control sets itself. Returns 0 wherever SetItem
    // does.
    int SetItemState(int item, unsigned int bits, unsigned int mask);

    // Returns all bits, RVIS_SELECTED included; 0 if there is no such item.
    unsigned int GetItemState(int item);

    // Sets what is shown below an item's line: a text, or null for none, in a height in pixels and with an
    // index of the colour table. GetItem reads it as subitem -1. Returns 0 wherever SetItem does.
    int SetItemPreview(int item, const char* text, int height, int textColor = -1);

    // Returns the item's cells in the order of the columns, with a separator after each and a line feed after
    // the last. Separators within a text become blanks. An item of a tree begins with its indentation
    // (RVP_TREEINDENT) and a sign: '-' if it has children, else a blank.
    virtual ZEMA::String GetItemString(int item, char separator);

    // The same, with the separator of RVP_STRINGSEPARATOR.
    ZEMA::String GetItemString(int item);

    // Inserts a stored item before `item`, or at the end if `item` is not below the count. If `text` is not
    // null it becomes the text of subitem 0. The new row comes before the row of the item that was there; in
    // a tree the item has no row until a tree item shows it. Returns the number of the new item, or -1 with
    // RVS_CALLBACK, for a negative number, during a sort, or without memory.
    int InsertItem(int item, const char* text = nullptr);

    // Deletes an item, in a tree with everything below it. Later items move up. Both return 0 with
    // RVS_CALLBACK and during a sort, DeleteItem also if there is no such item.
    int DeleteItem(int item);
    int DeleteAllItems();

    // Changes are not shown while `redraw` is 0. It is 1 at first.
    void SetRedraw(int redraw);

    // Returns a copy of the order of items, which is valid until the next call. SetItemRowArray takes an
    // order over; it returns 0 with RVS_CALLBACK, during a sort, and if the length differs.
    CArray<int, int>* GetItemRowArray();
    int SetItemRowArray(CArray<int, int>& items);

    int GetRowCount();

    // Returns -1 for item -1, and -2 if no row shows the item.
    int GetRowFromItem(int item);

    // Returns -1 for -1 and -2 for -2. Raises outside the rows; with RVS_CALLBACK it returns any number as it
    // is.
    int GetItemFromRow(int row);

    // ---- Subitems and columns

    // Defines a subitem before number `subitem`. Later ones move up, and every item gains an undefined cell.
    // Returns the number, or -1 without memory. Raises outside 0 to GetSubItemCount(). `list` says whether an
    // attached list of hidden subitems is refreshed.
    int DefineSubItem(int subitem, _RVSUBITEM* definition, int list = 1);

    // Replaces a definition; columns that show it follow. Returns the number. Raises outside the definitions.
    int RedefineSubItem(int subitem, _RVSUBITEM* definition, int list = 1);

    // Reads a definition; its width is that of the column that shows it. The caption is valid until the
    // definition changes. Returns 0 outside the definitions.
    int GetSubItem(int subitem, _RVSUBITEM* definition);

    // Sets the texts that are offered while a cell of a subitem is edited: in a combo box, which takes any
    // other text, too. They are copied. With a count of 0 it is a line to type in, as at first. Raises
    // outside the definitions.
    void SetSubItemChoices(int subitem, const char* const* texts, int count);

    // Takes a definition and its cells away. Returns 0 if there is no such subitem.
    int UndefineSubItem(int subitem);
    void UndefineAllSubItems();
    int GetSubItemCount();

    // Shows a subitem as column `column`, or as the last one if `column` is negative or too large. Returns
    // its column; a subitem that is shown already stays where it is. Returns -1 if there is no such subitem
    // or no window.
    int ActivateSubItem(int subitem, int column);

    // Returns 0 if the subitem is not shown.
    int DeactivateSubItem(int subitem, int list = 1);
    void DeactivateAllSubItems();
    int IsActiveSubItem(int subitem);
    int GetActiveSubItemCount();

    // Returns -1 if the subitem is not shown.
    int GetColumnFromSubItem(int subitem);

    // Returns -1 for a negative column. Raises past the columns.
    int GetSubItemFromColumn(int column);

    // The width is in pixels. Both raise outside the definitions. A negative width is refused with 0.
    int GetSubItemWidth(int subitem);
    int SetSubItemWidth(int subitem, int width);

    // ---- Colours and images

    // The colour table, whose entries items name by index. An index beyond the end fills what is between with
    // black. Returns the index, or -1 if the palette cannot be made or memory runs out. Raises if negative.
    int InsertColor(int index, COLORREF color);

    // Returns 0 if there is no such index, negative ones included.
    int SetColor(int index, COLORREF color);

    // Returns black past the end. Raises if negative.
    COLORREF GetColor(int index);

    // Returns 0 past the end. Raises if negative.
    int DeleteColor(int index);
    void DeleteAllColors();
    int GetColorCount();

    // Sets the images of cells and of check states; null means none. The control does not own them.
    void SetImageList(CImageList* items, CImageList* checks);

    // Sets the picture behind the rows, from a file or from a resource of the program; null or 0 takes it
    // away. Returns 0 if it cannot be loaded; no picture is shown then.
    int SetBkImage(const char* path);
    int SetBkImage(unsigned int resourceId);
    int SetBkImage(int resourceId) { return SetBkImage(static_cast<unsigned int>(resourceId)); }

    // ---- Tree

    // Returns the tree item of a stored item, or null for a negative number. Raises past the items.
    _TREEITEM* GetItemHandle(int item);
    int GetItemIndex(_TREEITEM* item);

    // Returns a neighbour (RVGN_*), or null if there is none. TVI_ROOT stands for the root wherever a tree
    // item is asked for. For null there is no neighbour, no child and no index.
    _TREEITEM* GetNextItem(_TREEITEM* item, unsigned int code);
    int GetItemCount(_TREEITEM* parent, int recursive);
    int HasChildren(_TREEITEM* item);
    int IsChild(_TREEITEM* parent, _TREEITEM* item);

    // An item is no descendant of itself.
    int IsDescendent(_TREEITEM* ancestor, _TREEITEM* item);

    // Has the row show this subitem across its whole width; -1 for its cells. Nothing is redrawn.
    void SetTreeSubItem(_TREEITEM* item, int subitem);

    // Adds a stored item and its tree item under `parent`, after a sibling or at TVI_FIRST, TVI_LAST or
    // TVI_SORT (by the header's sort column, else subitem 0). However many items are added, the rows are made
    // once, when they are next asked for. Returns null wherever InsertItem returns -1 and without a tree
    // style.
    _TREEITEM* InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text = nullptr);

    // Deletes a tree item and everything below it, with their items. TVI_ROOT deletes the whole tree.
    int DeleteTreeItem(_TREEITEM* item);

    // Expands or collapses (RVE_*). A focused row that disappears passes its focus to the collapsed item.
    // Returns 0 if nothing has changed.
    int Expand(_TREEITEM* item, unsigned int action);

    // ---- Sorting and finding

    // Sorts by a shown subitem and marks its column; in a tree every list of siblings is sorted. Returns 0
    // with RVS_CALLBACK, for a subitem without a column, without rows, and during a sort.
    int SortItems(int subitem, int ascending);

    // Sorts again by the marked column. Returns 0 if there is none.
    int ResortItems();

    // Returns 1 if a column has the sort mark; else 0, and `subitem` becomes -1.
    int GetSortSettings(int* subitem, int* ascending);

    // Takes the sort mark away; the rows stay in their order.
    void ClearSortSettings();

    // Gives the sort mark to the column of a subitem, and sorts nothing: for an owner with RVS_CALLBACK, who
    // sorts by itself. Returns 0, and nothing has changed, if no column shows the subitem.
    int SetSortSettings(int subitem, int ascending);

    int SetSortCallback(RVSORTCALLBACK callback, __int64 value);
    RVSORTCALLBACK GetSortCallback();

    // Returns 0 if nothing is being sorted, else a number that no earlier sort had. A callback may keep what
    // it has read as long as the number stays the same.
    unsigned GetSortNumber() const;

    // Compares by the sort callback; without one by text, check state and image. Cells are read once for each
    // sort. Long lists of siblings sort quickly only while this operation compares, without a callback or
    // with one of CReportSorter's orders; if an override answers something else, they are sorted by
    // insertion.
    virtual int CompareItems(int item1, int subitem1, int item2, int subitem2);

    // Compares two records. Unlike above, an empty text counts as none.
    virtual int CompareItems(_RVITEM* item1, _RVITEM* item2);

    // Searches from the neighbour of `start` on, in the direction of `flags`, and returns the first item that
    // meets all criteria, or -2. With RVFI_WRAP the default item is on the way, so that -1 may be the answer.
    // Returns 0 with RVS_CALLBACK.
    int FindItem(_RVFINDINFO* info, int subitem, int start);

    // ---- Header

    // Hiding the header takes the fixed row away too. Showing it adds the fixed row if only previews are
    // shown.
    void SetShowHeader(int show);
    int GetShowHeader();

    // Returns the header (ReportHeaderCtrl.h), which lives as long as the control, with or without a window.
    CReportHeaderCtrl* GetHeaderCtrl();

    // Returns the pixels of its rectangle, not of its columns.
    int GetHeaderWidth();

    // Attaches the list of hidden subitems that columns are dragged to and from; null detaches it. The
    // control does not own the list, which detaches itself when it ends.
    int SetReportSubItemListCtrl(CReportSubItemListCtrl* list);
    CReportSubItemListCtrl* GetReportSubItemListCtrl();

    // ---- Focus and selection

    // Returns the focused row: -2 for none, -1 for the fixed row.
    int GetCurrentFocus();

    // Returns -1 if the whole row has the focus.
    int GetCurrentFocusColumn();

    // `last` is less than `first` if no row is selected.
    void GetSelectedRows(int* first, int* last);

    // Moves the focus to `row` and, with `select`, the selection to the rows between `row` and `anchor`.
    // Every key, click and drag comes through here. The selected rows are always one range.
    //
    // With `add`, rows selected before stay if they and the new ones overlap or are neighbours. Otherwise
    // only the new ones are selected, and never the rows in between, which nobody named.
    //
    // With `toggle`, a selected `row` is taken out. At an end of the range the others stay, and in the middle
    // the longer part does, of two equal parts the one with the anchor. A row that is not selected is added.
    //
    // With RVS_SINGLESELECT it is one row at most. Nothing happens for row -1 or without rows. Raises outside
    // the rows.
    virtual void SelectRows(int row, int anchor, int select, int add, int toggle, int redraw);
    void SelectAll();

    // The row from which Shift extends the selection. Clicks and keys without Shift set it, SelectRows does
    // not. Nothing happens if there is no such row.
    void SetAnchor(int row);

    // Puts the cells of the selected rows on the clipboard, in the order of their columns, with tabs between
    // them and a line for each row. Returns 0 if no row is selected or the clipboard takes nothing.
    int CopySelection();

    // Takes all rows out of the selection; the focus stays. Returns 0 during a sort.
    int SelectNone();

    // Moves the focus to a cell, or with column -1 to the whole row, and leaves the selection alone. Row -1
    // is the fixed row. Returns 0 outside rows and columns.
    int AdjustFocus(int row, int column);

    // Move the focus by a page, as the keys do.
    void PageUp();
    void PageDown();

    // Swap a row with its neighbour; the focus goes with it. Both return 0 at the ends, with RVS_CALLBACK,
    // and during a sort.
    int MoveUp(int row);
    int MoveDown(int row);

    // Returns 1 after one of these two has ever moved a row.
    int HaveRowsMoved();

    // ---- Layout and scrolling

    void Layout(int cx, int cy);

    // The height of an item's line in pixels. At first it is 10, or more at a higher resolution. That cuts
    // the text of any usual font: set RVP_FITITEMHEIGHT, which has the control find the height out, or a
    // height. Returns 0 below 0 and above 32,767.
    int SetItemHeight(int height);
    int GetItemHeight();

    // FALSE hides the items' lines and shows their previews alone; TRUE shows the lines and no previews.
    void SetShowReport(int show);
    int GetShowReport();

    // Hides the items' lines, or shows them, and leaves the previews as they are. Returns whether the lines
    // are hidden.
    void SetHideRow(int hide);
    int GetHideRow();

    // How wide the widest preview is, in pixels from the left edge of its row. While the items' lines are
    // hidden, rows are at least that wide, so that one can scroll to it. 0 at first.
    void SetPreviewWidth(int width);
    int GetPreviewWidth();

    // Have rows painted again, at once with `update`. A `last` of RVI_NONE means only the first.
    void RedrawRows(int first, int last, int update);
    void RedrawItems(int first, int last);

    // `bar` 0 is the horizontal bar, in pixels, and 1 the vertical one, in rows. Positions are cut to the
    // width of the rows and to their number. With `trackPosition` the position that the thumb is dragged to
    // is returned.
    int ScrollWindow(int bar, int position);
    int GetScrollPos32(int bar, int trackPosition = 0);
    int SetScrollPos32(int bar, int position, int redraw);

    // ---- Geometry, in client pixels

    // The height of a row with its preview. Raises outside the rows, unless no previews are shown: all rows
    // have one height then. With RVS_CALLBACK it returns false if the callback does not have the item.
    bool GetRowHeight(int row, int& height);

    // Measures what a cell's contents need, from (0, 0): the text between margins and, unless
    // `noDecorations`, image and check box. Returns 1.
    int MeasureItem(int item, int subitem, RECT* rect, int noDecorations);

    // The rectangle (RVRC_*) of a row, with column or subitem -1, or of a cell. Row -1 is the fixed row. Both
    // return 0 if there is no such column or if no part of the row is in view.
    int GetRowRect(int row, int column, RECT* rect, unsigned int part);
    int GetItemRect(int item, int subitem, RECT* rect, unsigned int part);

    // Returns the first row shown.
    int GetTopIndex();

    // The rows that are seen whole if `fromRow` is the first of them, or with `reverse` the last; at least
    // that one. Returns their number.
    int GetVisibleRows(int fromRow, int* first, int* last, int reverse);

    // Returns how many rows are seen whole; with `partly`, one that is cut counts too.
    int GetVisibleCount(int partly);

    // Returns 1 if some part of the cell is seen, or with subitem -1 of the row.
    int IsItemVisible(int item, int subitem);

    // Scroll no more than needed. EnsureVisible scrolls rows alone, whatever the subitem, and returns 0 if no
    // row shows the item. EnsureVisibleColumn ignores a column that does not exist.
    int EnsureVisible(int item, int subitem);
    int EnsureVisibleColumn(int column);

    // Fills `info` from its point. Returns the item, or RVI_NONE.
    int HitTest(_RVHITTESTINFO* info);

    // Returns a colour that the control is drawn in (RVSC_*). Raises for other numbers.
    COLORREF GetSystemColor(int slot) const;

    // Returns the dots per inch of the window's display; without a window those of the system. Sizes that the
    // owner has not set grow with it.
    virtual int GetResolution();

    // ---- Editing in place

    // Starts editing a cell, and scrolls to it. An edit that is active is ended first. The parent is told
    // (RVN_BEGINITEMEDIT) and may bring an editor of its own. `key` is what starts it: RVEK_MOUSE and
    // RVEK_RETURN put the caret at the end of the text, RVEK_BACKSPACE deletes its last character, RVEK_TAB
    // and the keys of the cursor select all, and any other is a character that is typed over the text: in the
    // code page, or in UTF-16 when the control calls because the user has typed it.
    // Returns 1 if an edit is active afterwards; 0 also for a cell that is read-only (RVIS_READONLY), has no
    // text or no room for it.
    virtual int BeginEdit(int row, int column, unsigned int key);

    // Ends the edit, which the parent does for its own editor. With `update` the text of `info`, or without
    // it that of the editor, becomes the cell's, unless the user has not changed it; with RVS_CALLBACK
    // nothing is written. The editor is closed by a message that is posted.
    virtual void EndEdit(int update, _NMRVITEMEDIT* info);

    // Sends a notification to the parent and returns its answer; 0 if its code is switched off
    // (RVP_NOTIFYMASK) or there is no parent.
    virtual LRESULT Notify(_NMREPORTVIEW* notification);

protected:
    // ---- Drawing. Overrides may draw what they like, but must not destroy items or columns.

    // Draws one cell, within its margins: image, check box and text, from left to right.
    virtual void DrawItem(CDC* dc, CRect rect, _RVITEM* item);

    // Draws everything in the device context's clip box except the header. A paint into memory
    // (RVP_DOUBLEBUFFER) goes by bands and calls it for each, from the top down.
    virtual void DrawCtrl(CDC* dc);

    // Draws a row: its background and the cells of its line. `rowRect` contains the preview too, and begins
    // after the tree's indentation; `odd` and `fixed` are flags.
    virtual void DrawRow(CDC* dc, CRect rowRect, CRect clipRect, int row, _RVITEM* item, int odd, int fixed);

    // Each returns the width that it has used, or 0 if it has drawn nothing and wants no room.
    virtual int DrawTreeBox(CDC* dc, CRect rect, int expanded);
    virtual int DrawImage(CDC* dc, CRect rect, _RVITEM* item);
    virtual int DrawCheck(CDC* dc, CRect rect, _RVITEM* item);
    virtual int DrawText(CDC* dc, CRect rect, _RVITEM* item);

    // Fills with a colour, or with the picture behind the rows.
    virtual void DrawBkgnd(CDC* dc, CRect rect, unsigned long color);

    // Reads the colours of GetSystemColor again.
    virtual void GetSysColors();

    // Returns the lines for each notch of the wheel, or 0xFFFFFFFF for a page; 3 if the system has no such
    // setting.
    virtual unsigned int GetMouseScrollLines();

    // ---- Data and notifications

    // Makes the child windows: Create calls it, and subclassing a window does. Returns FALSE if they fail.
    virtual BOOL CreateCommon();

    // Item -1 is the default item. Both raise outside the stored items. With RVS_CALLBACK the first returns a
    // scratch item that LoadItemData has filled, valid until the next call, or the default item if it could
    // not; the second does nothing. An override of these or of LoadItemData answers only: it inserts and
    // deletes nothing, and makes no window of another mode.
    virtual structITEM& GetItemStruct(int item, int subitem, unsigned int mask);
    virtual void SetItemStruct(int item, structITEM& record);

    // Asks OnRvnItemCallbackBypass and puts the answer into `record`, whose cells are undefined before.
    // Returns 0 if the item is not available. What the record holds afterwards is what is read and painted.
    virtual int LoadItemData(structITEM* record, int item, int subitem, unsigned int mask);

    // A subclass answers for its items here: it fills the record's `item` (of a _NMRVITEMCALLBACK), its mask
    // and its text, which ends with a NUL, and returns 0, or anything else if the item is not available.
    virtual __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification);

    // A subclass may change what the tip over a cell shows (RVS_TIPS). `item` is the record of the cell, with
    // its text, which is not to be written to: point `text` at another one, which has to stay until the next
    // call, or at none for no tip. State (RVIS_BOLD) and colours count, too. Called after the mouse has come
    // to rest on a cell; nothing shows if the text fits there.
    virtual void AdjustTip(_RVITEM* item);

    // A subclass may draw a preview here (_NMRVITEMDRAW).
    virtual __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification);

    // Sort rows `low` to `high`, and the children of `parent`. Both sort their parts through these same
    // operations, and raise outside the rows.
    virtual void QuickSort(int subitem, int ascending, int low, int high);
    virtual void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive);

    // Send a notification through the virtual Notify. In a tree both raise past the stored items, the second
    // also in a list.
    LRESULT Notify(unsigned int code, int item, int subitem, unsigned int value, __int64 data);
    LRESULT Notify(unsigned int code, unsigned int keys, _RVHITTESTINFO* hit);
    LRESULT NotifyHdr(_NMRVHEADER* notification, unsigned int code, int column);

    // Makes the rows from the tree; the second form appends the rows below `parent`.
    void BuildTree();
    void BuildTree(structTREEITEM* parent);

    // Links a tree item that the caller owns under `parent`, null or TVI_ROOT for a top-level item, and sets
    // its parent and level. The caller sets its item number and calls BuildTree. Returns the result of the
    // comparison if TVI_SORT has put the item in front, else 0.
    int InsertTree(int subitem, structTREEITEM* parent, structTREEITEM* after, structTREEITEM* item,
                   int ascending);
    structTREEITEM* GetVisibleAncestor(structTREEITEM* item);
    structTREEITEM* GetVisibleAncestor(structTREEITEM* item, int* found);

    // GetTreeFocus takes the focus off its row and returns the row's tree item; it raises for a row outside
    // the rows. SetTreeFocus moves the focus to the row of a tree item, or of its visible ancestor, and shows
    // it.
    structTREEITEM* GetTreeFocus();
    void SetTreeFocus(structTREEITEM* item);

    // Changes the state of the item that a row shows; row -1 means the default item. Does nothing with
    // RVS_CALLBACK. Raises outside the rows.
    void SetState(int row, unsigned int bits, unsigned int mask);

    // Makes the palette from the colour table and the picture behind the rows. Returns 0 if neither has a
    // colour.
    int CreatePalette();

    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool IsWide() const override { return true; }

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnMouseHWheel(UINT flags, short delta, CPoint point);
    afx_msg LRESULT OnEnable(WPARAM enable, LPARAM);
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM);
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

    // The editor reports its end, and the parent is told. Unless it answers that it has dealt with it, the
    // text is written back; the key Esc does not.
    afx_msg void OnRvnEndItemEdit(NMHDR* header, LRESULT* result);
    afx_msg void OnEditorChange();
    afx_msg void OnEditorPick();
    afx_msg LRESULT OnEditMessage(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
