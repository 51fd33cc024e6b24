// Sorting through the control: its virtual operations, its callback, its header's mark, and the ready-made
// orders.
#include "ReportHeaderCtrl.h"
#include "ReportSort.h"
#include "tests/report/ReportFixture.h"
#include "zemacore/WideText.h"

#include <cstring>

namespace
{

class CountingReport : public TestReport
{
public:
    int compared = 0;
    int ranges = 0;
    int reads = 0;

    using TestReport::CompareItems;
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        ++compared;
        return -TestReport::CompareItems(item1, subitem1, item2, subitem2);
    }

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        reads += mask == RVIM_TEXT;
        return TestReport::GetItemStruct(item, subitem, mask);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        ++ranges;
        TestReport::QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive) override
    {
        ++ranges;
        TestReport::TreeSort(subitem, parent, ascending, recursive);
    }
};

using ReportOverriddenSort = ReportTestOf<CountingReport>;

class ReportSort : public ReportTest
{
protected:
    std::string Sorted(int subitem, int ascending)
    {
        EXPECT_EQ(1, report.SortItems(subitem, ascending));
        return Rows();
    }
};

TEST_F(ReportOverriddenSort, GoesThroughTheSubclass)
{
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        report.UndefineAllSubItems();
        report.DeleteAllItems();
        Create(style);
        Define({"a"});
        Fill({"2", "3", "1"});
        report.compared = report.ranges = report.reads = 0;
        EXPECT_EQ(1, report.SortItems(0, 1));
        EXPECT_EQ(3, report.reads) << style; // each cell once
        EXPECT_EQ("3 2 1", Rows()) << style;
        EXPECT_LE(2, report.compared) << style;
        EXPECT_LE(1, report.ranges) << style;
    }
}

TEST_F(ReportSort, CallbackDecidesAndTheMarkFollowsItsColumn)
{
    Define({"a", "b", "c"});
    Fill({"1", "2", "3"});
    report.SetSortCallback(
        [](int item1, int subitem1, int item2, int subitem2, __int64 value) {
            EXPECT_EQ(2, subitem1);
            EXPECT_EQ(2, subitem2);
            EXPECT_EQ(-5000000000, value);
            return item2 - item1;
        },
        -5000000000);
    EXPECT_EQ(0, report.ResortItems());
    EXPECT_EQ("3 2 1", Sorted(2, 1));
    EXPECT_EQ(1, report.DeactivateSubItem(0));
    EXPECT_EQ(1, report.ActivateSubItem(0, 1)); // c is now the last of three
    Fill({"4"});
    EXPECT_EQ(1, report.ResortItems());
    EXPECT_EQ("4 3 2 1", Rows());
    const CReportHeaderCtrl& header = *report.GetHeaderCtrl();
    const auto marks = [&header] {
        std::vector<int> formats;
        for (int column = 0; column < 3; ++column)
        {
            HDITEM mark = {};
            mark.mask = HDI_FORMAT;
            EXPECT_TRUE(header.GetItem(header.GetItemOfColumn(column), &mark));
            formats.push_back(mark.fmt & (HDF_SORTUP | HDF_SORTDOWN));
        }
        return formats;
    };
    EXPECT_EQ((std::vector<int>{0, 0, HDF_SORTUP}), marks());
    report.ClearSortSettings();
    EXPECT_EQ((std::vector<int>{0, 0, 0}), marks());
    EXPECT_EQ(0, report.ResortItems());
    EXPECT_EQ("4 3 2 1", Rows());

    Sorted(2, 0);
    report.DeactivateSubItem(2);
    report.ActivateSubItem(2, 0);
    EXPECT_EQ(0, report.ResortItems());
}

TEST_F(ReportSort, ComparesRecordsByTextsThatAreNotEmpty)
{
    char empty[] = "", a[] = "a", b[] = "b";
    const struct
    {
        char* text1;
        char* text2;
        unsigned mask; // of the first record
        int expected;  // the first one's image is less, its check state greater
    } cases[] = {
        {a, b, 0, -1}, {b, empty, 0, 1}, {empty, nullptr, RVIM_TEXT, -1}, {empty, empty, RVIM_CHECK, 1}};
    for (const auto& each : cases)
    {
        _RVITEM item1;
        _RVITEM item2;
        item1.text = each.text1;
        item2.text = each.text2;
        item1.mask = each.mask;
        item2.image = item1.check = 9;
        EXPECT_EQ(each.expected, report.CompareItems(&item1, &item2)) << &each - cases;
        EXPECT_EQ(-each.expected, report.CompareItems(&item2, &item1)) << &each - cases;
        EXPECT_EQ(0, report.CompareItems(&item1, &item1)) << &each - cases;
    }
}

TEST_F(ReportSort, SorterGivesEachColumnItsOrder)
{
    Define({"number", "name"});
    Fill({"10", "9", "1e1", "none"});
    const char* const names[] = {"file10", "File9", "file9", "file9"};
    for (int item = 0; item < 4; ++item)
        report.SetItemText(item, 1, names[item]);
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::kNumber);
    sorter.SetOrder(1, CReportSorter::Order::kNatural);
    sorter.AddFurtherKey(1, 0);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    EXPECT_EQ("none 9 10 1e1", Sorted(0, 1));
    EXPECT_EQ("10 1e1 9 none", Sorted(0, 0)); // the further key does not turn round

    report.SetItemText(0, 1, "a"); // neither a later sort nor a comparison outside one knows old keys
    EXPECT_EQ("10 9 1e1 none", Sorted(1, 1));
    report.SetItemText(0, 1, "z");
    EXPECT_GT(report.CompareItems(0, 1, 1, 1), 0);

    Create(RVS_CALLBACK);
    _RVFINDINFO find = {RVFI_TEXT, "x", 0, 0, 0};
    report.SetItemCount(9);
    EXPECT_EQ(0, report.FindItem(&find, 0, 5));
}

// Words of both encodings among each other, each pair as the system compares it.
TEST_F(ReportSort, SorterComparesWordsByTheUsersLanguage)
{
    const char* const words[] = {"Zug", "\u00D6l", "apfel",  "Apfel", "\u00C4pfel", "\xC4pfel",
                                 "",    "\u0416",  "\u65E5", "z",     "co-op",      "coop"};
    Define({"word"});
    for (const char* const word : words)
        Fill({word});
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::kLocale);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    const std::string apples = Sorted(0, 1);
    EXPECT_NE(std::string::npos, apples.find("apfel Apfel \u00C4pfel \xC4pfel ")) << apples;
    for (int i = 0; i < report.GetItemCount(); ++i)
        for (int j = 0; j < report.GetItemCount(); ++j)
        {
            ZEMA::WideString wide[2];
            ZEMA::ToWide(words[i], std::strlen(words[i]), wide[0]);
            ZEMA::ToWide(words[j], std::strlen(words[j]), wide[1]);
            const int system = ::CompareStringEx(LOCALE_NAME_USER_DEFAULT, 0, wide[0].c_str(), -1,
                                                 wide[1].c_str(), -1, nullptr, nullptr, 0) -
                               CSTR_EQUAL;
            const int byBytes = std::strcmp(words[i], words[j]);
            const int expected = system != 0 ? system : byBytes;
            const int order = report.CompareItems(i, 0, j, 0);
            EXPECT_EQ(expected < 0, order < 0) << words[i] << ' ' << words[j];
            EXPECT_EQ(expected > 0, order > 0) << words[i] << ' ' << words[j];
        }
}

} // namespace
