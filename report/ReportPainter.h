// Paints a report control.
#pragma once

#include "report/ReportSnapshot.h"

#include <optional>

// A paint, or a part of one that a subclass asks for by itself: rows and columns are looked at once for all
// of it. The virtual operations draw what a subclass may draw in another way, and call this for the rest.
class CReportCtrl::Data::Painter
{
public:
    explicit Painter(Data& data)
        : m_data(data), m_outer(data.painting.snapshot), snapshot(m_outer ? *m_outer : m_own.emplace(data))
    {
        data.painting.snapshot = &snapshot;
    }
    ~Painter() { m_data.painting.snapshot = m_outer; }
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    COLORREF PlainColor() const;
    bool IsSelected(int row) const;

    // The colour of a text with this index of the colour table.
    COLORREF TextColorOf(int index, bool isSelected) const;

    bool IsFocused(int row, int column) const; // of a cell

    // What a row is filled with; `plain` where it has nothing of its own.
    COLORREF RowColor(bool isOdd, int backgroundColor, COLORREF plain, bool isSelected) const;

    // A cell's text and what is behind it.
    COLORREF CellTextColor(int row, int column, const _RVITEM& cell) const;
    COLORREF CellColor(int row, int column, const _RVITEM& cell) const;

    // Draws the control into memory and copies it to `dc`, band by band.
    void DrawInBands(CDC& dc, const CRect& clip, HPALETTE palette);

    void DrawFixedRow(CDC& dc, const CRect& clip);
    int DrawRows(CDC& dc, const CRect& clip); // the bottom of the last one that was drawn
    void DrawGrid(CDC& dc, const CRect& clip, int bottom);
    void DrawEmptyText(CDC& dc);

    // The cells of a row's line.
    void DrawCells(CDC& dc, const CRect& rowRect, const CRect& clip, int row, const _RVITEM& item,
                   bool isSelected);

    // The image of a list, where it is within the room that it has; nothing for a number that the list does
    // not have. `blend` is the colour to blend with, if `style` says so.
    void DrawListImage(CDC& dc, const CRect& room, const CRect& picture, CImageList* list, int image,
                       UINT style, int blend) const;

private:
    void DrawCell(CDC& dc, int row, const report::ShownCell& shown, bool isSelected);
    void DrawPreview(CDC& dc, const CRect& rect, int row);
    void DrawFocus(CDC& dc, CRect rect) const;
    bool NotifyDraw(CDC& dc, _RVITEM& cell, const CRect& rect);

    Data& m_data;
    std::optional<Snapshot> m_own; // when there is no outer one
    Snapshot* m_outer;

public:
    Snapshot& snapshot;
};
