#include "report/model/Items.h"

#include "report/model/FindItem.h"
#include "report/model/InvalidArgument.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace report
{

namespace
{

constexpr std::size_t kMaxText = 65535; // bytes of a stored text

} // namespace

// ---- Subitems

SubItem& Items::SubItemAt(int subitem)
{
    if (subitem < 0 || subitem >= SubItemCount())
        ThrowInvalidArgument();
    return m_subitems[static_cast<std::size_t>(subitem)];
}

unsigned Items::FormatOf(int subitem) const
{
    const auto index = static_cast<std::size_t>(subitem);
    return index < m_subitems.size() ? m_subitems[index].format : 0;
}

bool Items::Define(int subitem, SubItem definition)
{
    if (subitem < 0 || subitem > SubItemCount())
        ThrowInvalidArgument();
    try
    {
        m_subitems.insert(m_subitems.begin() + subitem, std::move(definition));
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    try
    {
        m_stored.InsertField(subitem);
    }
    catch (const std::bad_alloc&)
    {
        m_subitems.erase(m_subitems.begin() + subitem);
        return false;
    }
    return true;
}

void Items::Undefine(int subitem)
{
    m_subitems.erase(m_subitems.begin() + subitem);
    m_stored.RemoveField(subitem);
}

// ---- Items

bool Items::Fetch(int item, int subitem, unsigned mask, FetchedCell& fetched)
{
    if (item < RVI_DEFAULT || item >= Count() || subitem < -1 || subitem >= SubItemCount())
        return false;
    fetched.item = &m_overrides.GetItemStruct(item, subitem, mask);
    fetched.cell = CellOf(*fetched.item, subitem);
    return true;
}

bool Items::Read(_RVITEM& record)
{
    const unsigned asked = record.mask;
    FetchedCell fetched;
    if (!Fetch(record.item, record.subitem, asked, fetched))
        return false;
    const std::string_view text = fetched.cell.text;
    if ((asked & RVIM_TEXT) == 0)
        record.text = nullptr;
    if (!fetched.cell.hasText)
        record.textMax = -1;
    else if (record.text && record.textMax > 0)
    {
        // The preview goes in whole: callers bring room for it.
        const std::size_t room = static_cast<std::size_t>(record.textMax) - 1;
        const std::size_t length = record.subitem < 0 ? text.size() : std::min(text.size(), room);
        std::memmove(record.text, text.data(), length);
        record.text[length] = '\0';
    }
    FillRecord(record, fetched);
    if (record.textMax < 0)
        record.mask &= ~RVIM_TEXT;
    return true;
}

bool Items::Write(const _RVITEM& change)
{
    FetchedCell present;
    if (m_isCallback || !Fetch(change.item, change.subitem, RVIM_TEXT | RVIM_STATE, present))
        return false;
    Cell cell = present.cell;
    ChangeCell(cell, change, kMaxText);
    // A copy, because the text may lie in the very string that it is written to, or in an answer that goes
    // with the next one.
    m_text.assign(cell.text);
    cell.text = m_text;

    Item& record = m_overrides.GetItemStruct(change.item, change.subitem, 0);
    if (change.subitem >= 0)
        WriteCell(record.cells, change.subitem, cell);
    ChangeItem(record, change);
    m_overrides.SetItemStruct(change.item, record);
    return true;
}

void Items::SetState(int item, unsigned bits, unsigned mask)
{
    if (m_isCallback)
        return;
    Item& record = m_overrides.GetItemStruct(item, -1, RVIM_STATE);
    record.state = (record.state & ~mask) | (bits & mask);
    m_overrides.SetItemStruct(item, record);
}

bool Items::SetPreview(int item, const char* text, int height, int textColor)
{
    if (m_isCallback || item < RVI_DEFAULT || item >= Count())
        return false;
    Item& record = m_overrides.GetItemStruct(item, -1, RVIM_TEXT | RVIM_PREVIEWHEIGHT);
    record.previewText = text;
    record.previewHeight = height;
    record.previewTextColor = textColor;
    m_overrides.SetItemStruct(item, record);
    return true;
}

void Items::AppendIndent(std::string& line, const Item& item, const LineForm& form) const
{
    if (!form.isTree || item.treeLevel < 0)
        return;
    for (int level = 1; level < item.treeLevel && !form.indent.empty(); ++level)
        line += form.indent;
    const bool hasChildren = item.treeItem && item.treeItem->firstChild;
    line += hasChildren ? '-' : ' '; // '-' for collapsed ones too: deliberate
}

std::string Items::Line(int item, const std::vector<int>& subitems, const LineForm& form)
{
    std::string line;
    for (std::size_t column = 0; column < subitems.size(); ++column)
    {
        FetchedCell fetched;
        if (Fetch(item, subitems[column], RVIM_TEXT, fetched) && column == 0)
            AppendIndent(line, *fetched.item, form);
        const Cell& cell = fetched.cell;
        const std::size_t start = line.size();
        if (cell.hasText)
            line += cell.text;
        else if (cell.image >= 0 || cell.check >= 0)
            line += std::to_string(cell.image >= 0 ? cell.image : cell.check);
        if (cell.hasText)
            std::replace(line.begin() + static_cast<std::ptrdiff_t>(start), line.end(), form.separator, ' ');
        line += column + 1 < subitems.size() ? form.separator : '\n';
    }
    return line;
}

int Items::Find(const _RVFINDINFO& info, int subitem, int start)
{
    constexpr unsigned kAll = RVIM_TEXT | RVIM_IMAGE | RVIM_CHECK | RVIM_ITEMDATA;
    return FindItem(info.flags, start, Count(), [&](int item) {
        FetchedCell fetched;
        return Fetch(item, subitem, kAll, fetched) && Matches(info, fetched.cell, fetched.item->itemData);
    });
}

// ---- What the virtual operations do

Item& Items::Record(int item, int subitem, unsigned mask)
{
    if (!m_isCallback)
        return m_stored.At(item);
    Item* const record = m_callback.Fetch(item, subitem, mask, SubItemCount());
    return record ? *record : m_stored.At(RVI_DEFAULT);
}

void Items::PutRecord(int item, Item& record)
{
    if (m_isCallback)
        return;
    Item& stored = m_stored.At(item);
    if (&stored != &record)
        stored = record;
}

} // namespace report
