// The report control's operations that its models answer. What they change is painted here.
#include "ReportSort.h"
#include "report/ReportCtrlData.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string_view>

namespace
{

_RVITEM Change(int item, int subitem, unsigned mask)
{
    _RVITEM change;
    change.item = item;
    change.subitem = subitem;
    change.mask = mask;
    return change;
}

int Order(int number1, int number2)
{
    return (number1 > number2) - (number1 < number2);
}

} // namespace

// ---- Items

int CReportCtrl::GetItemCount()
{
    return m_data->items.Count();
}

void CReportCtrl::SetItemCount(int count)
{
    m_data->rows.SetCallbackCount(count);
    m_data->scroll.MarkTooFar();
    RedrawRows(report::kFixedRow, INT_MAX, 1);
    ScrollWindow(SB_VERT, m_data->view.topRow);
}

int CReportCtrl::GetItem(_RVITEM* item)
{
    const bool wantsState = (item->mask & RVIM_STATE) != 0;
    if (!m_data->items.Read(*item))
        return 0;
    // The number of the item, and not its row, is looked up in the range of rows. Deliberate: owners that
    // keep both alike rely on it.
    if (wantsState && m_data->rows.selection.IsSelected(item->item))
        item->state |= RVIS_SELECTED;
    return 1;
}

int CReportCtrl::SetItem(_RVITEM* item)
{
    if (!m_data->items.IsCallback())
        m_data->ForgetTip();
    if (!m_data->items.Write(*item))
        return 0;
    ScrollWindow(SB_VERT, m_data->view.topRow);
    if (m_data->window.isRedrawOn)
        RedrawItems(item->item, RVI_NONE);
    else
        m_data->painting.shapes.Forget();
    return 1;
}

int CReportCtrl::SetItemText(int item, int subitem, const char* text)
{
    _RVITEM change = Change(item, subitem, RVIM_TEXT);
    change.text = const_cast<char*>(text); // read only
    return SetItem(&change);
}

int CReportCtrl::SetItemImage(int item, int subitem, int image)
{
    _RVITEM change = Change(item, subitem, RVIM_IMAGE);
    change.image = image;
    return SetItem(&change);
}

int CReportCtrl::SetItemCheck(int item, int subitem, int check)
{
    _RVITEM change = Change(item, subitem, RVIM_CHECK);
    change.check = check;
    return SetItem(&change);
}

int CReportCtrl::SetItemData(int item, unsigned long data)
{
    _RVITEM change = Change(item, -1, RVIM_ITEMDATA);
    change.itemData = static_cast<__int64>(data);
    return SetItem(&change);
}

