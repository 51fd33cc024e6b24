// The report control's sorting and finding.
#include "report/ReportCtrlData.h"
#include "report/SortRun.h"
#include "report/model/FindItem.h"

#include <optional>
#include <string>
#include <string_view>

namespace
{

int Order(int number1, int number2)
{
    return (number1 > number2) - (number1 < number2);
}

} // namespace

int CReportCtrl::SortItems(int subitem, int ascending)
{
    if (m_data->IsCallback() || m_data->busy)
        return 0;
    const int column = GetColumnFromSubItem(subitem);
    if (column < 0)
        return 0;
    m_data->header.SetSort(m_data->header.GetItemOfColumn(column), ascending != 0);
    if (!m_data->IsTree() && GetRowCount() == 0)
        return 0;
    if (m_data->IsTree())
        SortTreeRows(subitem, ascending);
    else
        SortFlatRows(subitem, ascending);
    return 1;
}

void CReportCtrl::SortTreeRows(int subitem, int ascending)
{
    Rows(); // hands focus and selection on to the tree as it is
    const bool alone = m_data->selection.IsFocusAlone();
    structTREEITEM* const focused = GetTreeFocus();
    const auto restore = [this, alone, focused] {
        m_data->lastInserted = nullptr;
        BuildTree();
        SetTreeFocus(focused);
        if (alone)
            m_data->selection.SelectFocusAlone();
        Redraw();
    };
    try
    {
        SortRun run(*m_data);
        if (!m_data->sortCallback)
            report::Tree::Walk(m_data->tree.Root(), false, [&](const structTREEITEM* child) {
                AddSortKey(child->item, child->subitem >= 0 ? child->subitem : subitem);
            });
        TreeSort(subitem, m_data->tree.Root(), ascending, 1);
    }
    catch (...)
    {
        restore(); // a comparison has failed: all items are still linked
        throw;
    }
    restore();
}

void CReportCtrl::SortFlatRows(int subitem, int ascending)
{
    report::Selection& selection = m_data->selection;
    const bool alone = selection.IsFocusAlone();
    const int focused = GetItemFromRow(selection.focusRow);
    const auto restore = [&] {
        Redraw();
        if (focused == RVI_NONE)
            return;
        selection.focusRow = GetRowFromItem(focused);
        if (alone)
            selection.SelectFocusAlone();
        ShowRow(selection.focusRow);
    };
    try
    {
        SortRun run(*m_data);
        if (!m_data->sortCallback)
            for (int row = 0; row < GetRowCount(); ++row)
                AddSortKey(GetItemFromRow(row), subitem);
        QuickSort(subitem, ascending, 0, GetRowCount() - 1);
    }
    catch (...)
    {
        restore();
        throw;
    }
    restore();
}

void CReportCtrl::AddSortKey(int item, int subitem)
{
    ItemView view;
    if (ReadItem(item, subitem, RVIM_TEXT, view))
        m_data->sort->keys.Add(item, subitem, view.cell);
    m_data->sort->hasKeys = true;
}

int CReportCtrl::ResortItems()
{
    int subitem = 0;
    int ascending = 0;
    return GetSortSettings(&subitem, &ascending) ? SortItems(subitem, ascending) : 0;
}

int CReportCtrl::GetSortSettings(int* subitem, int* ascending)
{
    const int headerItem = m_data->header.GetSortItem();
    *subitem = headerItem == CReportHeaderCtrl::kNone ? -1 : m_data->header.GetSubItem(headerItem);
    if (*subitem < 0)
        return 0;
    *ascending = m_data->header.IsSortAscending();
    return 1;
}

int CReportCtrl::SetSortCallback(RVSORTCALLBACK callback, __int64 value)
{
    m_data->sortCallback = callback;
    m_data->sortValue = value;
    return 1;
}

RVSORTCALLBACK CReportCtrl::GetSortCallback()
{
    return m_data->sortCallback;
}

unsigned CReportCtrl::GetSortNumber() const
{
    return m_data->sort ? m_data->sort->number : 0;
}

