#include "ReportSorts.h"
#include "BenchFiles.h"

#include <cmath>
#include <cstring>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace bench
{

namespace
{

constexpr int kSubItem = 1;

// The owner's comparison of two rows by a column of a list view, as its documentation has it.
struct ByView
{
    const ListView* view;
    int column;

    static int CALLBACK Compare(LPARAM row1, LPARAM row2, LPARAM self)
    {
        const auto* const by = reinterpret_cast<const ByView*>(self);
        CellText text1;
        CellText text2;
        by->view->GetText(static_cast<int>(row1), by->column, text1);
        by->view->GetText(static_cast<int>(row2), by->column, text2);
        return std::strcmp(text1.data(), text2.data());
    }
};

// The same from texts that the owner has himself.
int CALLBACK CompareOwn(LPARAM row1, LPARAM row2, LPARAM texts)
{
    const CellText* const all = reinterpret_cast<const CellText*>(texts);
    return std::strcmp(all[row1].data(), all[row2].data());
}

void Sort(const ListView& rows, PFNLVCOMPARE compare, const void* value)
{
    Check(rows.Send(LVM_SORTITEMS, reinterpret_cast<WPARAM>(value), reinterpret_cast<LPARAM>(compare)) != 0,
          "sorting the list view");
}

// The columns in turn, but the first: rows in the order of one are in none of the next.
class NextColumn
{
public:
    int operator()() { return m_column = m_column % (kColumns - 1) + 1; }

private:
    int m_column = 0;
};

// The list view is sorted by the rows' parameters, which are the numbers of rows in another that stays as it
// is: here LVM_SORTITEMSEX looks for each row that it compares, and takes minutes.
void MeasureAgainstView(const Options& options, Frame& frame, const ListView& view, ReportList& list,
                        Report& report)
{
    const int count = view.Count();
    const unsigned units = static_cast<unsigned>(count);
    ListView rows(frame);
    rows.FillWithNumbers(count);
    ByView byView = {&view, 0};
    std::vector<CellText> texts(units);
    NextColumn next[3];
    const auto copyTexts = [&] {
        const int column = next[1]();
        for (int row = 0; row < count; ++row)
            view.GetText(row, column, texts[static_cast<std::size_t>(row)]);
    };
    const Comparison comparison(
        {{units, [&] { Sort(rows, ByView::Compare, &byView); }, [&] { byView.column = next[0](); }},
         {units, [&] { Sort(rows, CompareOwn, texts.data()); }, copyTexts},
         {units, [&] { Check(list.SortItems(next[2](), 1) == 1, "sorting"); }}},
        options.quick ? 3 : 1);
    const std::string name = "sort " + std::to_string(count) + ", per row";
    report.Add({name, comparison.Time(2), "us", "the list view", comparison.Ratio(2), 0.3});
    report.Add({name, comparison.Time(2), "us", "the same, texts at hand", comparison.Ratio(2, 1)});
}

// Up on the even rows and down on the odd ones.
std::vector<int> OrganPipe(const std::vector<int>& sorted)
{
    std::vector<int> items(sorted.size());
    auto up = items.begin();
    auto down = items.end();
    for (std::size_t i = 0; i < sorted.size(); ++i)
        (i % 2 == 0 ? *up++ : *--down) = sorted[i];
    return items;
}

// Sorts the items from an order of rows, against the same number in no order.
void MeasureOrder(const Options& options, const std::string& name, ReportList& list, int subitem,
                  const std::vector<int>& order, Report& report)
{
    std::vector<int> random(order.size());
    std::iota(random.begin(), random.end(), 0);
    const auto sort = [&list](int by, const std::vector<int>& from) {
        return Variant{static_cast<unsigned>(from.size()),
                       [&list, by] { Check(list.SortItems(by, 1) == 1, "sorting"); },
                       [&list, &from] { list.SetOrder(from); }};
    };
    const Comparison comparison({sort(kSubItem, random), sort(subitem, order)}, options.quick ? 1 : 3);
    report.Add({name, comparison.Time(1), "us", "in no order", comparison.Ratio(1)});
}

std::vector<int> Sorted(ReportList& list)
{
    Check(list.SortItems(kSubItem, 1) == 1, "sorting");
    return list.Order();
}

// A subitem with the same text in every row.
int DefineEqual(ReportList& list)
{
    constexpr int kEqual = kColumns;
    _RVSUBITEM subitem;
    Check(list.DefineSubItem(kEqual, &subitem) == kEqual && list.ActivateSubItem(kEqual, kEqual) == kEqual,
          "a subitem");
    list.SetRedraw(0);
    for (int item = 0; item < list.GetItemCount(); ++item)
        list.SetItemText(item, kEqual, MakeText(0, 0).data());
    list.SetRedraw(1);
    return kEqual;
}

void MeasureOrders(const Options& options, Frame& frame, ReportList& list, Report& report)
{
    const std::vector<int> sorted = Sorted(list);
    MeasureOrder(options, "sort what is sorted", list, kSubItem, sorted, report);
    MeasureOrder(options, "sort a reversed order", list, kSubItem, {sorted.rbegin(), sorted.rend()}, report);
    MeasureOrder(options, "sort equal texts", list, DefineEqual(list), sorted, report);

    // The middle item is the last but one or two in each part: the time grows with the square.
    ReportList few(frame);
    few.Fill(list.GetItemCount() / 10);
    MeasureOrder(options, "sort an organ pipe of " + std::to_string(few.GetItemCount()), few, kSubItem,
                 OrganPipe(Sorted(few)), report);
}

void MeasureLarge(ReportList& list, ReportList& large, Report& report)
{
    const auto sort = [](ReportList& sorted) {
        const double units = sorted.GetItemCount();
        const double time = Microseconds({static_cast<unsigned>(units),
                                          [&sorted] { Check(sorted.SortItems(kSubItem, 1) == 1, "sorting"); },
                                          [&sorted] { sorted.ResetOrder(); }});
        return std::pair(time, time / std::log2(units));
    };
    const auto reference = sort(list);
    const auto [time, perStep] = sort(large);
    report.Add({"sort " + std::to_string(large.GetItemCount()) + ", per row", time, "us",
                std::to_string(list.GetItemCount()) + ", as n log n", perStep / reference.second});
}

} // namespace

void MeasureSorts(const Options& options, Frame& frame, const ListView& view, ReportList& list,
                  ReportList& large, Report& report)
{
    MeasureAgainstView(options, frame, view, list, report);
    MeasureLarge(list, large, report);
    MeasureOrders(options, frame, list, report);
}

} // namespace bench
