#include "report/model/Record.h"

#include <cstring>

namespace report
{

namespace
{

// The bits of a state that a caller may change. RVIS_SELECTED is one of them, but it is never stored.
constexpr unsigned kStatesTaken = RVIS_FOCUSED | RVIS_SELECTED | RVIS_COLLAPSED | RVIS_EXPANDED;

} // namespace

Cell CellOf(const Item& item, int subitem)
{
    if (subitem >= 0)
        return ReadCell(item.cells, subitem);
    Cell preview;
    preview.textColor = item.previewTextColor;
    preview.hasText = true;
    preview.text = {item.previewText.c_str(), item.previewText.GetLength()};
    return preview;
}

Cell CellOf(const _RVITEM& record, std::size_t maxText)
{
    Cell cell;
    ChangeCell(cell, record, maxText);
    return cell;
}

void FillRecord(_RVITEM& record, const FetchedCell& from)
{
    const Item& item = *from.item;
    const Cell& cell = from.cell;
    record.backgroundColor = item.backgroundColor;
    record.previewHeight = item.previewHeight;
    record.treeLevel = item.treeLevel;
    record.state = item.state;
    record.itemData = item.itemData;
    record.image = cell.image;
    record.extra = cell.extra;
    record.check = cell.check;
    record.textColor = cell.textColor;

    record.mask = RVIM_STATE | RVIM_ITEMDATA;
    const auto set = [&record](unsigned bit, bool has) { record.mask |= has ? bit : 0; };
    set(RVIM_TEXT, record.text && cell.hasText);
    set(RVIM_TEXTCOLOR, record.textColor >= 0);
    set(RVIM_IMAGE, record.image >= 0);
    set(RVIM_CHECK, record.check >= 0);
    set(RVIM_BACKGROUNDCOLOR, record.backgroundColor >= 0);
    set(RVIM_PREVIEWHEIGHT, record.previewHeight != 0);
    set(RVIM_TREELEVEL, record.treeLevel >= 0);
    set(RVIM_EXTRA, record.extra >= 0);
}

void ChangeCell(Cell& cell, const _RVITEM& change, std::size_t maxText)
{
    const auto take = [&change](unsigned bit, int& field, int value) {
        field = (change.mask & bit) != 0 ? value : field;
    };
    if ((change.mask & RVIM_TEXT) != 0)
    {
        cell.hasText = change.text != nullptr;
        cell.text = cell.hasText ? std::string_view(change.text, ::strnlen(change.text, maxText))
                                 : std::string_view();
    }
    take(RVIM_TEXTCOLOR, cell.textColor, change.textColor);
    take(RVIM_IMAGE, cell.image, change.image);
    take(RVIM_EXTRA, cell.extra, change.extra);
    take(RVIM_CHECK, cell.check, change.check);
}

void ChangeItem(Item& item, const _RVITEM& change)
{
    const auto take = [&change](unsigned bit, auto& field, auto value) {
        field = (change.mask & bit) != 0 ? value : field;
    };
    take(RVIM_BACKGROUNDCOLOR, item.backgroundColor, change.backgroundColor);
    take(RVIM_PREVIEWHEIGHT, item.previewHeight, change.previewHeight);
    take(RVIM_TREELEVEL, item.treeLevel, change.treeLevel);
    take(RVIM_STATE, item.state, (item.state & ~kStatesTaken) | (change.state & kStatesTaken));
    take(RVIM_ITEMDATA, item.itemData, change.itemData);
    item.state &= ~RVIS_SELECTED;
}

} // namespace report
