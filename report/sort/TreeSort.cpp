#include "report/sort/TreeSort.h"

#include "report/model/Tree.h"
#include "report/sort/DepthGuard.h"

#include <algorithm>

namespace report
{

namespace
{

// Children that are not yet in their parent's sorted list. They go to its end when a comparison throws.
struct Unsorted
{
    explicit Unsorted(_TREEITEM* of) : parent(of), first(of->firstChild) { parent->firstChild = nullptr; }
    Unsorted(const Unsorted&) = delete;
    Unsorted& operator=(const Unsorted&) = delete;
    ~Unsorted()
    {
        _TREEITEM** end = &parent->firstChild;
        while (*end)
            end = &(*end)->nextSibling;
        *end = first;
    }

    _TREEITEM* parent;
    _TREEITEM* first;
};

// Merges two runs that lie beside each other; of equal items those of the first run come first.
void MergeRuns(const std::vector<_TREEITEM*>& from, std::vector<_TREEITEM*>& to, std::size_t begin,
               std::size_t middle, std::size_t end, bool ascending, const TreeCompare& compare)
{
    std::size_t left = begin;
    std::size_t right = middle;
    for (std::size_t place = begin; place < end; ++place)
    {
        bool takeRight = left == middle;
        if (!takeRight && right < end)
        {
            const int result = compare(from[right], from[left]);
            takeRight = ascending ? result < 0 : result > 0;
        }
        to[place] = takeRight ? from[right++] : from[left++];
    }
}

// Links nothing before all comparisons are done; false, and nothing has changed, if they have no order.
bool MergeSort(SortTree& tree, _TREEITEM* parent, int count, bool ascending, const TreeCompare& compare)
{
    const std::size_t size = static_cast<std::size_t>(count);
    std::vector<_TREEITEM*> from(size);
    std::vector<_TREEITEM*> to(size);
    std::size_t place = size; // from the end, so that equal ones are reversed
    for (_TREEITEM* child = parent->firstChild; child; child = child->nextSibling)
        from[--place] = child;

    for (std::size_t width = 1; width < size; width *= 2)
    {
        for (std::size_t begin = 0; begin < size; begin += 2 * width)
        {
            MergeRuns(from, to, begin, std::min(begin + width, size), std::min(begin + 2 * width, size),
                      ascending, compare);
        }
        if (!tree.IsOrdered())
            return false;
        from.swap(to);
    }

    _TREEITEM** end = &parent->firstChild;
    for (_TREEITEM* child : from)
    {
        *end = child;
        end = &child->nextSibling;
    }
    *end = nullptr;
    return true;
}

} // namespace

void TreeSort::SortBelow(SortTree& tree, _TREEITEM* item)
{
    if (!item->firstChild)
        return;
    if (m_depth < kMaxDepth)
        tree.Sort(item);
    else
        m_list.push_back(item);
}

void TreeSort::Run(SortTree& tree, _TREEITEM* parent, bool ascending, bool recursive)
{
    const DepthGuard guard(m_depth);
    if (m_depth == kMaxDepth)
        m_list.clear(); // a comparison may have thrown
    const TreeCompare compare = [&tree](_TREEITEM* item1, _TREEITEM* item2) {
        return tree.Compare(item1, item2);
    };
    const int count = Tree::Count(parent, false);
    bool belowIsSorted = !recursive;
    bool isSorted = false;
    if (count > kLongList && tree.IsOrdered())
    {
        for (_TREEITEM* child = parent->firstChild; recursive && child; child = child->nextSibling)
            SortBelow(tree, child);
        belowIsSorted = true;
        isSorted = MergeSort(tree, parent, count, ascending, compare);
    }
    if (!isSorted)
    {
        Unsorted rest(parent);
        while (rest.first)
        {
            _TREEITEM* child = rest.first;
            if (!belowIsSorted)
                SortBelow(tree, child);
            _TREEITEM* next = child->nextSibling;
            Tree::Link(parent, kTreeSort, child, ascending, compare);
            rest.first = next;
        }
    }
    while (m_depth == kMaxDepth && !m_list.empty())
    {
        _TREEITEM* item = m_list.back();
        m_list.pop_back();
        tree.Sort(item);
    }
}

} // namespace report
