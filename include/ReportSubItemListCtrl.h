// The list of subitems that a report control does not show as columns.
#pragma once

#include "QmLogApi.h"
#include "afxwin.h"

#include <memory>

class CReportCtrl;

// A list box of the system with an entry for each such subitem, its caption, in the order of the definitions;
// the entry's data is the subitem's number. An entry that is dragged onto the control's header becomes a
// column there, one that is double-clicked becomes the last column; Esc ends a drag. A column dragged off the
// header onto the list comes back here when the control has RVS_DRAGCOLUMNS.
//
// CReportCtrl::SetReportSubItemListCtrl joins the two, and keeps the list filled from then on. Either may end
// first. The window's thread only.
class QMLOG_API CReportSubItemListCtrl : public CWnd
{
public:
    CReportSubItemListCtrl();
    ~CReportSubItemListCtrl() override;

    using CWnd::Create;
    // A child of `parent`, or SubclassWindow for a list box of a dialog. LBS styles: without LBS_SORT and the
    // owner-drawn ones. FALSE on failure.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Fills the list anew: needed where AcceptSubItem has changed its mind.
    void Refresh();

    CReportCtrl* GetReportCtrl() const { return m_report; }

protected:
    // Whether the list offers a subitem that is not shown.
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
