#include "report/model/Rows.h"

#include "report/model/InvalidArgument.h"

#include <algorithm>
#include <new>
#include <numeric>

namespace report
{

// ---- Which rows there are

void Rows::SetMode(bool isCallback, bool isTree)
{
    const bool wasCallback = m_items.IsCallback();
    const bool wasTree = m_isTree;
    if (wasCallback != isCallback || wasTree != isTree)
    {
        SetState(FocusedRow(), 0, RVIS_FOCUSED);
        ForgetSelection();
    }
    m_items.SetCallback(isCallback);
    m_isTree = isTree;
    if (wasTree == isTree)
        return;
    m_isValid = !isTree;
    if (isTree)
        return;
    std::vector<int> items(static_cast<std::size_t>(m_items.Stored().Count()));
    std::iota(items.begin(), items.end(), 0);
    m_map.Assign(std::move(items));
}

RowMap& Rows::Map()
{
    if (m_isValid)
        return m_map;
    m_isValid = true;
    Build();
    m_listener.RowsMade(m_map.Count());

    // Focus and selection follow their items, or what hides them now.
    const auto rowOf = [this](_TREEITEM* item) {
        bool isHidden = false;
        return item ? RowOf(VisibleAncestor(item, isHidden)->item) : kNoRow;
    };
    if (selection.focusRow >= 0)
        selection.focusRow = rowOf(m_focused);
    SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
    const auto [first, last] = std::minmax({rowOf(m_firstSelected), rowOf(m_lastSelected)});
    selection.first = std::max(0, first);
    selection.last = first >= 0 ? last : -1;
    m_focused = m_firstSelected = m_lastSelected = nullptr;
    return m_map;
}

void Rows::Invalidate()
{
    if (!m_isValid)
        return;
    const auto handleAt = [this](int row) {
        return row >= 0 && row < m_map.Count() ? HandleOf(m_map.ItemAt(row)) : nullptr;
    };
    m_focused = handleAt(selection.focusRow);
    if (selection.first <= selection.last)
    {
        m_firstSelected = handleAt(selection.first);
        m_lastSelected = handleAt(selection.last);
    }
    SetState(selection.focusRow, 0, RVIS_FOCUSED);
    m_isValid = false;
}

int Rows::Count()
{
    return m_items.IsCallback() ? m_items.Count() : Map().Count();
}

int Rows::RowOf(int item)
{
    if (item == RVI_DEFAULT || m_items.IsCallback())
        return item;
    return Map().RowOf(item, m_items.Count());
}

int Rows::ItemAt(int row)
{
    if (row == RVI_DEFAULT || row == kNoRow || m_items.IsCallback())
        return row;
    return Map().ItemAt(row);
}

bool Rows::SetOrder(std::vector<int> items)
{
    if (m_items.IsCallback() || m_isBusy || static_cast<int>(items.size()) != Map().Count())
        return false;
    const int focused = ItemAt(selection.focusRow);
    SetState(selection.focusRow, 0, RVIS_FOCUSED);
    m_map.Assign(std::move(items));
    selection.focusRow = RowOf(focused);
    SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
    return true;
}

bool Rows::MoveDown(int row, int moved)
{
    if (m_items.IsCallback() || m_isBusy || row < 0 || row >= Count() - 1)
        return false;
    SetState(selection.focusRow, 0, RVIS_FOCUSED);
    m_map.Swap(row, row + 1);
    if (selection.focusRow == moved)
        selection.focusRow = moved == row ? row + 1 : row;
    SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED); // of another item, if its neighbour was moved
    return true;
}

void Rows::SetState(int row, unsigned bits, unsigned mask)
{
    if (!m_items.IsCallback() && row >= RVI_DEFAULT)
        m_items.SetState(ItemAt(row), bits, mask);
}

// ---- Focus and selection

void Rows::ForgetSelection()
{
    selection = {};
    selection.focusRow = kNoRow;
    m_focused = m_firstSelected = m_lastSelected = nullptr;
}

int Rows::FocusedRow()
{
    Count();
    return selection.focusRow;
}

RowRange Rows::SelectedRows()
{
    Count();
    return {selection.first, selection.last};
}

// Throws, before anything else, if the row shows no item.
void Rows::MoveFocus(int row)
{
    SetState(row, RVIS_FOCUSED, RVIS_FOCUSED);
    if (selection.focusRow != row)
        SetState(selection.focusRow, 0, RVIS_FOCUSED);
}

bool Rows::Select(int row, int anchor, SelectMode mode, bool isSingle)
{
    if (row == kFixedRow || m_isBusy || Count() == 0)
        return false;
    if (row < 0 || row >= Count() || anchor < kFixedRow || anchor >= Count())
        ThrowInvalidArgument();
    MoveFocus(row);
    selection.Select(row, anchor, mode, isSingle);
    return true;
}

bool Rows::Focus(int row, int column)
{
    if (m_isBusy || row < kFixedRow || row >= Count())
        return false;
    MoveFocus(row);
    selection.focusRow = row;
    selection.focusColumn = column;
    return true;
}

void Rows::SetCallbackCount(int count)
{
    m_items.SetCallbackCount(std::max(0, count));
    if (m_items.IsCallback())
        selection.CutTo(m_items.CallbackCount());
}

// ---- Items come and go

int Rows::InsertItem(int item)
{
    if (m_items.IsCallback() || m_isBusy || item < 0)
        return -1;
    ItemStore& stored = m_items.Stored();
    item = std::min(item, stored.Count());
    const bool last = item == stored.Count();
    int row = kNoRow;
    try
    {
        row = last || m_isTree ? kNoRow : RowOf(item);
        if (row == kNoRow && !m_isTree)
            row = Count();
        if (m_isTree && !last)
            Invalidate(); // which remembers focus and selection by the numbers that are about to change
        stored.Insert(item, m_items.SubItemCount());
    }
    catch (const std::bad_alloc&)
    {
        return -1;
    }
    if (m_isTree)
        return item;
    try
    {
        last ? m_map.Append(item) : m_map.InsertItem(item, row);
    }
    catch (const std::bad_alloc&)
    {
        stored.Remove(item);
        return -1;
    }
    selection.RowInserted(row);
    return item;
}

bool Rows::DeleteItem(int item)
{
    if (m_items.IsCallback() || m_isBusy || item < 0 || item >= m_items.Count())
        return false;
    if (_TREEITEM* const handle = HandleOf(item))
        DeleteSubtree(handle);
    else
        RemoveItems({item});
    return true;
}

bool Rows::DeleteAllItems()
{
    if (m_items.IsCallback() || m_isBusy)
        return false;
    m_tree.Root()->firstChild = nullptr;
    m_isValid = true;
    m_lastInserted = nullptr;
    m_map.Clear();
    m_items.Stored().RemoveAll();
    ForgetSelection();
    return true;
}

// Takes a sorted list of items away, with their rows. The tree has let go of them.
void Rows::RemoveItems(const std::vector<int>& items)
{
    RowMap& map = Map();
    const auto isRemoved = [&items](int item) {
        return std::binary_search(items.begin(), items.end(), item);
    };
    const int focusedItem = ItemAt(selection.focusRow);
    int rowsLeft = map.Count();
    for (int row = map.Count() - 1; row >= 0; --row)
    {
        if (isRemoved(map.ItemAt(row)))
            selection.RowRemoved(row, --rowsLeft);
    }
    map.RemoveItems(items);
    m_items.Stored().Remove(items);
    if (focusedItem >= 0 && isRemoved(focusedItem))
        SetState(selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
}

} // namespace report