int CReportCtrl::GetItemText(int item, int subitem, char* buffer, int max)
{
    if (!buffer || max <= 0)
        return 0;
    report::FetchedCell fetched;
    m_data->items.Fetch(item, subitem, RVIM_TEXT, fetched);
    const std::string_view text = fetched.cell.text;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(max) - 1);
    if (length > 0)
        std::memmove(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

ZEMA::String CReportCtrl::GetItemText(int item, int subitem)
{
    report::FetchedCell fetched;
    m_data->items.Fetch(item, subitem, RVIM_TEXT, fetched);
    return ZEMA::String(fetched.cell.text.data(), fetched.cell.text.size());
}

int CReportCtrl::GetItemImage(int item, int subitem)
{
    report::FetchedCell fetched;
    m_data->items.Fetch(item, subitem, RVIM_IMAGE, fetched);
    return fetched.cell.image;
}

int CReportCtrl::GetItemCheck(int item, int subitem)
{
    report::FetchedCell fetched;
    m_data->items.Fetch(item, subitem, RVIM_CHECK, fetched);
    return fetched.cell.check;
}

unsigned long CReportCtrl::GetItemData(int item)
{
    report::FetchedCell fetched;
    return m_data->items.Fetch(item, -1, RVIM_ITEMDATA, fetched)
               ? static_cast<unsigned long>(fetched.item->itemData)
               : 0;
}

ZEMA::String CReportCtrl::GetItemString(int item, char separator)
{
    std::vector<int> subitems;
    for (const report::Column& column : m_data->header.GetColumns())
        subitems.push_back(column.subitem);
    const report::Items::LineForm form = {separator, m_data->rows.IsTree(),
                                          report::Properties::treeIndent.c_str()};
    const std::string line = m_data->items.Line(item, subitems, form);
    return ZEMA::String(line.data(), line.size());
}

ZEMA::String CReportCtrl::GetItemString(int item)
{
    return GetItemString(item, report::Properties::stringSeparator);
}

int CReportCtrl::SetItemState(int item, unsigned int bits, unsigned int mask)
{
    constexpr unsigned kOwn = RVIS_FOCUSED | RVIS_SELECTED | RVIS_COLLAPSED | RVIS_EXPANDED;
    if (m_data->items.IsCallback() || item < RVI_DEFAULT || item >= GetItemCount())
        return 0;
    m_data->items.SetState(item, bits, mask & ~kOwn);
    RedrawItems(item, RVI_NONE);
    return 1;
}

unsigned int CReportCtrl::GetItemState(int item)
{
    _RVITEM read;
    read.item = item;
    read.subitem = -1;
    read.mask = RVIM_STATE;
    return GetItem(&read) ? read.state : 0;
}

int CReportCtrl::SetItemPreview(int item, const char* text, int height, int textColor)
{
    if (!m_data->items.SetPreview(item, text ? text : "", height, textColor))
        return 0;
    m_data->scroll.MarkTooFar(); // rows below it move
    m_data->Redraw();
    return 1;
}

int CReportCtrl::InsertItem(int item, const char* text)
{
    if (item < GetItemCount() && !m_data->FinishEdit(Data::EditEnd::Renumbered))
        return -1;
    const int inserted = m_data->rows.InsertItem(item);
    if (inserted < 0)
        return -1;
    if (text && GetSubItemCount() > 0)
        SetItemText(inserted, 0, text);
    m_data->Redraw();
    return inserted;
}

int CReportCtrl::DeleteItem(int item)
{
    if (!m_data->FinishEdit(Data::EditEnd::Renumbered) || !m_data->rows.DeleteItem(item))
        return 0;
    m_data->RowsRemoved();
    return 1;
}

int CReportCtrl::DeleteAllItems()
{
    if (!m_data->FinishEdit(Data::EditEnd::Renumbered) || !m_data->rows.DeleteAllItems())
        return 0;
    m_data->RowsRemoved();
    return 1;
}

void CReportCtrl::Data::RowsRemoved()
{
    control.ScrollWindow(SB_VERT, view.topRow);
    scroll.MarkTooFar();
    Redraw();
}

CReportCtrl::structITEM& CReportCtrl::GetItemStruct(int item, int subitem, unsigned int mask)
{
    return m_data->items.Record(item, subitem, mask);
}

void CReportCtrl::SetItemStruct(int item, structITEM& record)
{
    m_data->items.PutRecord(item, record);
}

int CReportCtrl::LoadItemData(structITEM* record, int item, int subitem, unsigned int mask)
{
    return m_data->items.Load(*record, item, subitem, mask);
}

// ---- Rows, focus and selection

int CReportCtrl::GetRowCount()
{
    return m_data->rows.Count();
}

int CReportCtrl::GetRowFromItem(int item)
{
    return m_data->rows.RowOf(item);
}

int CReportCtrl::GetItemFromRow(int row)
{
    return m_data->rows.ItemAt(row);
}

CArray<int, int>* CReportCtrl::GetItemRowArray()
{
    const std::vector<int>& items = m_data->rows.Map().Items();
    m_data->window.rowArray.SetSize(static_cast<INT_PTR>(items.size()));
    std::copy(items.begin(), items.end(), m_data->window.rowArray.GetData());
    return &m_data->window.rowArray;
}

int CReportCtrl::SetItemRowArray(CArray<int, int>& items)
{
    if (!m_data->rows.SetOrder(std::vector<int>(items.GetData(), items.GetData() + items.GetSize())))
        return 0;
    m_data->Redraw();
    return 1;
}

void CReportCtrl::SetState(int row, unsigned int bits, unsigned int mask)
{
    m_data->rows.SetState(row, bits, mask);
}

int CReportCtrl::GetCurrentFocus()
{
    return m_data->rows.FocusedRow();
}

int CReportCtrl::GetCurrentFocusColumn()
{
    return m_data->rows.selection.focusColumn;
}

void CReportCtrl::GetSelectedRows(int* first, int* last)
{
    const report::RowRange rows = m_data->rows.SelectedRows();
    *first = rows.first;
    *last = rows.last;
}

void CReportCtrl::SelectRows(int row, int anchor, int select, int add, int toggle, int redraw)
{
    using Mode = report::SelectMode;
    const Mode mode = !select ? Mode::None : toggle ? Mode::Toggle : add ? Mode::Add : Mode::Alone;
    const bool isSingle = (m_data->style & RVS_SINGLESELECT) != 0;
    m_data->ChangeSelection(redraw ? Data::Painted::AtOnce : Data::Painted::ByCaller,
                            [&] { return m_data->rows.Select(row, anchor, mode, isSingle); });
}

void CReportCtrl::SetAnchor(int row)
{
    if (row >= 0 && row < m_data->rows.Count())
        m_data->rows.selection.anchor = row;
}

bool CReportCtrl::Data::ChangeSelection(Painted painted, const std::function<bool()>& change)
{
    rows.Count(); // makes the rows: what is compared below are rows of one kind
    const report::Selection old = rows.selection;
    if (!change())
        return false;
    const report::RowRange changed = report::ChangedRows(old, rows.selection);
    if (painted != Painted::ByCaller)
        control.RedrawRows(changed.first, changed.last, painted == Painted::AtOnce);
    return true;
}

void CReportCtrl::SelectAll()
{
    SelectRows(0, std::max(0, GetRowCount() - 1), 1, 0, 0, 1);
}

int CReportCtrl::SelectNone()
{
    return m_data->ChangeSelection(Data::Painted::AtOnce, [this] {
        if (m_data->rows.IsBusy())
            return false;
        m_data->rows.selection.SelectNone();
        return true;
    });
}

int CReportCtrl::AdjustFocus(int row, int column)
{
    const bool isHidden = row == RVI_DEFAULT && !(m_data->style & RVS_FIXEDROW);
    if (isHidden || column < -1 || column >= GetActiveSubItemCount())
        return 0;
    return m_data->ChangeSelection(Data::Painted::AtOnce, [&] { return m_data->rows.Focus(row, column); });
}

int CReportCtrl::MoveUp(int row)
{
    return m_data->SwapRows(row - 1, row);
}

int CReportCtrl::MoveDown(int row)
{
    return m_data->SwapRows(row, row);
}

int CReportCtrl::Data::SwapRows(int row, int moved)
{
    if (!rows.MoveDown(row, moved))
        return 0;
    window.hasMovedRows = true;
    Redraw();
    return 1;
}

int CReportCtrl::HaveRowsMoved()
{
    return m_data->window.hasMovedRows;
}

// ---- Tree

_TREEITEM* CReportCtrl::GetItemHandle(int item)
{
    return m_data->rows.HandleOf(item);
}

int CReportCtrl::GetItemIndex(_TREEITEM* item)
{
    return item ? m_data->rows.GetTree().Resolve(item)->item : RVI_NONE;
}

_TREEITEM* CReportCtrl::GetNextItem(_TREEITEM* item, unsigned int code)
{
    return m_data->rows.Next(item, code);
}

int CReportCtrl::GetItemCount(_TREEITEM* parent, int recursive)
{
    return report::Tree::Count(m_data->rows.GetTree().Resolve(parent), recursive == 1);
}

int CReportCtrl::HasChildren(_TREEITEM* item)
{
    return item && m_data->rows.GetTree().Resolve(item)->firstChild;
}

int CReportCtrl::IsChild(_TREEITEM* parent, _TREEITEM* item)
{
    report::Tree& tree = m_data->rows.GetTree();
    return parent && item && tree.ParentOf(tree.Resolve(item)) == tree.Resolve(parent);
}

int CReportCtrl::IsDescendent(_TREEITEM* ancestor, _TREEITEM* item)
{
    report::Tree& tree = m_data->rows.GetTree();
    return tree.IsDescendant(tree.Resolve(ancestor), tree.Resolve(item));
}

void CReportCtrl::SetTreeSubItem(_TREEITEM* item, int subitem)
{
    if (item)
        m_data->rows.GetTree().Resolve(item)->subitem = subitem;
}

CReportCtrl::structTREEITEM* CReportCtrl::GetVisibleAncestor(structTREEITEM* item)
{
    bool isHidden = false;
    return m_data->rows.VisibleAncestor(item, isHidden);
}

CReportCtrl::structTREEITEM* CReportCtrl::GetVisibleAncestor(structTREEITEM* item, int* found)
{
    bool isHidden = false;
    structTREEITEM* const ancestor = m_data->rows.VisibleAncestor(item, isHidden);
    *found = isHidden ? 1 : *found;
    return ancestor;
}

void CReportCtrl::BuildTree()
{
    m_data->rows.Build();
}

void CReportCtrl::BuildTree(structTREEITEM* parent)
{
    m_data->rows.Build(parent);
}

int CReportCtrl::InsertTree(int subitem, structTREEITEM* parent, structTREEITEM* after, structTREEITEM* item,
                            int ascending)
{
    return m_data->rows.InsertTree(subitem, parent, after, item, ascending != 0);
}

CReportCtrl::structTREEITEM* CReportCtrl::GetTreeFocus()
{
    structTREEITEM* focused = nullptr;
    if (m_data->rows.IsBusy())
        return focused;
    m_data->ChangeSelection(Data::Painted::Later, [&] {
        focused = m_data->rows.TakeFocus();
        return true;
    });
    return focused;
}

void CReportCtrl::SetTreeFocus(structTREEITEM* item)
{
    if (!item || m_data->rows.IsBusy())
        return;
    m_data->ChangeSelection(Data::Painted::Later, [&] {
        m_data->rows.PutFocus(item);
        return true;
    });
    m_data->ShowRow(m_data->rows.selection.focusRow);
}

_TREEITEM* CReportCtrl::InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text)
{
    int subitem = 0;
    int ascending = 1;
    const bool isSorted = GetSortSettings(&subitem, &ascending) != 0;
    _TREEITEM* const item =
        m_data->rows.InsertTreeItem(parent, after, text, isSorted ? subitem : 0, !isSorted || ascending);
    if (item)
        m_data->Redraw();
    return item;
}

