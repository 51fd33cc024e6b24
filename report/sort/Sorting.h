// Sorting the rows of a report control.
#pragma once

#include "report/model/Rows.h"
#include "report/sort/FlatSort.h"
#include "report/sort/SortKeys.h"
#include "report/sort/TreeSort.h"

#include <cstdint>
#include <optional>

namespace report
{

// Less than, equal to or greater than 0; the last argument is the one that was set with it.
using SortCallback = int (*)(int item1, int subitem1, int item2, int subitem2, std::int64_t value);

// Rows and siblings are compared by the virtual CompareItems and sorted by the virtual QuickSort and
// TreeSort, whose own versions are here. Keys are read at the beginning of a sort, and the built-in
// comparison takes them. While a sort runs, items stay.
class Sorting
{
public:
    Sorting(Items& items, Rows& rows, Overrides& overrides)
        : m_items(items), m_rows(rows), m_overrides(overrides)
    {
    }
    Sorting(const Sorting&) = delete;
    Sorting& operator=(const Sorting&) = delete;

    // Compares for the built-in comparison; null for none. `isOrdered`: it is known to have one order,
    // whatever it compares with what.
    void SetCallback(SortCallback callback, std::int64_t value, bool isOrdered);
    SortCallback Callback() const { return m_callback; }

    // 0 while nothing is being sorted, else a number that no earlier sort had.
    unsigned Number() const { return m_run ? m_number : 0; }

    // Sorts all rows, or each list of siblings and makes the rows. The focus stays on its item, and a
    // selected row that has the focus stays selected. If a comparison throws, no row is lost.
    void Sort(int subitem, int ascending);

    // ---- What the virtual operations do unless they are overridden

    int Compare(int item1, int subitem1, int item2, int subitem2);
    void QuickSort(int subitem, int ascending, int low, int high);
    void TreeSort(int subitem, _TREEITEM* parent, int ascending, int recursive);

private:
    // A sort while it runs.
    struct Run
    {
        explicit Run(Rows& rows) : busy(rows) {}

        Rows::Busy busy;
        SortKeys keys; // none if the owner compares or a subclass sorts
        bool hasKeys = false;
        report::FlatSort flat;
        report::TreeSort tree;
    };
    class Running;
    class Range;
    class Siblings;

    // The last comparison that reached Compare.
    struct Compared
    {
        int item1, subitem1, item2, subitem2, result;
        bool operator==(const Compared&) const = default;
    };

    void SortAllRows(int subitem, int ascending);
    void SortAllSiblings(int subitem, int ascending);
    void AddKey(int item, int subitem);
    int CompareKeys(int item1, int subitem1, int item2, int subitem2);

    Items& m_items;
    Rows& m_rows;
    Overrides& m_overrides;
    SortCallback m_callback = nullptr;
    std::int64_t m_value = 0;
    bool m_callbackIsOrdered = false;
    std::optional<Run> m_run;
    unsigned m_number = 0; // of the last sort
    Compared m_compared = {};
};

} // namespace report
