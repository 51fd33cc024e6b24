// A header that is drawn flat, with marks for sorted and filtered columns, and whose columns can be dragged.
#pragma once

#include "ReportHeaderCtrl.h"
#include "report/header/HeaderFace.h"
#include "report/header/HeaderTip.h"
#include "report/model/HeaderDrag.h"

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class CFHDropWnd;

// What a header item has beside the system's record.
struct _HDITEMEX
{
    bool filtered = false;
    int value1 = 0; // the owner's, kept as they are
    int value2 = 0;
};

// Deals with presses on items itself and leaves dividers to the system's control. The parent is told as by
// that one, and may destroy the window or change the items in answer to anything:
//  HDN_ITEMCLICK  an item was pressed and let go
//  HDN_BEGINDRAG  a column is about to be dragged; TRUE forbids it
//  HDN_ENDDRAG    it was dropped (GetDropResult), at the order HDI_ORDER, which is -1 off the header; after
//                 FALSE, a column that moves does so
// Esc, the loss of the mouse and a change of the items end a drag without a drop. The owner scrolls the
// header by moving it beyond its parent's client area: the part that is seen takes drops.
class CFlatHeaderCtrl : public CReportHeaderCtrl
{
public:
    CFlatHeaderCtrl();
    ~CFlatHeaderCtrl() override;

    void SetItemFiltered(int index, bool filtered) override;
    bool IsItemFiltered(int index) const override;

    // The item that keys change, drawn with a frame; kNone for none. It goes with the item.
    void MarkItem(int index);
    int GetMarkedItem() const { return m_markedItem; }

    // Tells the parent of a click on an item, which may be kNone.
    void ClickItem(int index);

    void SetItemValues(int index, int value1, int value2); // ignored if there is no such item
    std::pair<int, int> GetItemValues(int index) const override
    {
        const bool found = index >= 0 && index < static_cast<int>(m_extras.size());
        const _HDITEMEX extra = found ? m_extras[static_cast<std::size_t>(index)] : _HDITEMEX();
        return {extra.value1, extra.value2};
    }

    // Dots per inch, by which margins and marks grow.
    void SetResolution(int dpi) { m_dpi = dpi; }

    // Whether a divider is being dragged. The item changes once more when that has ended.
    bool IsTracking() const { return m_trackedItem != kNone; }

    // Of the last drag that ended in a drop.
    report::DropResult GetDropResult() const { return m_dropResult; }

    // The item under the point of the last right click; kNone for none.
    int GetRightClickedItem() const { return m_rightClickedItem; }

    // For an entry that is dragged here from elsewhere: marks the place in display order at which it would
    // come in; kNone, and no mark, off the header.
    int ShowDropMark(CPoint screen);
    void HideDropMark();

    // Calls `action` at once, or, while the system's control is at work, as soon as it has finished: what it
    // tells its owner is no time to destroy it.
    void WhenIdle(std::function<void()> action);

    HeaderFace GetFace(int index) const;
    void DrawFace(CDC& dc, const CRect& rect, const HeaderFace& face) const; // in the header's font

protected:
    // The items from left to right.
    std::vector<int> GetOrder() const;

    // Whether a message that may have changed items, or their order, has come since the last call. While the
    // system's control is at work they may change at any time.
    bool TakeItemsChanged() { return std::exchange(m_mayHaveChanged, m_systemCalls > 0); }

    // Whether the owner takes a column away that is dropped off the header.
    virtual bool IsRemovedByDrop() const { return false; }

    // What a tip over the item says; empty for no tip.
    virtual std::string GetTip(int) const { return {}; }

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnSysColorChange();
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnRButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* wnd);
    afx_msg LRESULT OnInsertItem(WPARAM index, LPARAM item);
    afx_msg LRESULT OnDeleteItem(WPARAM index, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    struct Press; // of the mouse on an item, and the drag that it may become

    template <typename Call> LRESULT CallSystem(Call call);
    void StopTracking();
    report::HeaderDrag GetDrag(int index) const;
    HDHITTESTINFO Hit(CPoint point) const;
    int ItemUnder(CPoint point) const; // kNone for none
    void ShowTip(CPoint point);
    void BeginPress(int index, CPoint point);
    bool BeginDrag();
    void MoveDrag(CPoint point);
    void ShowMark(const report::HeaderDrop& drop);
    void Drop(CPoint point);
    void EndPress();
    bool Notify(UINT code, int index, HDITEM* item, LRESULT& answer);
    void RedrawItem(int index);

    std::vector<_HDITEMEX> m_extras;
    bool m_mayHaveChanged = true;
    unsigned m_itemChanges = 0; // items that came and went, of all windows
    std::unique_ptr<Press> m_press;
    std::unique_ptr<CFHDropWnd> m_mark;
    HeaderTip m_tip;
    int m_systemCalls = 0; // one within the other
    std::deque<std::function<void()>> m_whenIdle;
    int m_trackedItem = kNone;
    int m_markedItem = kNone;
    CPoint m_trackPoint; // where the mouse was last
    int m_rightClickedItem = kNone;
    int m_dpi = 96;
    report::DropResult m_dropResult = report::DropResult::OnHeader;
};
