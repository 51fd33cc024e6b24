// The text window: rows of text in a fixed grid, with scrolling, caret, selection and a find bar.
#pragma once

#include "afxwin.h"
#include "qmtextctrl/TextView.h"
#include "zemacore/ZemaApi.h"

// A window of text rows that a derived class supplies and draws.
//
// A row's text begins at its own left edge and holds one column a character, all of one width. Rows are
// asked for while they are needed and never kept: GetRowCount, GetRowLeft and GetRowColumnCount may change
// between any two calls, and who changes them calls OnRowsChanged. A repaint draws the visible rows that
// need it, in memory, and copies them to the window once.
class QMPLATFORM_API CQmTextCtrl : public CWnd, private textview::Rows
{
public:
    CQmTextCtrl();
    ~CQmTextCtrl() override;

    // Creates the window and calls CreateCommon; FALSE when either fails.
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Rows, and columns that can be scrolled to.
    int GetRowCount() override = 0;
    virtual int GetColumnCount() = 0;

    // Columns of a row's text, and pixels from the window's left edge, unscrolled, to the text.
    int GetRowColumnCount(int row) override = 0;
    int GetRowLeft(int row) override;

    // Pixels; by default as high as the font, and as wide as one of its characters.
    virtual int GetRowHeight();
    int GetColumnWidth() const;

    // Draws the text and marks of `row` from (x, y), where GetRowLeft lies after scrolling. The background is
    // painted. The device context may be clipped; colours come from GetDrawColor.
    virtual void DrawRow(CDC& dc, int x, int y, int row) = 0;

    // The colour to draw text in that is `wanted` on the usual background: the selection's text colour within
    // the selection, the window text colour in high contrast or where `wanted` could not be read.
    COLORREF GetDrawColor(COLORREF wanted) const;

    // Looks for `text` in `row` from `column` on; `column` receives the place. False when the row cannot be
    // read. The find bar passes capital letters only.
    virtual bool Find(int row, int& column, const char* text, bool& found);

    // Rows were added, removed or replaced: scroll ranges, caret and selection are brought back within bounds
    // and the window is painted. Painting and bounds are the whole of it: rows keep their numbers.
    virtual void OnRowsChanged();

    // `delta` rows were added (or, below 0, removed) before row `row`: caret, selection and scroll position
    // stay with their text. Call OnRowsChanged afterwards.
    void MoveRows(int row, int delta);

    // Begins again at the first row: caret, selection and scrolling go there.
    virtual void Reload();

    // Scrolls as little as needed to show `rowCount` rows and `columnCount` columns from there.
    void EnsureVisible(int row, int column, int rowCount, int columnCount);

    // Puts the caret there, bounds kept, drops the selection and shows the row: at the bottom edge when it
    // was out of view and `bottom` is set, else at the top edge.
    void Focus(int row, int column, bool bottom);

    // Selects from the caret, which stays, to that place, bounds kept.
    void Select(int row, int column);
    void SelectAll();

    // What lies under a client point. The column is counted from the row's left edge, below 0 to the left of
    // it. Below the last row the answer is false and `row` the row count.
    bool HitTest(CPoint point, int& row, int& column);

    int GetCaretRow() const;
    int GetCaretColumn() const;

    // The selection, begin before end; both are the caret when nothing is selected.
    int GetSelectionBeginRow() const;
    int GetSelectionBeginColumn() const;
    int GetSelectionEndRow() const;
    int GetSelectionEndColumn() const;

    // The first row of the window, and whether the last row is in view.
    int GetTopRow() const;
    bool IsAtEnd();

    // Find commands, from the caret on, around the end. FindInput shows the find bar and puts the focus
    // there.
    void FindInput();
    bool FindNext();
    bool FindPrevious();

protected:
    // Prepares the new window; derived classes begin theirs with their own steps and end with this.
    virtual BOOL CreateCommon();

    // Fills and shows the context menu at a screen point; nothing by default.
    virtual void OnTextMenu(CPoint screenPoint);

    // The user moved the view: wheel, scroll bar, keys or autoscroll. Nothing by default.
    virtual void OnUserScroll();
};
