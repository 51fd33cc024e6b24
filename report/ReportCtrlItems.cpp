// The report control's items: reading, writing, inserting, deleting.
#include "report/ReportCtrlData.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace
{

constexpr std::size_t kMaxText = 65535; // bytes of a stored text
constexpr unsigned kStatesTaken = RVIS_FOCUSED | RVIS_SELECTED | RVIS_COLLAPSED | RVIS_EXPANDED;

_RVITEM Change(int item, int subitem, unsigned mask)
{
    _RVITEM change;
    change.item = item;
    change.subitem = subitem;
    change.mask = mask;
    return change;
}

} // namespace

int CReportCtrl::GetItemCount()
{
    return m_data->IsCallback() ? m_data->callbackCount : m_data->items.Count();
}

void CReportCtrl::SetItemCount(int count)
{
    m_data->callbackCount = std::max(0, count);
    if (m_data->IsCallback())
        m_data->selection.CutTo(m_data->callbackCount);
    m_data->tooFar = true;
    Redraw(); // not at once: who follows the end scrolls first
    ScrollWindow(SB_VERT, m_data->view.topRow);
}

bool CReportCtrl::ReadItem(int item, int subitem, unsigned int mask, ItemView& view)
{
    if (item < RVI_DEFAULT || item >= GetItemCount() || subitem >= GetSubItemCount() || subitem < -1)
        return false;
    view.item = &FetchItem(item, subitem, mask, view.cell);
    return true;
}

int CReportCtrl::GetItem(_RVITEM* item)
{
    const unsigned asked = item->mask;
    ItemView view;
    if (!ReadItem(item->item, item->subitem, asked, view))
        return 0;
    const structITEM& record = *view.item;
    const report::Cell& cell = view.cell;

    if (!(asked & RVIM_TEXT))
        item->text = nullptr;
    if (!cell.hasText)
        item->textMax = -1;
    else if (item->text && item->textMax > 0)
    {
        // The preview goes in whole: callers bring room for it.
        const std::size_t room = static_cast<std::size_t>(item->textMax) - 1;
        const std::size_t length = item->subitem < 0 ? cell.text.size() : std::min(cell.text.size(), room);
        std::memmove(item->text, cell.text.data(), length);
        item->text[length] = '\0';
    }
    item->backgroundColor = record.backgroundColor;
    item->previewHeight = record.previewHeight;
    item->treeLevel = record.treeLevel;
    item->state = record.state;
    item->itemData = record.itemData;
    item->image = cell.image;
    item->extra = cell.extra;
    item->check = cell.check;
    item->textColor = cell.textColor;

    item->mask = RVIM_STATE | RVIM_ITEMDATA;
    const auto set = [item](unsigned bit, bool has) { item->mask |= has ? bit : 0; };
    set(RVIM_TEXT, item->text && item->textMax >= 0);
    set(RVIM_TEXTCOLOR, item->textColor >= 0);
    set(RVIM_IMAGE, item->image >= 0);
    set(RVIM_CHECK, item->check >= 0);
    set(RVIM_BACKGROUNDCOLOR, item->backgroundColor >= 0);
    set(RVIM_PREVIEWHEIGHT, item->previewHeight != 0);
    set(RVIM_TREELEVEL, item->treeLevel >= 0);
    set(RVIM_EXTRA, item->extra >= 0);

    // The number of the item, and not its row, is looked up in the range of rows. Deliberate: owners that
    // keep both alike rely on it.
    if ((asked & RVIM_STATE) && m_data->selection.IsSelected(item->item))
        item->state |= RVIS_SELECTED;
    return 1;
}

