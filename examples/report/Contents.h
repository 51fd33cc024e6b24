// What the window shows: the order of its rows, the columns, and a folder as a tree.
#pragma once

#include <ReportSort.h>

#include <functional>
#include <string>

// The order of a report control's rows while this object lives: by their cells, but folders, whose item data
// is kFolder, stand before files whether the sort goes up or down.
class RowOrder
{
public:
    static constexpr unsigned long kFolder = 1;

    explicit RowOrder(CReportCtrl& report);
    CReportSorter& GetSorter() { return m_sorter; }

private:
    static int Compare(int item1, int subitem1, int item2, int subitem2, __int64 rowOrder);

    CReportCtrl& m_report;
    CReportSorter m_sorter;
    unsigned m_sortNumber = 0; // of the sort that m_ascending belongs to
    int m_ascending = 1;
};

// Gives a column a width and an order that fit its texts, and puts numbers to its right.
void FitColumn(CReportCtrl& report, RowOrder& order, int subitem);

// Is told now and then how many items there are.
using Progress = std::function<void(int items)>;

// Makes an empty control a tree, and says how its columns are ordered. A folder that cannot be looked into
// shows as an empty one.
void ShowFolder(const std::string& path, CReportCtrl& report, RowOrder& order, const Progress& progress);
