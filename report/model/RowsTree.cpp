// The tree that rows come from.
#include "report/model/Rows.h"

#include <algorithm>
#include <new>

namespace report
{

namespace
{

constexpr unsigned kBoxStates = RVIS_COLLAPSED | RVIS_EXPANDED;

} // namespace

// ---- Navigation

_TREEITEM* Rows::HandleOf(int item)
{
    return item < 0 ? nullptr : m_items.Stored().At(item).treeItem;
}

_TREEITEM* Rows::Next(_TREEITEM* item, unsigned code)
{
    _TREEITEM* focused = nullptr;
    if (code == RVGN_FOCUSED && !m_items.IsCallback())
        focused = HandleOf(ItemAt(FocusedRow()));
    return m_tree.Next(m_tree.Resolve(item), code, focused);
}

_TREEITEM* Rows::VisibleAncestor(_TREEITEM* item, bool& isHidden)
{
    return m_tree.VisibleAncestor(m_tree.Resolve(item), isHidden);
}

// ---- Building

void Rows::Build()
{
    m_map.Clear();
    Build(m_tree.Root());
}

void Rows::Build(_TREEITEM* parent)
{
    Tree::Walk(m_tree.Resolve(parent), true, [this](_TREEITEM* child) {
        m_map.Append(child->item);
        Item& record = m_overrides.GetItemStruct(child->item, child->item, RVIM_TREELEVEL | RVIM_STATE);
        record.state &= ~kBoxStates;
        record.treeLevel = child->level;
        if (child->firstChild)
            record.state |= child->expanded != 0 ? RVIS_EXPANDED : RVIS_COLLAPSED;
        m_overrides.SetItemStruct(child->item, record);
    });
}

_TREEITEM* Rows::TakeFocus()
{
    const int row = FocusedRow();
    _TREEITEM* const item = HandleOf(ItemAt(row));
    SetState(row, 0, RVIS_FOCUSED);
    selection.focusRow = kNoRow;
    return item;
}

void Rows::PutFocus(_TREEITEM* item)
{
    if (!item)
        return;
    bool isHidden = false;
    SetState(FocusedRow(), 0, RVIS_FOCUSED);
    selection.focusRow = RowOf(VisibleAncestor(item, isHidden)->item);
    SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
}

// ---- Tree items come and go

int Rows::InsertTree(int subitem, _TREEITEM* parent, _TREEITEM* after, _TREEITEM* item, bool ascending)
{
    if (!item)
        return 0;
    const Busy busy(*this);
    _TREEITEM* const under = parent ? m_tree.Resolve(parent) : m_tree.Root();
    item->parent = under;
    item->level = under->level + 1;
    const auto subitemOf = [subitem](const _TREEITEM* i) { return i->subitem >= 0 ? i->subitem : subitem; };
    return Tree::Link(
        under, after ? after : kTreeLast, item, ascending, [&](_TREEITEM* item1, _TREEITEM* item2) {
            return m_overrides.CompareItems(item1->item, subitemOf(item1), item2->item, subitemOf(item2));
        });
}

_TREEITEM* Rows::InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text, int subitem,
                                bool ascending)
{
    _TREEITEM* const under = parent ? m_tree.Resolve(parent) : m_tree.Root();
    if (!after)
        after = kTreeLast;
    if (!IsTree() || (!Tree::IsInsertPosition(after) && m_tree.ParentOf(m_tree.Resolve(after)) != under))
        return nullptr;
    const int item = InsertItem(m_items.Count());
    if (item < 0)
        return nullptr;
    try
    {
        if (text && m_items.SubItemCount() > 0)
        {
            _RVITEM change;
            change.item = item;
            change.mask = RVIM_TEXT;
            change.text = const_cast<char*>(text); // read only
            m_items.Write(change);
        }
        Invalidate();
        _TREEITEM& made = m_items.Stored().CreateTreeItem(item);
        LinkNew(made, under, after, subitem, ascending);
        return &made;
    }
    catch (const std::bad_alloc&)
    {
        m_items.Stored().Remove(item);
        return nullptr;
    }
    catch (...)
    {
        m_items.Stored().Remove(item);
        throw;
    }
}

// The end of a long list is not looked for each time.
void Rows::LinkNew(_TREEITEM& made, _TREEITEM* parent, _TREEITEM* after, int subitem, bool ascending)
{
    const _TREEITEM* const last = m_lastInserted;
    if (after == kTreeLast && last && last->parent == parent && !last->nextSibling)
        after = m_lastInserted;
    InsertTree(subitem, parent, after, &made, ascending);
    m_lastInserted = &made;
}

bool Rows::DeleteTreeItem(_TREEITEM* item)
{
    if (m_items.IsCallback() || m_isBusy || !item)
        return false;
    if (m_tree.Resolve(item) != m_tree.Root())
    {
        DeleteSubtree(item);
        return true;
    }
    const std::vector<int> items = ItemsBelow(item);
    m_lastInserted = nullptr;
    m_tree.Root()->firstChild = nullptr;
    RemoveItems(items);
    return true;
}

// The items of all tree items below one, in order.
std::vector<int> Rows::ItemsBelow(_TREEITEM* top)
{
    Map(); // while the items that focus and selection remember are there
    std::vector<int> items;
    Tree::Walk(m_tree.Resolve(top), false,
               [&items](const _TREEITEM* below) { items.push_back(below->item); });
    std::sort(items.begin(), items.end());
    return items;
}

void Rows::DeleteSubtree(_TREEITEM* top)
{
    std::vector<int> items = ItemsBelow(top);
    items.insert(std::upper_bound(items.begin(), items.end(), top->item), top->item);

    const _TREEITEM* const parent = m_tree.ParentOf(top);
    m_lastInserted = nullptr;
    m_tree.Unlink(top);
    if (!parent->firstChild && parent != m_tree.Root())
        m_items.Stored().At(parent->item).state &= ~kBoxStates;
    RemoveItems(items);
}

bool Rows::Expand(_TREEITEM* item, unsigned action)
{
    if (m_isBusy || !item || m_tree.Resolve(item) == m_tree.Root() || !item->firstChild ||
        action < RVE_COLLAPSE || action > RVE_TOGGLE)
        return false;
    const bool expand = action == RVE_EXPAND || (action == RVE_TOGGLE && item->expanded == 0);
    if (expand == (item->expanded != 0))
        return false;
    Invalidate();
    item->expanded = expand ? 1 : 0;
    return true;
}

} // namespace report
