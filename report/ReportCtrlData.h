// What a report control holds.
#pragma once

#include "ReportCtrl.h"
#include "ReportSubItemListCtrl.h"
#include "report/Background.h"
#include "report/ImageCopies.h"
#include "report/PaintColors.h"
#include "report/PaintFonts.h"
#include "report/ScrollBars.h"
#include "report/edit/EditState.h"
#include "report/edit/ReasonTip.h"
#include "report/header/ReportHeaderWnd.h"
#include "report/model/DirtyRows.h"
#include "report/model/ExtraKeys.h"
#include "report/model/Geometry.h"
#include "report/model/PaintedShapes.h"
#include "report/model/Properties.h"
#include "report/model/Rows.h"
#include "report/model/ScrollPosition.h"
#include "report/sort/Sorting.h"
#include "report/tip/ReportTip.h"
#include "zemacore/Flagged.h"

#include <functional>
#include <string>

namespace report
{

// What a control is painted with.
struct Look
{
    PaintColors colors;
    PaintFonts fonts;
    Background background;
    CImageList* itemImages = nullptr; // the owner's, like the next
    CImageList* checkImages = nullptr;
    ImageCopies itemCopies; // of the items' images, if the owner allows it
};

struct WindowState
{
    bool isCreating = false;
    bool hasFaceBackground = false; // the owner wants it
    bool hasFocus = false;
    bool isRedrawOn = true; // SetRedraw
    bool hasMovedRows = false;
    unsigned wheelLines = 3;
    NMHDR* asking = nullptr;   // who asks in a callback, kept for the operation at work
    int questions = 0;         // that the owner is answering, one within the other
    CArray<int, int> rowArray; // the copy that GetItemRowArray hands out
};

// The timer scrolls while the mouse is outside.
struct DragSelection
{
    bool isActive = false;
    CPoint point;
};

} // namespace report

// The control's state, each part with its rules. It is also the way back: the models reach the virtual
// operations through it.
struct CReportCtrl::Data : report::Overrides, report::RowsListener
{
    explicit Data(CReportCtrl& owner) : control(owner) {}
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    class FetchedRows;
    struct Snapshot;
    class Painter;
    class InputPort;
    class KeysPort;

    struct Painting
    {
        Snapshot* snapshot = nullptr; // of the paint at work
        bool isDrawing = false;       // DrawCtrl is at work
        bool again = false;           // a paint was asked for in the midst of one
        std::string text;             // of the cell being drawn
        report::DirtyRows dirty;      // since the last paint
        report::PaintedShapes shapes; // good as long as nothing is to be painted again
    };

    CReportCtrl& control;
    report::Items items{*this};
    report::Rows rows{items, *this, *this};
    report::Sorting sorting{items, rows, *this};
    report::View view;
    report::ScrollPosition scroll{view};
    DWORD style = 0; // the window's style bits, which everything tests here and not at the window
    report::Sizes sizes{view};
    report::Properties properties{view, sizes};
    report::Look look;
    ReportHeaderWnd header;
    CReportSubItemListCtrl* subitemList = nullptr;
    report::WindowState window;
    report::ScrollBars bars;
    Painting painting;
    report::DragSelection drag;
    report::EditState edit;
    report::NextEdit nextEdit;
    report::ReasonTip reasonTip;
    bool isEditMessagePosted = false;
    unsigned renumbered = 0; // how often items or subitems were
    report::TipState tip;
    report::ExtraKeysState extraKeys;

    // ---- What the models call

