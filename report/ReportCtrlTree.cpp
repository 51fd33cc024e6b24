// The report control's tree and rows, focus and selection.
#include "report/ReportCtrlData.h"
#include "report/SortRun.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>
#include <new>
#include <numeric>
#include <utility>

namespace
{

constexpr unsigned kBoxStates = RVIS_COLLAPSED | RVIS_EXPANDED;

} // namespace

// ---- Rows

report::RowMap& CReportCtrl::Rows()
{
    if (!m_data->rowsInvalid)
        return m_data->rows;
    m_data->rowsInvalid = false;
    BuildTree();
    m_data->view.topRow = std::min(m_data->view.topRow, m_data->rows.Count());
    m_data->tooFar = true;

    // Focus and selection follow their items, or what hides them now.
    const auto rowOf = [this](_TREEITEM* item) {
        return item ? GetRowFromItem(GetVisibleAncestor(item)->item) : RVI_NONE;
    };
    report::Selection& selection = m_data->selection;
    if (selection.focusRow >= 0)
        selection.focusRow = rowOf(m_data->focused);
    SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
    const auto [first, last] = std::minmax({rowOf(m_data->firstSelected), rowOf(m_data->lastSelected)});
    selection.first = std::max(0, first);
    selection.last = first >= 0 ? last : -1;
    m_data->focused = m_data->firstSelected = m_data->lastSelected = nullptr;
    return m_data->rows;
}

void CReportCtrl::InvalidateRows()
{
    if (m_data->rowsInvalid)
        return;
    const auto treeItemOf = [this](int row) -> _TREEITEM* {
        return row >= 0 && row < m_data->rows.Count() ? GetItemHandle(m_data->rows.ItemAt(row)) : nullptr;
    };
    const report::Selection& selection = m_data->selection;
    m_data->focused = treeItemOf(selection.focusRow);
    if (selection.first <= selection.last)
    {
        m_data->firstSelected = treeItemOf(selection.first);
        m_data->lastSelected = treeItemOf(selection.last);
    }
    SetState(selection.focusRow, 0, RVIS_FOCUSED);
    m_data->rowsInvalid = true;
}

// The rows of a list or tree that has been the other so far.
void CReportCtrl::ShowAllItems()
{
    m_data->rowsInvalid = m_data->IsTree();
    if (m_data->IsTree())
        return;
    std::vector<int> items(static_cast<std::size_t>(m_data->items.Count()));
    std::iota(items.begin(), items.end(), 0);
    m_data->rows.Assign(std::move(items));
}

int CReportCtrl::GetRowCount()
{
    return m_data->IsCallback() ? m_data->callbackCount : Rows().Count();
}

int CReportCtrl::GetRowFromItem(int item)
{
    if (item == RVI_DEFAULT || m_data->IsCallback())
        return item;
    return Rows().RowOf(item, m_data->items.Count());
}

int CReportCtrl::GetItemFromRow(int row)
{
    if (row == RVI_DEFAULT || row == RVI_NONE || m_data->IsCallback())
        return row;
    return Rows().ItemAt(row);
}

CArray<int, int>* CReportCtrl::GetItemRowArray()
{
    const std::vector<int>& items = Rows().Items();
    m_data->rowArray.SetSize(static_cast<INT_PTR>(items.size()));
    std::copy(items.begin(), items.end(), m_data->rowArray.GetData());
    return &m_data->rowArray;
}

