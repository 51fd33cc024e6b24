// The header of a report control, as the control's owner meets it.
#pragma once

#include "QmLogApi.h"
#include "afxcmn.h"

#include <utility>

// CReportCtrl::GetHeaderCtrl returns the one object of a control. Header items are counted in the order in
// which they were inserted, columns in the order of display. The control inserts, deletes and renames items;
// leave that to its operations. What CHeaderCtrl offers can be used for the rest, as an image list for
// RVSF_IMAGE.
class QMLOG_API CReportHeaderCtrl : public CHeaderCtrl
{
public:
    static constexpr int kNone = -1;

    // Returns the header item in a column, and the column of a header item; kNone if there is none.
    virtual int GetItemOfColumn(int column) const = 0;
    virtual int GetColumn(int headerItem) const = 0;

    // Returns the subitem that a header item stands for, or -1.
    virtual int GetSubItem(int headerItem) const = 0;

    // The mark of a filtered column, which is shown and has no other effect. It goes with the column. A
    // header item that does not exist is ignored, and has no mark.
    virtual void SetItemFiltered(int headerItem, bool filtered) = 0;
    virtual bool IsItemFiltered(int headerItem) const = 0;

    // Returns the owner's two numbers from the subitem's definition; zeros if there is no such header item.
    virtual std::pair<int, int> GetItemValues(int headerItem) const = 0;

protected:
    CReportHeaderCtrl() = default;
};
