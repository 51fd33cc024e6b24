// The ready-made orders at work in a control.
#include "ReportSort.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace
{

class CountingReport : public CReportCtrl
{
public:
    std::map<std::pair<int, int>, int> reads; // by item and subitem

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        ++reads[{item, subitem}];
        return CReportCtrl::GetItemStruct(item, subitem, mask);
    }
};

// Columns "size", "date" and "name", in which nothing is in order.
class ReportSortTest : public testing::Test
{
protected:
    ReportSortTest()
    {
        parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr);
        report.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 7);
        for (const char* caption : {"size", "date", "name"})
        {
            _RVSUBITEM definition;
            definition.text = caption;
            report.ActivateSubItem(report.DefineSubItem(report.GetSubItemCount(), &definition), -1);
        }
        AddItem({"10", "21.11.2026", "file10"});
        AddItem({"9", "1/12/2026", "File9"});
        AddItem({"1e1", "2026-11-20", "file9"});
        AddItem({"none", "2026-11-20 12:00", "file9"});
        AddItem({"1,000", "2025-12-31", "f"});
        sorter.SetOrder(0, CReportSorter::Order::kNumber);
        sorter.SetOrder(1, CReportSorter::Order::kDateDayFirst);
        sorter.SetOrder(2, CReportSorter::Order::kNatural);
        report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    }
    ~ReportSortTest() override { parent.DestroyWindow(); }

    void AddItem(std::initializer_list<const char*> texts)
    {
        const int item = report.InsertItem(report.GetItemCount());
        int subitem = 0;
        for (const char* text : texts)
            report.SetItemText(item, subitem++, text);
    }

    std::vector<int> Sort(int subitem, int ascending)
    {
        report.reads.clear();
        EXPECT_EQ(1, report.SortItems(subitem, ascending));
        std::vector<int> items;
        for (int row = 0; row < report.GetRowCount(); ++row)
            items.push_back(report.GetItemFromRow(row));
        return items;
    }

    using Items = std::vector<int>;
    CWnd parent;
    CountingReport report;
    CReportSorter sorter{report};
};

TEST_F(ReportSortTest, ComparesCellsAsTheirSubitemSays)
{
    EXPECT_EQ((Items{3, 1, 0, 2, 4}), Sort(0, 1));
    EXPECT_EQ((Items{4, 2, 3, 0, 1}), Sort(1, 1));
    EXPECT_EQ((Items{4, 1, 2, 3, 0}), Sort(2, 1));
}

TEST_F(ReportSortTest, FurtherKeysAndItemNumbersKeepTheirDirection)
{
    EXPECT_EQ((Items{4, 0, 2, 1, 3}), Sort(0, 0));
    sorter.AddFurtherKey(1, 0);
    EXPECT_EQ((Items{4, 1, 3, 2, 0}), Sort(2, 1));
    EXPECT_EQ((Items{0, 1, 3, 2, 4}), Sort(2, 0));
}

TEST_F(ReportSortTest, ReadsEachCellOnceASortAndAnewInTheNext)
{
    sorter.AddFurtherKey(1, 1);
    Sort(2, 1);
    for (const auto& [cell, reads] : report.reads)
        EXPECT_EQ(1, reads) << "item " << cell.first << ", subitem " << cell.second;
    EXPECT_EQ(8u, report.reads.size()); // the further key only of the three that are equal

    report.SetItemText(0, 2, "a");
    EXPECT_EQ((Items{0, 4, 2, 3, 1}), Sort(2, 1));
    report.SetItemText(0, 2, "z");
    EXPECT_GT(report.CompareItems(0, 2, 4, 2), 0); // no sort runs, so nothing of the last one counts
}

} // namespace
