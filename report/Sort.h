// Sorting rows and trees of a report control.
#pragma once

#include "ReportItem.h"
#include "report/CellCodec.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace report
{

// The cells of a sort, read once: compared thereafter without touching the items.
class SortKeys
{
public:
    // Takes the key of an item from its cell `subitem`. Items come in any order, each once.
    void Add(int item, int subitem, const Cell& cell);

    // CompareCells of the two cells; false when one of them was not added with this subitem.
    bool Compare(int item1, int subitem1, int item2, int subitem2, int& result) const;

    // Whether the keys have one order whatever is compared with what. Not so when there are empty texts and
    // cells without text among them: those equal each other, but the latter differ by check and image.
    bool IsOrdered() const;

private:
    struct Key
    {
        int subitem = -2; // -2: not added
        int check = -1;
        int image = -1;
        int length = -1;      // of the text; -1 none
        std::size_t text = 0; // offset in m_texts
    };

    std::vector<Key> m_keys; // by item
    std::string m_texts;
    bool m_emptyText = false;
    bool m_noText = false;
};

// What the flat sort works on.
class SortRows
{
public:
    virtual ~SortRows() = default;
    virtual int ItemAt(int row) = 0; // both throw outside the rows
    virtual void Swap(int row1, int row2) = 0;
    virtual int Compare(int item, int pivot) = 0;

    // Sorts the rows from `low` to `high`: leads back to FlatSort::Run, perhaps on a way round.
    virtual void Sort(int low, int high) = 0;
};

// Partitions by the item in the middle, then has both parts sorted. The parts of a range are sorted when Run
// returns, but for ranges deeper than kMaxDepth: those are put on a list that the range at this depth works
// off, so that no input reaches deeper on the stack. One object a sort.
class FlatSort
{
public:
    static constexpr int kMaxDepth = 200;
    void Run(SortRows& rows, bool ascending, int low, int high);

private:
    int m_depth = 0;
    bool m_listing = false;
    std::vector<std::pair<int, int>> m_list;
};

// What the tree sort works on.
class SortTree
{
public:
    virtual ~SortTree() = default;
    virtual int Compare(_TREEITEM* item1, _TREEITEM* item2) = 0;

    // Whether Compare has one order whatever is compared with what, as far as can be told.
    virtual bool IsOrdered() const = 0;

    // Sorts the children of `parent` and all below: leads back to TreeSort::Run, perhaps on a way round.
    virtual void Sort(_TREEITEM* parent) = 0;
};

// Sorts a list of siblings by insertion, each before the first that is not less (ascending; not greater,
// descending), so that equal ones end in reverse order. Long lists that have an order are merged instead,
// with the same result. With `recursive` each item's children are sorted before it; at depth kMaxDepth from a
// list, as in FlatSort. When a comparison throws, every sibling is still linked. One object a sort.
class TreeSort
{
public:
    static constexpr int kMaxDepth = 200;
    static constexpr int kLongList = 64;
    void Run(SortTree& tree, _TREEITEM* parent, bool ascending, bool recursive);

private:
    int m_depth = 0;
    bool m_listing = false;
    std::vector<_TREEITEM*> m_list;
};

// Looks for an item from the neighbour of `start` on, one step up, or down with RVFI_BACKWARD, at a time;
// with RVFI_WRAP over the end and on from the other. The default item -1 lies between the ends and is looked
// at too, and may be the answer. -2 when `matches` is false for all, or `start` is met again; at most one
// walk.
int FindItem(std::uint32_t flags, int start, int count, const std::function<bool(int item)>& matches);

// Whether a cell meets the criteria.
bool Matches(const _RVFINDINFO& info, const Cell& cell, std::int64_t itemData);

} // namespace report
