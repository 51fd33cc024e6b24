// Ready-made orders for sorting a report control.
#pragma once

#include "ReportCtrl.h"

#include <memory>

// Compares the cells of a control as text, in natural order, as numbers or as dates, with further keys for
// cells that are equal. In the end the item number decides, so that a sort always leads to the same order.
// Set it as the control's sort callback:
//
//     CReportSorter sorter(control);
//     sorter.SetOrder(2, CReportSorter::Order::Number);
//     sorter.AddFurtherKey(0, 1);
//     control.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
//
// Each cell is read once for each sort, and kept until the next one. In ascending order, cells without text
// come first, in the order that they have without a sorter (check state, image); then come texts that are no
// number or no date although one is wanted, by their bytes. An empty text is a text. Use a sorter on the
// window's thread only, and change it between sorts only. Sorter and control must both live as long as the
// control sorts with it.
class QMLOG_API CReportSorter
{
public:
    // Numbers: sign, decimals and exponent may be missing; groups before the decimals have three digits. They
    // are compared exactly, and "1" equals "1.0". Dates: the year has four digits and comes first or last,
    // with
    // '-', '/' or '.' as separator; with points, the day always comes before the month. After 'T' or a blank
    // there may be a time, hours:minutes[:seconds[.fraction]], and after that 'Z' or an offset, "+01:00",
    // "+0100" or "+01"; a time without either is taken as one with 'Z'.
    enum class Order
    {
        Text,         // by bytes
        Caseless,     // the letters A to Z equal a to z
        Natural,      // caseless, and adjacent digits are a number: "file9" before "file10"
        Number,       // "-1,234.5", "1e-3"
        DecimalComma, // "-1.234,5"
        Date,         // "2026-11-21 14:05:06.25"; a date that ends with the year begins with the month
        DateDayFirst, // the same, but a date that ends with the year begins with the day
        Locale        // as the language of the user sorts words, by bytes where that finds no difference
    };

    explicit CReportSorter(CReportCtrl& control);
    ~CReportSorter();

    // Sets how the cells of a subitem are compared; kText is the default. The order stays with the subitem's
    // number if subitems are defined or undefined later.
    void SetOrder(int subitem, Order order);

    // Adds a key that decides between items whose cells are equal, after the keys added before. It has a
    // direction of its own, which does not turn round with that of the sort.
    void AddFurtherKey(int subitem, int ascending);
    void RemoveFurtherKeys();

    // For SetSortCallback; `sorter` is the address of one.
    static int Compare(int item1, int subitem1, int item2, int subitem2, __int64 sorter);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
