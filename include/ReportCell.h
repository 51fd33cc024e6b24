// The encoding of an item's cells in one string, for subclasses of the report control that keep items
// themselves.
#pragma once

#include "QmLogApi.h"
#include "ReportItem.h"

// Reads and changes the cells in CReportCtrl::structITEM::cells, as GetItem and SetItem do for an item. A
// record's `subitem` says which cell, from 0; its `item` and whatever belongs to the whole item are ignored.
// In the string, each cell is
//
//     01 <image> , <extra> , <check> , <text colour> , <length of text> 02 <text> <separator>
//
// in the order of the subitems, with decimal numbers, -1 for none. The separator is the byte 07, or what
// RVP_CELLSEPARATOR says: a text that contains it is cut there when it is read.
class QMLOG_API CReportCell
{
public:
    // Set RVIM_TEXT in `mask` if `text` is a buffer of `textMax` bytes; a text is cut to fit. Afterwards
    // `mask` says what the cell has. Returns the length of the cell's whole text, or -1 if it has none or
    // there is no such cell.
    static int Read(const ZEMA::String& cells, _RVITEM* cell);

    // Changes what `mask` says; a null text takes the cell's text away, and at most 65,535 bytes are kept.
    // Cells that are missing before it are added. Returns 0 for a negative subitem.
    static int Write(ZEMA::String& cells, const _RVITEM* cell);

    // Makes `count` cells that have nothing.
    static void Reset(ZEMA::String& cells, int count);

    // Insert a cell that has nothing before cell `subitem`, and remove a cell. Both return 0 for a negative
    // subitem.
    static int Insert(ZEMA::String& cells, int subitem);
    static int Remove(ZEMA::String& cells, int subitem);
};
