#include "report/sort/Sorting.h"

#include <string>

namespace report
{

// Begins a sort unless one runs already, as when a subclass calls QuickSort by itself; ends what it began.
class Sorting::Running
{
public:
    explicit Running(Sorting& sorting) : m_run(sorting.m_run), m_begins(!m_run)
    {
        if (!m_begins)
            return;
        m_run.emplace(sorting.m_rows);
        sorting.m_number += sorting.m_number + 1 == 0 ? 2 : 1; // never 0
    }
    ~Running()
    {
        if (m_begins)
            m_run.reset();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    std::optional<Run>& m_run;
    bool m_begins;
};

// Rows from one to another.
class Sorting::Range : public SortRows
{
public:
    Range(Sorting& sorting, int subitem, int ascending)
        : m_sorting(sorting), m_subitem(subitem), m_ascending(ascending)
    {
    }
    int ItemAt(int row) override { return m_sorting.m_rows.Map().ItemAt(row); }
    void Swap(int row1, int row2) override { m_sorting.m_rows.Map().Swap(row1, row2); }
    int Compare(int item, int pivot) override
    {
        return m_sorting.m_overrides.CompareItems(item, m_subitem, pivot, m_subitem);
    }
    void Sort(int low, int high) override
    {
        m_sorting.m_overrides.QuickSort(m_subitem, m_ascending, low, high);
    }

private:
    Sorting& m_sorting;
    int m_subitem;
    int m_ascending;
};

// The children of a tree item.
class Sorting::Siblings : public report::SortTree
{
public:
    Siblings(Sorting& sorting, int subitem, int ascending, int recursive)
        : m_sorting(sorting), m_subitem(subitem), m_ascending(ascending), m_recursive(recursive)
    {
    }
    int Compare(_TREEITEM* item1, _TREEITEM* item2) override
    {
        Compared wanted = {item1->item, SubItemOf(item1), item2->item, SubItemOf(item2), 0};
        wanted.result =
            m_sorting.m_overrides.CompareItems(wanted.item1, wanted.subitem1, wanted.item2, wanted.subitem2);
        // A subclass that compares by itself, or makes something else of the answer, may have any order.
        m_isBuiltIn = m_isBuiltIn && m_sorting.m_compared == wanted;
        return wanted.result;
    }
    bool IsOrdered() const override
    {
        const Run& run = *m_sorting.m_run;
        const bool hasOrder =
            m_sorting.m_callback ? m_sorting.m_callbackIsOrdered : run.hasKeys && run.keys.IsOrdered();
        return m_isBuiltIn && hasOrder;
    }
    void Sort(_TREEITEM* parent) override
    {
        m_sorting.m_overrides.TreeSort(m_subitem, parent, m_ascending, m_recursive);
    }

private:
    int SubItemOf(const _TREEITEM* item) const { return item->subitem >= 0 ? item->subitem : m_subitem; }

    Sorting& m_sorting;
    int m_subitem;
    int m_ascending;
    int m_recursive;
    bool m_isBuiltIn = true;
};

void Sorting::SetCallback(SortCallback callback, std::int64_t value, bool isOrdered)
{
    m_callback = callback;
    m_value = value;
    m_callbackIsOrdered = isOrdered;
}

void Sorting::Sort(int subitem, int ascending)
{
    if (m_rows.IsTree())
        SortAllSiblings(subitem, ascending);
    else
        SortAllRows(subitem, ascending);
}

void Sorting::SortAllSiblings(int subitem, int ascending)
{
    m_rows.Count(); // hands focus and selection on to the tree as it is
    Selection& selection = m_rows.selection;
    const bool alone = selection.IsFocusAlone();
    _TREEITEM* const focused = m_rows.TakeFocus();
    const auto restore = [&] {
        m_rows.Build();
        m_rows.PutFocus(focused);
        if (alone)
            selection.SelectFocusAlone();
    };
    try
    {
        const Running running(*this);
        if (!m_callback)
            Tree::Walk(m_rows.GetTree().Root(), false, [&](const _TREEITEM* child) {
                AddKey(child->item, child->subitem >= 0 ? child->subitem : subitem);
            });
        m_overrides.TreeSort(subitem, m_rows.GetTree().Root(), ascending, 1);
    }
    catch (...)
    {
        restore(); // all items are still linked
        throw;
    }
    restore();
}

void Sorting::SortAllRows(int subitem, int ascending)
{
    Selection& selection = m_rows.selection;
    const int count = m_rows.Count();
    const bool alone = selection.IsFocusAlone();
    const int focused = m_rows.ItemAt(selection.focusRow);
    const auto restore = [&] {
        selection.focusRow = m_rows.RowOf(focused);
        if (alone)
            selection.SelectFocusAlone();
    };
    try
    {
        const Running running(*this);
        for (int row = 0; !m_callback && row < count; ++row)
            AddKey(m_rows.ItemAt(row), subitem);
        m_overrides.QuickSort(subitem, ascending, 0, count - 1);
    }
    catch (...)
    {
        restore(); // the rows are still the same ones
        throw;
    }
    restore();
}

void Sorting::AddKey(int item, int subitem)
{
    FetchedCell fetched;
    if (m_items.Fetch(item, subitem, RVIM_TEXT, fetched))
        m_run->keys.Add(item, subitem, fetched.cell);
    m_run->hasKeys = true;
}

int Sorting::Compare(int item1, int subitem1, int item2, int subitem2)
{
    const int result = m_callback ? m_callback(item1, subitem1, item2, subitem2, m_value)
                                  : CompareKeys(item1, subitem1, item2, subitem2);
    m_compared = {item1, subitem1, item2, subitem2, result};
    return result;
}

int Sorting::CompareKeys(int item1, int subitem1, int item2, int subitem2)
{
    int result = 0;
    if (m_run && m_run->keys.Compare(item1, subitem1, item2, subitem2, result))
        return result;
    FetchedCell fetched1;
    FetchedCell fetched2;
    m_items.Fetch(item1, subitem1, RVIM_TEXT, fetched1);
    const std::string text(fetched1.cell.text); // the next item may come to lie in its place
    fetched1.cell.text = text;
    m_items.Fetch(item2, subitem2, RVIM_TEXT, fetched2);
    return CompareCells(fetched1.cell, fetched2.cell);
}

void Sorting::QuickSort(int subitem, int ascending, int low, int high)
{
    const Running running(*this);
    Range range(*this, subitem, ascending);
    m_run->flat.Run(range, ascending != 0, low, high);
}

void Sorting::TreeSort(int subitem, _TREEITEM* parent, int ascending, int recursive)
{
    const Running running(*this);
    Siblings siblings(*this, subitem, ascending, recursive);
    m_run->tree.Run(siblings, m_rows.GetTree().Resolve(parent), ascending != 0, recursive != 0);
}

} // namespace report
