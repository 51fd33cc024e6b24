// What a report control holds.
#pragma once

#include "ReportCtrl.h"
#include "ReportSubItemListCtrl.h"
#include "report/header/ReportHeaderCtrl.h"
#include "report/model/DirtyRows.h"
#include "report/model/Geometry.h"
#include "report/model/Input.h"
#include "report/model/Rows.h"
#include "report/sort/Sorting.h"
#include "vkgrafic/GraphicText.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

// The control's state, each part with those who own it. It is also the way back: the models reach the
// virtual operations through it.
struct CReportCtrl::Data : report::Overrides, report::RowsListener
{
    explicit Data(CReportCtrl& owner) : control(owner) {}
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    CReportCtrl& control;
    report::Items items{*this};
    report::Rows rows{items, *this, *this};
    report::Sorting sorting{items, rows, *this};

    // Of all controls
    static inline char stringSeparator = '\t';
    static inline ZEMA::String treeIndent;

    CArray<int, int> rowArray; // the copy that GetItemRowArray hands out

    // Colours, images, fonts
    std::vector<COLORREF> colors;
    CPalette palette;
    CBitmap background;
    CImageList* itemImages = nullptr;
    CImageList* checkImages = nullptr;
    HFONT font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)); // not owned
    CFont boldFont;
    GraphicFont fontMeasures;
    GraphicFont boldMeasures;
    COLORREF systemColors[RVSC_COUNT] = {};
    bool onPalette = false; // the window's display shows only the colours of palettes

    // Properties and styles
    DWORD style = 0;
    int defaultColumnWidth = 200;
    ZEMA::String emptyText = "<Empty list>";
    int gridPenStyle = PS_SOLID;
    DWORD notifyMask = 0xFFFFFFFF;
    DWORD treeStyle = RVS_TREE;
    bool doubleBuffer = true;
    __int64 imageMode = RVIB_NONE;
    COLORREF color = RGB(255, 255, 255);

    // The window
    CReportHeaderCtrl header;
    bool creating = false;
    CReportSubItemListCtrl* subitemList = nullptr;
    report::View view;
    bool redraw = true;
    bool hasFocus = false;
    bool rowsMoved = false;
    unsigned wheelLines = 3;

    report::DirtyRows dirty; // since the last paint
    bool tooFar = false;     // rows or room have changed: what is scrolled may go past the end

    // Painting
    Places* painting = nullptr;
    bool drawing = false;     // DrawCtrl is at work
    bool paintAgain = false;  // a paint was asked for in the midst of one
    std::string drawn;        // the text being drawn
    CDC measuring;            // a memory device context
    SCROLLINFO shown[2] = {}; // by the scroll bars
    int shownHeight = -1;     // of the rows' area when the vertical one was told

    // A drag selection: the timer scrolls while the mouse is outside.
    bool dragging = false;
    CPoint dragPoint;

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
        view.topRow = std::min(view.topRow, count);
        tooFar = true;
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

    // The window's style bits, which everything tests here and not at the window.
    void UseStyle(DWORD bits)
    {
        style = bits;
        rows.SetMode((bits & RVS_CALLBACK) != 0, (bits & RVS_TREEMASK) != 0);
    }

    // Who asks, in a callback; false without a parent.
    bool FillCallbackHeader(NMHDR& filled);

    void RefreshSubItemList()
    {
        if (subitemList)
            subitemList->Refresh();
    }

    // What a cell shows, by its record.
    report::CellContents ContentsOf(const _RVITEM& cell) const;

    // The subitem of a header item; invalid argument when there is no such definition.
    int SubItemOf(int headerItem) const;

    // Null where the display shows all colours.
    HPALETTE PaletteToRealize() const { return onPalette ? static_cast<HPALETTE>(palette) : nullptr; }

    // A colour of the table, as a device context takes it; black past the end.
    COLORREF TableColor(int index) const;
};

// The rows and columns as they are at the moment. Columns are read once, and a row that is asked for again is
// not fetched again: an object for one operation, or one paint.
class CReportCtrl::RowSource : public report::GeometrySource
{
public:
    explicit RowSource(CReportCtrl& control) : m_control(control) {}

    int RowCount() override { return m_control.GetRowCount(); }
    report::RowShape ShapeOf(int row) override { return Row(row).shape; }
    report::CellContents ContentsOf(int row, int subitem) override;
    const std::vector<report::Column>& Columns() override;

    struct FetchedRow
    {
        int row = report::kNoRow;
        report::RowShape shape;
        _RVITEM item; // its text is the preview
        std::string preview;
    };
    FetchedRow& Row(int row);

    // A cell of a row, with its text in `text`; false when there is none.
    bool ReadCell(int row, int subitem, _RVITEM& cell, std::string& text);

    NMHDR callbackHeader = {}; // filled when a callback is first asked

private:
    CReportCtrl& m_control;
    std::vector<report::Column> m_columns;
    bool m_columnsRead = false;
    FetchedRow m_row;
};

// Where everything is at the moment.
struct CReportCtrl::Places
{
    explicit Places(CReportCtrl& control) : rows(control), geometry(control.m_data->view, rows) {}
    RowSource rows;
    report::Geometry geometry;
};

// A paint, or a part of one that a subclass asks for by itself: rows and columns are looked at once for all
// of it.
class CReportCtrl::Painting
{
public:
    explicit Painting(CReportCtrl& control)
        : m_painting(control.m_data->painting), m_outer(m_painting),
          places(m_outer ? *m_outer : m_own.emplace(control))
    {
        m_painting = &places;
    }
    ~Painting() { m_painting = m_outer; }
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;

private:
    std::optional<Places> m_own; // when there is no outer one
    Places*& m_painting;         // the control's
    Places* m_outer;

public:
    Places& places;
};

inline CRect ToRect(const report::Rect& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

inline report::Rect ToRect(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}