int CReportCtrl::SetItem(_RVITEM* item)
{
    ItemView view;
    if (m_data->IsCallback() || !ReadItem(item->item, item->subitem, RVIM_TEXT | RVIM_STATE, view))
        return 0;
    const auto changes = [item](unsigned bit) { return (item->mask & bit) != 0; };

    report::Cell cell = view.cell;
    if (changes(RVIM_TEXT))
    {
        cell.hasText = item->text != nullptr;
        cell.text =
            item->text ? std::string_view(item->text, ::strnlen(item->text, kMaxText)) : std::string_view();
    }
    structITEM& record = GetItemStruct(item->item, item->subitem, 0);
    // A copy, because the text may lie in the very string that it is written to.
    m_data->text.assign(cell.text);
    cell.text = m_data->text;
    cell.textColor = changes(RVIM_TEXTCOLOR) ? item->textColor : cell.textColor;
    cell.image = changes(RVIM_IMAGE) ? item->image : cell.image;
    cell.extra = changes(RVIM_EXTRA) ? item->extra : cell.extra;
    cell.check = changes(RVIM_CHECK) ? item->check : cell.check;
    if (item->subitem >= 0)
        report::WriteCell(record.cells, item->subitem, cell);
    record.backgroundColor = changes(RVIM_BACKGROUNDCOLOR) ? item->backgroundColor : record.backgroundColor;
    record.previewHeight = changes(RVIM_PREVIEWHEIGHT) ? item->previewHeight : record.previewHeight;
    record.treeLevel = changes(RVIM_TREELEVEL) ? item->treeLevel : record.treeLevel;
    if (changes(RVIM_STATE))
        record.state = (record.state & ~kStatesTaken) | (item->state & kStatesTaken);
    record.state &= ~RVIS_SELECTED;
    record.itemData = changes(RVIM_ITEMDATA) ? item->itemData : record.itemData;
    SetItemStruct(item->item, record);

    ScrollWindow(SB_VERT, m_data->view.topRow);
    if (m_data->redraw)
        RedrawItems(item->item, RVI_NONE);
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
    buffer[0] = '\0';
    ItemView view;
    if (!ReadItem(item, subitem, RVIM_TEXT, view))
        return 0;
    const std::size_t length = std::min(view.cell.text.size(), static_cast<std::size_t>(max) - 1);
    std::memmove(buffer, view.cell.text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

ZEMA::String CReportCtrl::GetItemText(int item, int subitem)
{
    ItemView view;
    if (!ReadItem(item, subitem, RVIM_TEXT, view))
        return {};
    return ZEMA::String(view.cell.text.data(), view.cell.text.size());
}

int CReportCtrl::GetItemImage(int item, int subitem)
{
    ItemView view;
    return ReadItem(item, subitem, RVIM_IMAGE, view) ? view.cell.image : -1;
}

int CReportCtrl::GetItemCheck(int item, int subitem)
{
    ItemView view;
    return ReadItem(item, subitem, RVIM_CHECK, view) ? view.cell.check : -1;
}

unsigned long CReportCtrl::GetItemData(int item)
{
    ItemView view;
    return ReadItem(item, -1, RVIM_ITEMDATA, view) ? static_cast<unsigned long>(view.item->itemData) : 0;
}

ZEMA::String CReportCtrl::GetItemString(int item, char separator)
{
    std::string line;
    const int columns = GetActiveSubItemCount();
    for (int column = 0; column < columns; ++column)
    {
        ItemView view;
        const bool found = ReadItem(item, GetSubItemFromColumn(column), RVIM_TEXT, view);
        if (column == 0 && found && m_data->IsTree() && view.item->treeLevel >= 0)
        {
            for (int level = 1; level < view.item->treeLevel && !Data::treeIndent.IsEmpty(); ++level)
                line += Data::treeIndent.c_str();
            const _TREEITEM* const treeItem = view.item->treeItem;
            line += treeItem && treeItem->firstChild ? '-' : ' '; // '-' for collapsed ones too: deliberate
        }
        const report::Cell& cell = view.cell;
        const std::size_t start = line.size();
        if (cell.hasText)
            line += cell.text;
        else if (cell.image >= 0)
            line += std::to_string(cell.image);
        else if (cell.check >= 0)
            line += std::to_string(cell.check);
        if (cell.hasText)
            std::replace(line.begin() + static_cast<std::ptrdiff_t>(start), line.end(), separator, ' ');
        line += column + 1 < columns ? separator : '\n';
    }
    return ZEMA::String(line.data(), line.size());
}

int CReportCtrl::InsertItem(int item, const char* text)
{
    if (m_data->IsCallback() || m_data->busy || item < 0)
        return -1;
    item = std::min(item, m_data->items.Count());
    const bool last = item == m_data->items.Count();
    int row = 0;
    if (!m_data->IsTree())
    {
        const int rowThere = last ? RVI_NONE : GetRowFromItem(item);
        row = rowThere == RVI_NONE ? GetRowCount() : rowThere;
    }
    else if (!last)
        InvalidateRows(); // which remembers focus and selection by the numbers that are about to change
    try
    {
        m_data->items.Insert(item, GetSubItemCount());
    }
    catch (const std::bad_alloc&)
    {
        return -1;
    }
    if (!m_data->IsTree())
    {
        report::RowMap& rows = Rows();
        try
        {
            last ? rows.Append(item) : rows.InsertItem(item, row);
        }
        catch (const std::bad_alloc&)
        {
            m_data->items.Remove({item});
            return -1;
        }
        m_data->selection.RowInserted(row);
    }
    if (text && GetSubItemCount() > 0)
        SetItemText(item, 0, text);
    Redraw();
    return item;
}

int CReportCtrl::DeleteItem(int item)
{
    if (m_data->IsCallback() || m_data->busy || item < 0 || item >= m_data->items.Count())
        return 0;
    if (_TREEITEM* const treeItem = m_data->items.At(item).treeItem)
        DeleteSubtree(treeItem);
    else
        RemoveItems({item});
    return 1;
}

int CReportCtrl::DeleteAllItems()
{
    if (m_data->IsCallback() || m_data->busy)
        return 0;
    m_data->tree.Root()->firstChild = nullptr;
    m_data->rowsInvalid = false;
    m_data->lastInserted = nullptr;
    m_data->rows.Clear();
    m_data->items.RemoveAll();
    ForgetSelection();
    ScrollWindow(SB_VERT, 0);
    Redraw();
    return 1;
}

// Takes a sorted list of items away, with their rows. The tree has let go of them.
void CReportCtrl::RemoveItems(const std::vector<int>& items)
{
    report::RowMap& rows = Rows();
    const int focusedItem = GetItemFromRow(m_data->selection.focusRow);
    int rowsLeft = rows.Count();
    for (int row = rows.Count() - 1; row >= 0; --row)
        if (std::binary_search(items.begin(), items.end(), rows.ItemAt(row)))
            m_data->selection.RowRemoved(row, --rowsLeft);
    rows.RemoveItems(items);
    m_data->items.Remove(items);
    if (focusedItem >= 0 && std::binary_search(items.begin(), items.end(), focusedItem))
        SetState(m_data->selection.focusRow, RVIS_FOCUSED, RVIS_FOCUSED);
    ScrollWindow(SB_VERT, m_data->view.topRow);
    m_data->tooFar = true;
    Redraw();
}
