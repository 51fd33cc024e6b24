#include "report/model/Tree.h"

namespace report
{

namespace
{

bool Stands(const _TREEITEM* handle, const _TREEITEM* place)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(handle)) ==
           static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(place));
}

// The item after `item` in depth-first order below `top`, skipping what is below `item` unless `enter`. Null
// after the last.
_TREEITEM* Following(const _TREEITEM* item, const _TREEITEM* top, bool enter)
{
    if (enter && item->firstChild)
        return item->firstChild;
    while (item && item != kTreeRoot && item != top && !item->nextSibling)
        item = item->parent;
    return !item || item == kTreeRoot || item == top ? nullptr : item->nextSibling;
}

void LinkInFront(_TREEITEM* parent, _TREEITEM* item)
{
    item->nextSibling = parent->firstChild;
    parent->firstChild = item;
}

void LinkAfter(_TREEITEM* sibling, _TREEITEM* item)
{
    item->nextSibling = sibling->nextSibling;
    sibling->nextSibling = item;
}

int LinkSorted(_TREEITEM* parent, _TREEITEM* item, bool ascending, const TreeCompare& compare)
{
    _TREEITEM* before = nullptr;
    for (_TREEITEM* child = parent->firstChild; child; child = child->nextSibling)
    {
        const int result = compare(item, child);
        if (ascending ? result <= 0 : result >= 0)
        {
            if (!before)
            {
                LinkInFront(parent, item);
                return result;
            }
            break;
        }
        before = child;
    }
    LinkAfter(before, item);
    return 0;
}

} // namespace

_TREEITEM* Tree::ParentOf(const _TREEITEM* item)
{
    if (item == &m_root)
        return nullptr;
    return item->parent ? Resolve(item->parent) : &m_root;
}

_TREEITEM* Tree::PreviousSibling(const _TREEITEM* item)
{
    const _TREEITEM* const parent = ParentOf(item);
    _TREEITEM* previous = parent ? parent->firstChild : nullptr;
    while (previous && previous->nextSibling != item)
        previous = previous->nextSibling;
    return previous;
}

_TREEITEM* Tree::Next(_TREEITEM* item, unsigned code, _TREEITEM* focused)
{
    if (code == RVGN_FOCUSED)
        return focused;
    if (!item)
        return nullptr;
    switch (code)
    {
    case RVGN_ROOT:
        for (_TREEITEM* above = ParentOf(item); above && above != &m_root; above = ParentOf(item))
            item = above;
        return item;
    case RVGN_NEXT:
        return item->nextSibling;
    case RVGN_PREVIOUS:
        return PreviousSibling(item);
    case RVGN_PARENT:
        return ParentOf(item) != &m_root ? ParentOf(item) : nullptr;
    case RVGN_CHILD:
        return item->firstChild;
    default:
        return nullptr;
    }
}

int Tree::Count(const _TREEITEM* parent, bool recursive)
{
    int count = 0;
    for (const _TREEITEM* item = parent ? parent->firstChild : nullptr; item;
         item = Following(item, parent, recursive))
        ++count;
    return count;
}

bool Tree::IsDescendant(const _TREEITEM* ancestor, const _TREEITEM* item)
{
    if (!ancestor || !item)
        return false;
    do
        item = ParentOf(item);
    while (item && item != ancestor);
    return item != nullptr;
}

_TREEITEM* Tree::VisibleAncestor(_TREEITEM* item, bool& found)
{
    _TREEITEM* visible = item;
    for (_TREEITEM* above = item ? ParentOf(item) : nullptr; above && above != &m_root;
         above = ParentOf(above))
    {
        if (above->expanded == 0)
            visible = above;
    }
    found = visible != item;
    return visible;
}

bool Tree::IsInsertPosition(const _TREEITEM* handle)
{
    return Stands(handle, kTreeFirst) || Stands(handle, kTreeLast) || Stands(handle, kTreeSort);
}

int Tree::Link(_TREEITEM* parent, _TREEITEM* after, _TREEITEM* item, bool ascending,
               const TreeCompare& compare)
{
    if (!parent->firstChild || Stands(after, kTreeFirst))
        LinkInFront(parent, item);
    else if (Stands(after, kTreeSort))
        return LinkSorted(parent, item, ascending, compare);
    else if (Stands(after, kTreeLast))
    {
        _TREEITEM* last = parent->firstChild;
        while (last->nextSibling)
            last = last->nextSibling;
        LinkAfter(last, item);
    }
    else
        LinkAfter(after, item);
    return 0;
}

void Tree::Unlink(_TREEITEM* item)
{
    if (_TREEITEM* previous = PreviousSibling(item))
        previous->nextSibling = item->nextSibling;
    else if (_TREEITEM* parent = ParentOf(item); parent && parent->firstChild == item)
        parent->firstChild = item->nextSibling;
    item->nextSibling = nullptr;
}

void Tree::Walk(_TREEITEM* parent, bool expandedOnly, const std::function<void(_TREEITEM*)>& visit)
{
    for (_TREEITEM* item = parent ? parent->firstChild : nullptr; item;
         item = Following(item, parent, !expandedOnly || item->expanded != 0))
        visit(item);
}

} // namespace report
