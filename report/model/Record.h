// From items and cells to the records that callers pass, and back: the one conversion.
#pragma once

#include "ReportItem.h"
#include "report/model/CellCodec.h"

namespace report
{

// A cell, and the item it is in: valid until another item is fetched.
struct FetchedCell
{
    Item* item = nullptr;
    Cell cell; // of subitem -1: the preview
};

// The cell `subitem` of an item. For -1 it is the preview, which always has text.
Cell CellOf(const Item& item, int subitem);

// What `record` says of a cell; what its mask leaves out is none. The text is cut to `maxText` bytes.
Cell CellOf(const _RVITEM& record, std::size_t maxText);

// Puts everything but item, subitem and text into `record`. Its mask says afterwards what there is;
// RVIM_TEXT is in it if the record has a text.
void FillRecord(_RVITEM& record, const FetchedCell& from);

// Takes what the mask of `change` says over into a cell or into the fields of an item.
void ChangeCell(Cell& cell, const _RVITEM& change, std::size_t maxText);
void ChangeItem(Item& item, const _RVITEM& change);

} // namespace report