int CReportCtrl::DeleteTreeItem(_TREEITEM* item)
{
    if (!m_data->FinishEdit(Data::EditEnd::Renumbered) || !m_data->rows.DeleteTreeItem(item))
        return 0;
    m_data->RowsRemoved();
    return 1;
}

int CReportCtrl::Expand(_TREEITEM* item, unsigned int action)
{
    if (!m_data->rows.Expand(item, action))
        return 0;
    m_data->scroll.MarkTooFar();
    m_data->Redraw();
    return 1;
}

// ---- Sorting and finding

int CReportCtrl::SortItems(int subitem, int ascending)
{
    if (!m_data->FinishEdit(Data::EditEnd::Wanted))
        return 0;
    m_data->ForgetTip();
    const int column = GetColumnFromSubItem(subitem);
    if (m_data->items.IsCallback() || m_data->rows.IsBusy() || column < 0)
        return 0;
    m_data->header.SetSort(m_data->header.GetItemOfColumn(column), ascending != 0);
    if (!m_data->rows.IsTree() && GetRowCount() == 0)
        return 0;
    try
    {
        m_data->sorting.Sort(subitem, ascending);
    }
    catch (...)
    {
        m_data->Redraw(); // some rows may have moved
        throw;
    }
    m_data->ShowRow(m_data->rows.selection.focusRow);
    m_data->Redraw();
    return 1;
}