    structITEM& GetItemStruct(int item, int subitem, unsigned mask) override
    {
        return control.GetItemStruct(item, subitem, mask);
    }
    void SetItemStruct(int item, structITEM& record) override { control.SetItemStruct(item, record); }
    bool LoadItemData(structITEM& record, int item, int subitem, unsigned mask) override
    {
        return control.LoadItemData(&record, item, subitem, mask) != 0;
    }
    bool AskOwner(_RVITEM& question) override;
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        return control.CompareItems(item1, subitem1, item2, subitem2);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        control.QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive) override
    {
        control.TreeSort(subitem, parent, ascending, recursive);
    }
    void RowsMade(int count) override
    {
        painting.shapes.Forget();
        scroll.SetTop(view.topRow, count);
        scroll.MarkTooFar();
    }

    // Changes focus or selection, and has the rows painted that look different then. Nothing else changes
    // them unless it has everything painted.
    enum class Painted
    {
        AtOnce,
        Later,
        ByCaller
    };
    bool ChangeSelection(Painted painted, const std::function<bool()>& change);

    // ---- The window

    bool MayMakeRows() const;
    void UseStyle(DWORD bits); // of the window; a disabled one has that of the face background, too
    void ReadSystem();
    void UseFont(HFONT font); // null for the system's
    void UseResolution();
    void LayoutClient();
    void PlaceHeader();
    void RefreshSubItemList();

    // The subitem of a header item; invalid argument when there is no such definition.
    int SubItemOf(int headerItem) const;
    void FitColumn(int subitem);

    // What a cell shows, by its record.
    report::CellContents ContentsOf(const _RVITEM& cell) const;

    // ---- Scrolling, and what is painted again

    void ShowRow(int row);
    void FitScrolling();
    void Scroll(int bar, UINT code);
    void UpdateScrollBars();
    void Redraw();
    void InvalidateRows(report::RowRange range);
    void RowsRemoved();
    int SwapRows(int row, int moved);
    int UseBackground(HANDLE bitmap, bool none);

    // ---- Editing

    struct EditedCell
    {
        _RVITEM record; // without its text
        std::string text;
        bool hasText = false;
        CRect rect; // of the whole cell
        std::optional<report::Rect> editor;
    };

    // The cell, if it is there and in view.
    std::optional<EditedCell> FindEdited(int row, int column);
    void ShowEdited(int row, int column);
    HWND MakeEditor(const EditedCell& cell);
    bool StartEdit(const EditedCell& cell, HWND editor, const report::Primer& primer);

    bool IsEditing();
    void GrowEditor();

    // Why the control ends an edit.
    enum class EditEnd
    {
        Wanted,    // by the user: a text that the parent refuses stays, and nothing else happens
        Moved,     // cells are elsewhere, or their editor would be: a refused text is dropped
        Renumbered // items or subitems; so an edit whose end the parent is being told of is dropped, too
    };

    // Ends an edit as when the focus is lost, and writes back what is in the parent's own editor. Returns
    // false if a refused text stays, or if the window is gone afterwards.
    bool FinishEdit(EditEnd why);
    void EndOwn(UINT key, const char* text, EditEnd why);
    bool IsRefused(const char* text);

    // Has OnEditMessage called once no message is at work.
    void PostEditMessage();
    void CheckEditor();
    void EditNext(const report::NextEdit& next);
    void FocusCell(report::CellPlace cell);

    // ---- The tip

    bool MayShowTip();

    // The mouse has moved; `buttons` are MK_*.
    void MovePointer(UINT buttons, CPoint point);
    void FollowPointer(CPoint point);
    void WaitForTip();
    void LookAtTip(); // when its timer comes
    void ShowTip();   // over the cell with the pointer, if there is something to show
    bool ShowTipOf(const report::TipCell& cell, const _RVITEM& record, const report::Rect& rect);

    void ReadHoverTime();

    // No tip as long as the pointer stays where it is; no tip until it moves.
    void DismissTip();
    void ForgetTip();

    // ---- Input and notifications

    void HandleClick(const _RVHITTESTINFO& hit, UINT flags);
    void ToggleBox(const _RVHITTESTINFO& hit);
    void DragSelectionTo(CPoint point);
    bool NotifyKey(UINT key);
    void FillHeader(NMHDR& filled, UINT code);
    bool FillCallbackHeader(NMHDR& filled); // false without a parent
};

inline CRect ToRect(const report::Rect& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

inline report::Rect ToRect(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}
