// Ready-made orders for sorting a report control.
#pragma once

#include "ReportCtrl.h"

#include <memory>

// Compares the cells of a control: as text, in natural order, as numbers or as dates, with further keys for
// cells that are equal. In the end the item number decides, so that a sort always leads to the same order. In
// use once set as the control's sort callback:
//
//     CReportSorter sorter(control);
//     sorter.SetOrder(2, CReportSorter::Order::kNumber);
//     sorter.AddFurtherKey(0, 1);
//     control.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
//
// Each cell is read once a sort; what was read is kept until the next sort. In ascending order cells without
// text come first, as without a sorter by check state and image; then texts that are no number or no date
// where one is wanted, by their bytes. An empty text is a text. The window's thread only; sorter and control
// must both live as long as the control sorts with it. Change a sorter between sorts only.
class QMLOG_API CReportSorter
{
public:
    // Numbers: sign, decimals and exponent may be missing; groups before the decimals have three digits. They
    // are compared exactly, and "1" equals "1.0". Dates: the year has four digits and stands first or last;
    // '-', '/' or '.' stands between, where with points the day always comes before the month. After 'T' or a
    // blank there may be a time, hours:minutes[:seconds[.fraction]], and after that 'Z' or an offset,
    // "+01:00", "+0100" or "+01"; without either it counts as with 'Z'.
    enum class Order
    {
        kText,         // by bytes
        kCaseless,     // the letters A to Z count as a to z
        kNatural,      // caseless, and digits that stand together are a number: "file9" before "file10"
        kNumber,       // "-1,234.5", "1e-3"
        kDecimalComma, // "-1.234,5"
        kDate,         // "2026-11-21 14:05:06.25"; a date that ends with the year begins with the month
        kDateDayFirst  // the same, but a date that ends with the year begins with the day
    };

    explicit CReportSorter(CReportCtrl& control);
    ~CReportSorter();

    // How the cells of a subitem are compared; kText where nothing was said. What is said of a number
    // stays with it when subitems are defined or undefined later.
    void SetOrder(int subitem, Order order);

    // Decides between items whose cells are equal, after the keys added before. The direction is its own and
    // does not turn round with that of the sort.
    void AddFurtherKey(int subitem, int ascending);
    void RemoveFurtherKeys();

    // For SetSortCallback; `sorter` is the address of one.
    static int Compare(int item1, int subitem1, int item2, int subitem2, __int64 sorter);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
