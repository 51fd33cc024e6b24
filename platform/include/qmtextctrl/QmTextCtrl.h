// The text window: rows of text in a fixed grid, with scrolling, caret, selection and a find bar.
#pragma once

#include "afxwin.h"
#include "qmtextctrl/TextView.h"
#include "vkgrafic/GraphicText.h"
#include "zemacore/ZemaApi.h"

#include <functional>
#include <limits>
#include <memory>
#include <string>

class CQmTextFindBar;
class CQmTextTip;

// The colours of a text window that has its own. In high contrast they are the system's all the same.
struct QmTextColors
{
    COLORREF window;
    COLORREF text;
    COLORREF selection; // with the focus in the window or in its find bar
    COLORREF selectionText;
    COLORREF inactiveSelection;
    COLORREF inactiveSelectionText;
};

// A window of text rows that a derived class supplies and draws.
//
// A row's text begins at its own left edge. Its columns are its bytes, and its characters stand in cells of
// one width, as VkGrafic::TextCells lays them out; caret and selection lie between characters, and an
// operation that is given a column within a character takes that character's first. Rows are asked for while
// they are needed and never kept: GetRowCount, GetRowLeft, GetRowColumnCount and GetRowCells may change
// between any two calls, and who changes them calls OnRowsChanged. A repaint draws the visible rows that need
// it, in memory, and copies them to the window once.
//
// The window may be destroyed, and its object deleted, in OnTextMenu and OnUserScroll. A derived class that
// is deleted while its window exists destroys the window in its own destructor. The window's thread only.
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

    // Columns of a row's text, a line feed counting as one, and pixels from the text area's left edge,
    // unscrolled, to the text; 0 by default. The text area has all of the window but its margin and strip.
    int GetRowColumnCount(int row) override = 0;
    int GetRowLeft(int row) override;

    // Lays out a row's text (`cells.Take`), at least as far as it is drawn; what lies behind takes a cell a
    // column. By default all does, which is right for ASCII.
    void GetRowCells(int row, VkGrafic::TextCells& cells) override;

    // Pixels; by default as high as the font, and as wide as one of its characters.
    virtual int GetRowHeight();
    int GetColumnWidth() const;

    // What GraphicText knows of the window's font, for DrawRow.
    const GraphicFont& GetGraphicFont() const { return m_graphicFont; }

    // Draws the text (GraphicText::DrawCells) and marks of `row` from (x, y), where GetRowLeft lies after
    // scrolling. Marks may reach half a row's height into the row below. The background is painted, the font
    // selected and the background mode transparent. A row of which something is selected is drawn a second
    // time, clipped to the selected cells; colours come from GetDrawColor.
    virtual void DrawRow(CDC& dc, int x, int y, int row) = 0;

    // Pixels at the left edge that do not scroll across; 0 by default. When it is another one than before,
    // call MetricsChanged.
    virtual int GetMarginWidth();

    // Draws a row's part of the margin, below what DrawRow has drawn; nothing by default. The background is
    // painted, the font selected and the background mode transparent.
    virtual void DrawMargin(CDC& dc, const CRect& margin, int row);

    // Whether a client point is in the margin, beside a row or below the last one.
    bool IsInMargin(CPoint point) const;

    // How many rows at the window's top must stay free to show `row`, because something covers them then: 0
    // by default. What is shown is scrolled below them, and the window's first rows are covered as far as the
    // first row below wants it, at most half of them.
    int GetRowsAbove(int row) override;

    // Draws what covers the first `rows` rows, in all of `area`, above text and margin; nothing by default.
    virtual void DrawCover(CDC& dc, const CRect& area, int rows);

    // The left button on the covered row `line`, counted from 0. False, the default, for a click on the text.
    virtual bool OnCoverClick(int line, CPoint point);

    // A child window of the host's, `width` pixels wide, between text and scroll bar; null for none. It is as
    // high as the text and stays beside it when sizes change. Not owned.
    void SetStrip(CWnd* strip, int width);

    // The row height, the column count or the margin's width has changed.
    void MetricsChanged();

    // Colours of its own; null, the default, for the system's.
    void SetTextColors(const QmTextColors* colors);
    bool HasOwnColors() const; // false in high contrast, too
    bool IsHighContrast() const { return m_colors.highContrast; }
    COLORREF GetWindowColor() const { return m_colors.window; }

    // Told of Ctrl with the wheel, +, - and 0: steps to a larger font, below 0 to a smaller one, 0 for the
    // usual one. Without it, the default, the wheel scrolls and these keys do nothing.
    void SetZoom(std::function<void(int steps)> zoom);

    // Shows a line that does not fit into the window in a tip, as a whole, while the pointer rests on it; off
    // by default.
    void SetLineTips(bool on);

    // The line of a row for its tip; false for none, as always by default.
    virtual bool GetTipText(int row, std::string& text);

    // The colour to draw text in that is `wanted` on the usual background: the selection's text colour within
    // the selection, the window text colour in high contrast or where `wanted` could not be read.
    COLORREF GetDrawColor(COLORREF wanted) const;

    // Looks for `text` in `row` from `column` on, which is at most the row's length; `column` receives the
    // place. False when the row cannot be read, as always by default. The find bar passes capital letters
    // only.
    virtual bool Find(int row, int& column, const char* text, bool& found);

    // Rows were added, removed or replaced: scroll ranges, caret and selection are brought back within bounds
    // and the window is painted. Painting and bounds are the whole of it: rows keep their numbers.
    virtual void OnRowsChanged();

    // `delta` rows were added (or, below 0, removed) before row `row`: caret, selection and scroll position
    // stay with their text; what stood in a removed row goes to the row above. Call OnRowsChanged afterwards.
    void MoveRows(int row, int delta);

    // Begins again at the first row: caret, selection and scrolling go there.
    virtual void Reload();

    // Scrolls as little as needed to show `rowCount` rows and `columnCount` columns from there.
    void EnsureVisible(int row, int column, int rowCount, int columnCount);

    // Puts the caret there, bounds kept, drops the selection and shows the row: when it was out of view, at
    // the bottom edge if `bottom` is set, else at the top edge.
    void Focus(int row, int column, bool bottom);

    // The same for a place that is to be looked at: when it is out of view or near an edge, the row comes to
    // about a third of the window's height. `columnCount` columns from there on are shown with a few around.
    void FocusInContext(int row, int column, int columnCount);

    // Selects from the caret, which stays, to that place, bounds kept; column 0x7FFFFFFF is the row's end.
    void Select(int row, int column);
    void SelectAll();

    // What lies under a client point. The column is that of the character there; to the left of the row's
    // left edge it is below 0, and behind the text it counts on, a cell each. Below the last row the answer
    // is false and `row` the row count.
    bool HitTest(CPoint point, int& row, int& column);

    int GetCaretRow() const;
    int GetCaretColumn() const;

    // The selection, begin before end; both are the caret when nothing is selected.
    int GetSelectionBeginRow() const;
    int GetSelectionBeginColumn() const;
    int GetSelectionEndRow() const;
    int GetSelectionEndColumn() const;

    // How many rows at the top are covered now, and which of them lies under a client point; -1 for none.
    int GetCoveredRows();
    int GetCoveredLine(CPoint point);

    // The first row of the window, and whether the last row is in view.
    int GetTopRow() const;
    bool IsAtEnd();

    // What to find; the find bar sets it too.
    void SetFindText(const char* text);
    const char* GetFindText() const;

    // Shows the find bar and puts the focus there; CloseFind hides it and takes the focus back.
    virtual void FindInput();
    virtual void CloseFind();

    // Find the next match from the selection's end or the caret on, or the last one that begins before them,
    // around the end once. The match, as many characters as the text has, is selected and shown. False when
    // there is none. Rows that cannot be read are passed over; nothing else happens meanwhile.
    virtual bool FindNext();
    virtual bool FindPrevious();