int CReportCtrl::CompareItems(int item1, int subitem1, int item2, int subitem2)
{
    if (m_data->sortCallback)
        return m_data->sortCallback(item1, subitem1, item2, subitem2, m_data->sortValue);
    int result = 0;
    if (m_data->sort && m_data->sort->keys.Compare(item1, subitem1, item2, subitem2, result))
        return result;

    ItemView view1;
    ItemView view2;
    ReadItem(item1, subitem1, RVIM_TEXT, view1);
    const std::string text(view1.cell.text); // the next item may come to lie in its place
    view1.cell.text = text;
    ReadItem(item2, subitem2, RVIM_TEXT, view2);
    return report::CompareCells(view1.cell, view2.cell);
}

int CReportCtrl::CompareItems(_RVITEM* item1, _RVITEM* item2)
{
    // Empty texts count as none, where the other form counts texts that are missing. Deliberate.
    const std::string_view text1 = item1->text ? item1->text : "";
    const std::string_view text2 = item2->text ? item2->text : "";
    if (!text1.empty() || !text2.empty())
        return Order(text1.compare(text2), 0);
    if ((item1->mask | item2->mask) & RVIM_CHECK)
        return Order(item1->check, item2->check);
    return Order(item1->image, item2->image);
}

void CReportCtrl::QuickSort(int subitem, int ascending, int low, int high)
{
    class Range : public report::SortRows
    {
    public:
        Range(CReportCtrl& control, int subitem, int ascending)
            : m_control(control), m_subitem(subitem), m_ascending(ascending)
        {
        }
        int ItemAt(int row) override { return m_control.m_data->rows.ItemAt(row); }
        void Swap(int row1, int row2) override { m_control.m_data->rows.Swap(row1, row2); }
        int Compare(int item, int pivot) override
        {
            return m_control.CompareItems(item, m_subitem, pivot, m_subitem);
        }
        void Sort(int low, int high) override { m_control.QuickSort(m_subitem, m_ascending, low, high); }

    private:
        CReportCtrl& m_control;
        int m_subitem;
        int m_ascending;
    };

    std::optional<SortRun> run;
    if (!m_data->sort)
        run.emplace(*m_data); // called by a subclass
    Range range(*this, subitem, ascending);
    m_data->sort->flat.Run(range, ascending != 0, low, high);
}

void CReportCtrl::TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive)
{
    class Siblings : public report::SortTree
    {
    public:
        Siblings(CReportCtrl& control, int subitem, int ascending, int recursive)
            : m_control(control), m_subitem(subitem), m_ascending(ascending), m_recursive(recursive)
        {
        }
        int Compare(structTREEITEM* item1, structTREEITEM* item2) override
        {
            return m_control.CompareItems(item1->item, SubItemOf(item1), item2->item, SubItemOf(item2));
        }
        bool IsOrdered() const override
        {
            const SortRun& run = *m_control.m_data->sort;
            return m_control.m_data->sortCallback || (run.hasKeys && run.keys.IsOrdered());
        }
        void Sort(structTREEITEM* parent) override
        {
            m_control.TreeSort(m_subitem, parent, m_ascending, m_recursive);
        }

    private:
        int SubItemOf(const structTREEITEM* item) const
        {
            return item->subitem >= 0 ? item->subitem : m_subitem;
        }

        CReportCtrl& m_control;
        int m_subitem;
        int m_ascending;
        int m_recursive;
    };

    std::optional<SortRun> run;
    if (!m_data->sort)
        run.emplace(*m_data); // called by a subclass
    Siblings siblings(*this, subitem, ascending, recursive);
    m_data->sort->tree.Run(siblings, m_data->tree.Resolve(parent), ascending != 0, recursive != 0);
}

int CReportCtrl::FindItem(_RVFINDINFO* info, int subitem, int start)
{
    if (m_data->IsCallback())
        return 0;
    return report::FindItem(info->flags, start, GetItemCount(), [&](int item) {
        ItemView view;
        return ReadItem(item, subitem, RVIM_TEXT, view) &&
               report::Matches(*info, view.cell, view.item->itemData);
    });
}