int CReportCtrl::SetItemRowArray(CArray<int, int>& items)
{
    if (m_data->IsCallback() || m_data->busy || items.GetSize() != Rows().Count())
        return 0;
    const int focused = GetItemFromRow(m_data->selection.focusRow);
    SetState(m_data->selection.focusRow, 0, RVIS_FOCUSED);
    m_data->rows.Assign(std::vector<int>(items.GetData(), items.GetData() + items.GetSize()));
    m_data->selection.focusRow = GetRowFromItem(focused);
    SetState(m_data->selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
    Redraw();
    return 1;
}

void CReportCtrl::SetState(int row, unsigned int bits, unsigned int mask)
{
    if (m_data->IsCallback() || row < RVI_DEFAULT)
        return;
    const int item = GetItemFromRow(row);
    structITEM& record = GetItemStruct(item, -1, RVIM_STATE);
    record.state = (record.state & ~mask) | (bits & mask);
    SetItemStruct(item, record);
}

// ---- Focus and selection

void CReportCtrl::ForgetSelection()
{
    m_data->selection = {};
    m_data->selection.focusRow = RVI_NONE;
    m_data->focused = m_data->firstSelected = m_data->lastSelected = nullptr;
}

int CReportCtrl::GetCurrentFocus()
{
    if (!m_data->IsCallback())
        Rows();
    return m_data->selection.focusRow;
}

int CReportCtrl::GetCurrentFocusColumn()
{
    return m_data->selection.focusColumn;
}

void CReportCtrl::GetSelectedRows(int* first, int* last)
{
    if (!m_data->IsCallback())
        Rows();
    *first = m_data->selection.first;
    *last = m_data->selection.last;
}

// ---- Navigation

_TREEITEM* CReportCtrl::GetItemHandle(int item)
{
    return item < 0 ? nullptr : m_data->items.At(item).treeItem;
}

int CReportCtrl::GetItemIndex(_TREEITEM* item)
{
    return m_data->tree.Resolve(item)->item;
}

_TREEITEM* CReportCtrl::GetNextItem(_TREEITEM* item, unsigned int code)
{
    _TREEITEM* focused = nullptr;
    if (code == RVGN_FOCUSED && !m_data->IsCallback())
        focused = GetItemHandle(GetItemFromRow(GetCurrentFocus()));
    return m_data->tree.Next(m_data->tree.Resolve(item), code, focused);
}

int CReportCtrl::GetItemCount(_TREEITEM* parent, int recursive)
{
    return m_data->tree.Count(m_data->tree.Resolve(parent), recursive == 1);
}

int CReportCtrl::HasChildren(_TREEITEM* item)
{
    return m_data->tree.Resolve(item)->firstChild != nullptr;
}

int CReportCtrl::IsChild(_TREEITEM* parent, _TREEITEM* item)
{
    return m_data->tree.Resolve(item)->parent == m_data->tree.Resolve(parent);
}

int CReportCtrl::IsDescendent(_TREEITEM* ancestor, _TREEITEM* item)
{
    return m_data->tree.IsDescendant(m_data->tree.Resolve(ancestor), m_data->tree.Resolve(item));
}

void CReportCtrl::SetTreeSubItem(_TREEITEM* item, int subitem)
{
    m_data->tree.Resolve(item)->subitem = subitem;
}

CReportCtrl::structTREEITEM* CReportCtrl::GetVisibleAncestor(structTREEITEM* item)
{
    bool found = false;
    return m_data->tree.VisibleAncestor(m_data->tree.Resolve(item), found);
}

CReportCtrl::structTREEITEM* CReportCtrl::GetVisibleAncestor(structTREEITEM* item, int* found)
{
    bool collapsed = false;
    structTREEITEM* const ancestor = m_data->tree.VisibleAncestor(m_data->tree.Resolve(item), collapsed);
    if (collapsed)
        *found = 1;
    return ancestor;
}

// ---- Building

void CReportCtrl::BuildTree()
{
    m_data->rows.Clear();
    BuildTree(m_data->tree.Root());
}

void CReportCtrl::BuildTree(structTREEITEM* parent)
{
    report::Tree::Walk(m_data->tree.Resolve(parent), true, [this](structTREEITEM* child) {
        m_data->rows.Append(child->item);
        structITEM& record = GetItemStruct(child->item, child->item, RVIM_TREELEVEL | RVIM_STATE);
        record.state &= ~kBoxStates;
        record.treeLevel = child->level;
        if (!child->firstChild)
            return;
        record.state |= child->expanded ? RVIS_EXPANDED : RVIS_COLLAPSED;
        SetItemStruct(child->item, record);
    });
}

int CReportCtrl::InsertTree(int subitem, structTREEITEM* parent, structTREEITEM* after, structTREEITEM* item,
                            int ascending)
{
    m_data->lastInserted = nullptr;
    const Busy busy(*m_data);
    const auto subitemOf = [subitem](const structTREEITEM* i) {
        return i->subitem >= 0 ? i->subitem : subitem;
    };
    return report::Tree::Link(m_data->tree.Resolve(parent), after, item, ascending != 0,
                              [&](structTREEITEM* item1, structTREEITEM* item2) {
                                  return CompareItems(item1->item, subitemOf(item1), item2->item,
                                                      subitemOf(item2));
                              });
}

CReportCtrl::structTREEITEM* CReportCtrl::GetTreeFocus()
{
    const int row = GetCurrentFocus();
    structTREEITEM* const item = GetItemHandle(GetItemFromRow(row));
    SetState(row, 0, RVIS_FOCUSED);
    m_data->selection.focusRow = RVI_NONE;
    return item;
}

void CReportCtrl::SetTreeFocus(structTREEITEM* item)
{
    if (!item)
        return;
    const int row = GetRowFromItem(GetVisibleAncestor(item)->item);
    m_data->selection.focusRow = row;
    SetState(row, RVIS_FOCUSED, RVIS_FOCUSED);
    ShowRow(row);
}

_TREEITEM* CReportCtrl::InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text)
{
    _TREEITEM* const under = parent ? m_data->tree.Resolve(parent) : m_data->tree.Root();
    if (!after)
        after = report::kTreeLast;
    if (!m_data->IsTree() || (!report::Tree::IsPlace(after) && m_data->tree.Resolve(after)->parent != under))
        return nullptr;
    const int item = InsertItem(m_data->items.Count(), text);
    if (item < 0)
        return nullptr;
    try
    {
        InvalidateRows();
        _TREEITEM& made = m_data->items.CreateTreeItem(item);
        made.parent = under;
        made.level = under->level + 1;

        // The end of a long list is not looked for each time.
        const _TREEITEM* const last = m_data->lastInserted;
        if (after == report::kTreeLast && last && last->parent == under && !last->nextSibling)
            after = m_data->lastInserted;
        int subitem = 0;
        int ascending = 1;
        if (!GetSortSettings(&subitem, &ascending))
        {
            subitem = 0;
            ascending = 1;
        }
        InsertTree(subitem, under, after, &made, ascending);
        m_data->lastInserted = &made;
        return &made;
    }
    catch (const std::bad_alloc&)
    {
        m_data->items.Remove({item});
        return nullptr;
    }
    catch (...)
    {
        m_data->items.Remove({item});
        throw;
    }
}

