// Sorting trees.
#pragma once

#include "ReportItem.h"

#include <vector>

namespace report
{

// What the tree sort works on.
class SortTree
{
public:
    virtual ~SortTree() = default;
    virtual int Compare(_TREEITEM* item1, _TREEITEM* item2) = 0;

    // Whether Compare is known to have one order whatever is compared with what. That it has none may turn
    // out while it compares.
    virtual bool IsOrdered() const = 0;

    // Sorts the children of `parent` and all below: leads back to TreeSort::Run, perhaps on a way round.
    virtual void Sort(_TREEITEM* parent) = 0;
};

// Sorts a list of siblings by insertion, each before the first that is not less (ascending; not greater,
// descending), so that equal ones end in reverse order. Long lists are merged instead, with the same
// result, for as long as they have an order. With `recursive` each item's children are sorted before it; at
// depth kMaxDepth from a list, as in FlatSort. When a comparison throws, every sibling is still linked, and
// the object can sort again. One object a sort.
class TreeSort
{
public:
    static constexpr int kMaxDepth = 200;
    static constexpr int kLongList = 64; // longer ones are merged
    void Run(SortTree& tree, _TREEITEM* parent, bool ascending, bool recursive);

private:
    void SortBelow(SortTree& tree, _TREEITEM* item);

    int m_depth = 0;
    std::vector<_TREEITEM*> m_list;
};

} // namespace report
