// What a report control holds.
#pragma once

#include "ReportCtrl.h"
#include "ReportSubItemListCtrl.h"
#include "report/CellCodec.h"
#include "report/ItemStore.h"
#include "report/ReportHeaderCtrl.h"
#include "report/RowMap.h"
#include "report/Selection.h"
#include "report/Tree.h"

#include <string>

class SortRun;

struct CReportCtrl::Data
{
    // Of all controls
    static inline char stringSeparator = '\t';
    static inline ZEMA::String treeIndent;

    // Items, rows, subitems
    report::ItemStore items;
    report::RowMap rows;
    report::Tree tree;
    std::vector<structSUBITEM> subitems;
    int callbackCount = 0;
    CArray<int, int> rowArray; // the copy that GetItemRowArray hands out
    std::string text;          // of the cell that SetItem is writing

    // The rows do not follow the tree yet. These had the focus and the ends of the selection before.
    bool rowsInvalid = false;
    _TREEITEM* focused = nullptr;
    _TREEITEM* firstSelected = nullptr;
    _TREEITEM* lastSelected = nullptr;
    _TREEITEM* lastInserted = nullptr; // the last child that InsertTreeItem has added

    report::Selection selection;

    // Sorting
    SortRun* sort = nullptr; // the running one
    bool busy = false;       // comparing: items stay
    RVSORTCALLBACK sortCallback = nullptr;
    __int64 sortValue = 0;

    // Colours, images, fonts
    std::vector<COLORREF> colors;
    CPalette palette;
    CBitmap background;
    CImageList* itemImages = nullptr;
    CImageList* checkImages = nullptr;
    CSize imageSize{0, 0};
    CSize checkSize{8, 8};
    CFont font;

    // Properties and styles
    DWORD style = 0;
    int margin = 6;
    int itemHeight = 10;
    int defaultColumnWidth = 200;
    ZEMA::String emptyText = "<Empty list>";
    ZEMA::String sortCaption = "Sort by: %s";
    int gridPenStyle = PS_SOLID;
    DWORD notifyMask = 0xFFFFFFFF;
    DWORD treeStyle = RVS_TREE;
    bool showPreview = true;
    bool doubleBuffer = true;
    __int64 value = 0;
    COLORREF color = RGB(255, 255, 255);

    // The window
    CReportHeaderCtrl header;
    CReportSubItemListCtrl* subitemList = nullptr;
    bool creating = false;
    bool redraw = true;
    bool invalid = false; // all of it, until it is painted
    CRect reportRect;     // where the rows are
    int topRow = 0;
    int left = 0; // pixels scrolled

    bool IsCallback() const { return (style & RVS_CALLBACK) != 0; }
    void RefreshSubItemList()
    {
        if (subitemList)
            subitemList->Refresh();
    }

    // The subitem of a header item; invalid argument when there is no such definition.
    int SubItemOf(int headerItem) const;

    bool IsTree() const { return (style & RVS_TREEMASK) != 0; }
};

// A cell, and the item it is in: valid until another item is fetched.
struct CReportCtrl::ItemView
{
    structITEM* item = nullptr;
    report::Cell cell; // of subitem -1: the preview
};