int CReportCtrl::DeleteTreeItem(_TREEITEM* item)
{
    if (m_data->IsCallback() || m_data->busy || !item)
        return 0;
    if (m_data->tree.Resolve(item) != m_data->tree.Root())
        DeleteSubtree(item);
    else
    {
        const std::vector<int> items = ItemsBelow(item);
        m_data->lastInserted = nullptr;
        m_data->tree.Root()->firstChild = nullptr;
        RemoveItems(items);
    }
    return 1;
}

// The items of all tree items below one, in order.
std::vector<int> CReportCtrl::ItemsBelow(_TREEITEM* top)
{
    Rows(); // while the items that focus and selection remember are there
    std::vector<int> items;
    report::Tree::Walk(m_data->tree.Resolve(top), false,
                       [&items](const _TREEITEM* below) { items.push_back(below->item); });
    std::sort(items.begin(), items.end());
    return items;
}

void CReportCtrl::DeleteSubtree(_TREEITEM* top)
{
    std::vector<int> items = ItemsBelow(top);
    items.insert(std::upper_bound(items.begin(), items.end(), top->item), top->item);

    _TREEITEM* const parent = top->parent;
    m_data->lastInserted = nullptr;
    report::Tree::Unlink(top);
    if (!parent->firstChild && parent != m_data->tree.Root())
        m_data->items.At(parent->item).state &= ~kBoxStates;
    RemoveItems(items);
}

int CReportCtrl::Expand(_TREEITEM* item, unsigned int action)
{
    if (m_data->busy || !item || m_data->tree.Resolve(item) == m_data->tree.Root() || !item->firstChild ||
        action < RVE_COLLAPSE || action > RVE_TOGGLE)
        return 0;
    const bool expand = action == RVE_EXPAND || (action == RVE_TOGGLE && !item->expanded);
    if (expand == (item->expanded != 0))
        return 0;
    InvalidateRows();
    item->expanded = expand;
    m_data->tooFar = true;
    Redraw();
    return 1;
}
