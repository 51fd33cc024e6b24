// The tree of a report control: links, order of rows, navigation.
#pragma once

#include "ReportItem.h"

#include <functional>
#include <vector>

namespace report
{

// Where to link a tree item: the four handles stand for a place and not for an item. The last three are told
// by their low 32 bits alone, a shortcut that callers rely on.
_TREEITEM* const kTreeRoot = reinterpret_cast<_TREEITEM*>(static_cast<std::intptr_t>(-0x10000));
_TREEITEM* const kTreeFirst = reinterpret_cast<_TREEITEM*>(static_cast<std::intptr_t>(-0xFFFF));
_TREEITEM* const kTreeLast = reinterpret_cast<_TREEITEM*>(static_cast<std::intptr_t>(-0xFFFE));
_TREEITEM* const kTreeSort = reinterpret_cast<_TREEITEM*>(static_cast<std::intptr_t>(-0xFFFD));

// Compares two tree items for a sort: less than, equal to or greater than 0.
using TreeCompare = std::function<int(_TREEITEM* item1, _TREEITEM* item2)>;

// Does not own the tree items, which may be any number of levels deep: nothing here recurses. Top-level items
// hang under the root; an owner, who cannot know its address, may also say kTreeRoot or null for their
// parent.
class Tree
{
public:
    Tree() = default;
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    _TREEITEM* Root() { return &m_root; }

    // The item that a handle stands for: the root for kTreeRoot, else itself.
    _TREEITEM* Resolve(_TREEITEM* handle) { return handle == kTreeRoot ? &m_root : handle; }

    // The parent of an item; null for the root.
    _TREEITEM* ParentOf(const _TREEITEM* item);

    // RVGN_*; `focused` is the answer to RVGN_FOCUSED. Null for any other code, and next to no item.
    _TREEITEM* Next(_TREEITEM* item, unsigned code, _TREEITEM* focused);

    // Children, or with `recursive` all descendants; none below null.
    static int Count(const _TREEITEM* parent, bool recursive);

    // Whether `ancestor` is above `item`; an item is none of itself, and null has none and is none.
    bool IsDescendant(const _TREEITEM* ancestor, const _TREEITEM* item);

    // The highest collapsed ancestor; the item itself, and `found` false, when all are expanded. Null for
    // null.
    _TREEITEM* VisibleAncestor(_TREEITEM* item, bool& found);

    // Whether a handle stands for one of the last three places.
    static bool IsInsertPosition(const _TREEITEM* handle);

    // Links `item` under `parent` (not a handle), next to `after`: an item or one of the three places. With
    // kTreeSort, in front of the first child that `compare` answers <= 0 for (ascending; else >= 0). The
    // answer of `compare` when the item went to the front by it, else 0. Parent, level and item number of
    // `item` are the caller's. O(1) in front and after an item, else O(children).
    static int Link(_TREEITEM* parent, _TREEITEM* after, _TREEITEM* item, bool ascending,
                    const TreeCompare& compare);

    // Takes `item`, with all below it, out of its parent's list.
    void Unlink(_TREEITEM* item);

    // Calls `visit` for each descendant of `parent` in depth-first order; only what is below expanded items,
    // or all. `visit` may look at and change an item but not the links.
    static void Walk(_TREEITEM* parent, bool expandedOnly, const std::function<void(_TREEITEM*)>& visit);

private:
    _TREEITEM* PreviousSibling(const _TREEITEM* item);

    _TREEITEM m_root;
};

} // namespace report
