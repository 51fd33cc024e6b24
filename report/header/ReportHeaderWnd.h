// The header of a report control: one item for each column, which knows its subitem.
#pragma once

#include "report/header/FlatHeaderCtrl.h"
#include "report/model/Geometry.h"

#include <string>
#include <vector>

// Header items are counted in the order in which they came, columns in that of display. One header item may
// carry the sort mark.
class ReportHeaderWnd : public CFlatHeaderCtrl
{
public:
    int GetItemOfColumn(int column) const override;
    int GetColumn(int headerItem) const override;
    int GetSubItem(int headerItem) const override;

    // Returns the width of a header item; 0 if there is no such item.
    int GetWidth(int headerItem) const;

    // The first column that shows a subitem; kNone when none does.
    int GetColumnOfSubItem(int subitem) const;

    // `column` is where it is displayed, from 0 to the number of columns. The new header item, or kNone.
    int InsertColumn(int column, HDITEM& definition);
    void DeleteColumn(int column);

    // Puts a column at another place; both are columns that there are.
    void MoveColumn(int from, int to);

    // Gives a header item a new definition; its sort mark stays.
    void ReplaceColumn(int headerItem, HDITEM definition);

    // The subitem numbers of all columns from `subitem` on change by `by`.
    void RenumberSubItems(int subitem, int by);

    // All columns from left to right. They are read again only after something may have changed them.
    const std::vector<report::Column>& GetColumns();

    // The header item that carries the sort mark; kNone for none.
    void SetSort(int headerItem, bool ascending);
    int GetSortItem() const { return m_sortItem; }
    bool IsSortAscending() const { return m_sortAscending; }

    // What the tip of a column says whose click sorts; the first "%s" stands for its caption.
    void SetSortCaption(const char* format) { m_sortCaption = format; }

    // What the control's styles let the user do here.
    void SetUse(bool removesByDrop, bool sortsByClick)
    {
        m_removesByDrop = removesByDrop;
        m_sortsByClick = sortsByClick;
    }

protected:
    std::string GetTip(int headerItem) const override;
    bool IsRemovedByDrop() const override;

private:
    void ShowSortMark(int headerItem, int mark);

    std::vector<report::Column> m_columns;
    std::string m_sortCaption = "Sort by: %s";
    int m_sortItem = kNone;
    bool m_sortAscending = true;
    bool m_removesByDrop = false;
    bool m_sortsByClick = false;
};