int CReportCtrl::ResortItems()
{
    int subitem = 0;
    int ascending = 0;
    return GetSortSettings(&subitem, &ascending) ? SortItems(subitem, ascending) : 0;
}

int CReportCtrl::GetSortSettings(int* subitem, int* ascending)
{
    const int headerItem = m_data->header.GetSortItem();
    *subitem = headerItem == ReportHeaderWnd::kNone ? -1 : m_data->header.GetSubItem(headerItem);
    if (*subitem < 0)
        return 0;
    *ascending = m_data->header.IsSortAscending();
    return 1;
}

void CReportCtrl::ClearSortSettings()
{
    m_data->header.SetSort(ReportHeaderWnd::kNone, true);
}

int CReportCtrl::SetSortSettings(int subitem, int ascending)
{
    const int column = GetColumnFromSubItem(subitem);
    if (column < 0)
        return 0;
    m_data->header.SetSort(m_data->header.GetItemOfColumn(column), ascending != 0);
    return 1;
}

int CReportCtrl::SetSortCallback(RVSORTCALLBACK callback, __int64 value)
{
    m_data->sorting.SetCallback(callback, value, callback == &CReportSorter::Compare);
    return 1;
}

RVSORTCALLBACK CReportCtrl::GetSortCallback()
{
    return m_data->sorting.Callback();
}

unsigned CReportCtrl::GetSortNumber() const
{
    return m_data->sorting.Number();
}

int CReportCtrl::CompareItems(int item1, int subitem1, int item2, int subitem2)
{
    return m_data->sorting.Compare(item1, subitem1, item2, subitem2);
}

int CReportCtrl::CompareItems(_RVITEM* item1, _RVITEM* item2)
{
    // Empty texts count as none, where the other form counts texts that are missing. Deliberate.
    const std::string_view text1 = item1->text ? item1->text : "";
    const std::string_view text2 = item2->text ? item2->text : "";
    if (!text1.empty() || !text2.empty())
        return Order(text1.compare(text2), 0);
    if ((item1->mask | item2->mask) & RVIM_CHECK)
        return Order(item1->check, item2->check);
    return Order(item1->image, item2->image);
}

void CReportCtrl::QuickSort(int subitem, int ascending, int low, int high)
{
    m_data->sorting.QuickSort(subitem, ascending, low, high);
}

void CReportCtrl::TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive)
{
    m_data->sorting.TreeSort(subitem, parent, ascending, recursive);
}

int CReportCtrl::FindItem(_RVFINDINFO* info, int subitem, int start)
{
    return m_data->items.IsCallback() ? 0 : m_data->items.Find(*info, subitem, start);
}
