// The list of subitems that a report control does not show as columns.
#pragma once

#include "QmLogApi.h"
#include "afxwin.h"

#include <memory>

class CReportCtrl;

// A list box of the system that shows the caption of each such subitem, in the order of the definitions; the
// data of an entry is the subitem's number. An entry that is dragged onto the control's header becomes a
// column there, and one that is double-clicked becomes the last column; Esc ends a drag. If the control has
// RVS_DRAGCOLUMNS, a column that is dragged off the header comes back to the list.
//
// CReportCtrl::SetReportSubItemListCtrl joins the two, and keeps the list up to date from then on. Either may
// end first. Use the list on its window's thread only.
class QMLOG_API CReportSubItemListCtrl : public CWnd
{
public:
    CReportSubItemListCtrl();
    ~CReportSubItemListCtrl() override;

    using CWnd::Create;
    // Makes a child of `parent`; SubclassWindow takes over a list box of a dialog. The style must not have
    // LBS_SORT or an owner-drawn style. Returns FALSE on failure.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Fills the list again. It is needed only if AcceptSubItem would answer differently.
    void Refresh();

    CReportCtrl* GetReportCtrl() const { return m_report; }

protected:
    // Returns whether the list offers a subitem that is not shown.
    virtual bool AcceptSubItem(int subitem);

    afx_msg void OnDestroy();
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* wnd);
    DECLARE_MESSAGE_MAP()

private:
    friend class CReportCtrl;
    struct Press; // of the mouse on an entry, and the drag that it may become

    void SetReportCtrl(CReportCtrl* report);
    int EntryAt(CPoint point) const;
    int SubItemOf(int entry) const;
    int ColumnUnder(CPoint point);
    void EndPress();

    CReportCtrl* m_report = nullptr;
    std::unique_ptr<Press> m_press;
};
