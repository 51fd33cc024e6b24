// The ready-made orders at work in a control.
#include "ReportSort.h"
#include "tests/report/ReportFixture.h"

#include <map>

namespace
{

class CountingReport : public CReportCtrl
{
public:
    std::map<std::pair<int, int>, int> reads; // by item and subitem

    std::vector<int> Sort(int subitem, int ascending)
    {
        reads.clear();
        EXPECT_EQ(1, SortItems(subitem, ascending));
        std::vector<int> items;
        for (int row = 0; row < GetRowCount(); ++row)
            items.push_back(GetItemFromRow(row));
        return items;
    }

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        ++reads[{item, subitem}];
        return CReportCtrl::GetItemStruct(item, subitem, mask);
    }
};

TEST(ReportSort, SortsByEachColumnsOrderReadingEachCellOnce)
{
    const char* const cells[][3] = {{"10", "21.11.2026", "file10"},
                                    {"9", "1/12/2026", "File9"},
                                    {"1e1", "2026-11-20", "file9"},
                                    {"none", "2026-11-20 12:00", "file9"},
                                    {"1,000", "2025-12-31", "f"}};
    ReportParent parent;
    CountingReport report;
    report.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 7);
    for (int subitem = 0; subitem < 3; ++subitem)
    {
        _RVSUBITEM definition;
        report.ActivateSubItem(report.DefineSubItem(subitem, &definition), -1);
    }
    for (int item = 0; item < 5; ++item)
    {
        report.InsertItem(item);
        for (int subitem = 0; subitem < 3; ++subitem)
            report.SetItemText(item, subitem, cells[item][subitem]);
    }
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::kNumber);
    sorter.SetOrder(1, CReportSorter::Order::kDateDayFirst);
    sorter.SetOrder(2, CReportSorter::Order::kNatural);
    sorter.AddFurtherKey(1, 0);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));

    using Items = std::vector<int>;
    EXPECT_EQ((Items{4, 2, 3, 0, 1}), report.Sort(1, 1));
    EXPECT_EQ((Items{3, 1, 0, 2, 4}), report.Sort(0, 1));
    EXPECT_EQ((Items{4, 0, 2, 1, 3}), report.Sort(0, 0)); // the further key does not turn round
    EXPECT_EQ((Items{4, 1, 3, 2, 0}), report.Sort(2, 1));
    for (const auto& [cell, reads] : report.reads)
        EXPECT_EQ(1, reads) << "item " << cell.first << ", subitem " << cell.second;
    EXPECT_EQ(8u, report.reads.size()); // the further key only of the three that are equal

    report.SetItemText(0, 2, "a"); // neither a later sort nor a comparison outside one knows old keys
    EXPECT_EQ((Items{0, 4, 1, 3, 2}), report.Sort(2, 1));
    report.SetItemText(0, 2, "z");
    EXPECT_GT(report.CompareItems(0, 2, 4, 2), 0);
}

} // namespace