protected:
    // Prepares the new window; derived classes begin theirs with their own steps and end with this.
    virtual BOOL CreateCommon();

    // The `count` rows from `first` on are about to be drawn: once a repaint, for reading them in one go.
    virtual void PrepareRows(int first, int count);

    // Fills and shows the context menu at a screen point; nothing by default.
    virtual void OnTextMenu(CPoint screenPoint);

    // The user moved the view: wheel, scroll bar, keys, autoscroll or a search. Nothing by default.
    virtual void OnUserScroll();

    // A child window in place of the find bar at the bottom edge, `height` pixels high; null for none, the
    // default. It stays there when sizes change. Not owned.
    void SetBar(CWnd* bar, int height);

    // Whether DrawRow draws what is selected, on the selection's background.
    bool IsDrawingSelection() const { return m_drawingSelection; }

    // Whether DrawRow draws a row that ends above what is painted: nothing of it is seen but what reaches
    // beyond the row's lower edge.
    bool IsAbovePainted(int y) const;

    BOOL PreCreateWindow(CREATESTRUCT& create) override;

    // Derived classes hand on what they do not deal with. Timers 1 and 2 are this class's own.
    afx_msg void OnDestroy();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSysColorChange();
    afx_msg void OnSettingChange(UINT action, LPCSTR section);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point); // a click by default
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnMouseHWheel(UINT flags, short delta, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* wnd);
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg LRESULT OnSetFont(WPARAM font, LPARAM redraw);
    afx_msg LRESULT OnGetFont(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Colors
    {
        COLORREF window = 0; // in use now
        COLORREF windowText = 0;
        COLORREF selection = 0; // with the focus here or in the find bar, or elsewhere
        COLORREF selectionText = 0;
        bool highContrast = false;
    };

    void LoadColors();
    void LoadSelectionColors(bool isActive);
    void MeasureFont();
    void UpdateMetrics();
    CRect GetRowArea() const; // margin and text
    CRect GetTextArea() const;
    void LayOutStrip();
    bool Zoom(int steps);

    // Runs a change of the view and shows it; the user's own ends with OnUserScroll when something scrolled.
    template <typename Change> void Apply(Change change);
    template <typename Change> void ApplyUser(Change change);
    void ShowChange(const textview::State& before);
    void InvalidateText();
    void InvalidateRows(textview::Range rows);
    void UpdateScrollBars();
    void UpdateScrollBar(int bar, const textview::ScrollRange& range, textview::ScrollRange& shown);
    void UpdateCaret();

    textview::Range RowsToDraw(const CRect& area);
    void DrawRows(CDC& dc, const CRect& area);
    void DrawMargins(CDC& dc, const CRect& area, textview::Range rows);
    void DrawSelection(CDC& dc, const CRect& area, int row);
    void EndDrag();
    int GetTipRow(CPoint point);
    void WatchTip(CPoint point);
    void OnTipTimer();
    bool ShowTip(int row);
    void HideTip();
    int GetBarHeight() const;
    void LayOutFindBar();
    bool FindForward(textview::Cell& match);
    bool FindBackward(textview::Cell& match);
    bool FindLastBefore(int row, int limit, int& column);
    bool ShowMatch(bool found, textview::Cell match);

    textview::TextView m_view;
    bool m_prepared = false; // CreateCommon is through and the window not destroyed: rows may be asked for
    HFONT m_font = nullptr;  // not owned
    GraphicFont m_graphicFont;
    int m_fontHeight = 1;
    int m_columnWidth = 1;
    CSize m_client;
    textview::ScrollRange m_rowScroll; // what the scroll bars show
    textview::ScrollRange m_pixelScroll;
    Colors m_colors;
    std::unique_ptr<QmTextColors> m_ownColors; // null for the system's
    CWnd* m_strip = nullptr;
    int m_stripWidth = 0;
    int m_coveredRows = 0; // as it was painted
    std::function<void(int)> m_zoom;
    textview::WheelSteps m_zoomWheel;
    bool m_focused = false;
    bool m_drawingSelection = false;
    int m_paintedTop = std::numeric_limits<int>::min(); // while rows are painted
    bool m_dragging = false;
    CPoint m_dragPoint;
    std::string m_findText;
    std::unique_ptr<CQmTextTip> m_tip;         // null while they are off
    int m_tipRow = -1;                         // that the pointer is over
    std::unique_ptr<CQmTextFindBar> m_findBar; // made when it is first shown
    CWnd* m_bar = nullptr;                     // in its place
    int m_barHeight = 0;
};
