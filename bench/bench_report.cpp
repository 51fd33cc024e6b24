// What the report control costs, against the system's list view with the same rows in the same run.
#include "Bench.h"
#include "BenchFiles.h"
#include "BenchMemory.h"
#include "ReportLists.h"
#include "ReportSorts.h"
#include "ReportTree.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace
{

using bench::CellText;
using bench::Check;
using bench::Comparison;
using bench::kColumns;
using bench::ListView;
using bench::MakeText;
using bench::ReportList;
using bench::Variant;

class ReportBench
{
public:
    explicit ReportBench(const bench::Options& options)
        : m_options(options), m_rows(options.quick ? 2000 : 100000)
    {
    }

    bench::Report Run()
    {
        MeasureFirstFill(); // before memory has been freed that could be used again
        MeasureInsert();
        MeasureWrite();
        MeasureFind();
        MeasureRowMap();
        MeasureCallback();
        bench::MeasureSorts(m_options, m_frame, m_view, m_list, m_large, m_report);
        bench::MeasureTree(m_options, m_frame, m_report);
        return m_report;
    }

private:
    unsigned Rounds(unsigned full) const { return m_options.quick ? 3 : full; }

    unsigned Units() const { return static_cast<unsigned>(m_rows); }

    void Judge(const std::string& name, const Comparison& comparison, const char* reference, double goal)
    {
        m_report.Add({name, comparison.Time(1), "us", reference, comparison.Ratio(1), goal});
    }

    struct FirstFill
    {
        double time;      // microseconds a row
        double heapBytes; // a row
        double privateBytes;
    };

    template <typename List> static FirstFill Fill(List& list, int rows)
    {
        const double heap = bench::HeapBytes();
        const double owned = bench::PrivateBytes();
        const double time = bench::Microseconds({static_cast<unsigned>(rows), [&] { list.Fill(rows); }});
        return {time, (bench::HeapBytes() - heap) / rows, (bench::PrivateBytes() - owned) / rows};
    }

    // The control goes first: what it frees is there for the list view.
    void MeasureFirstFill()
    {
        const FirstFill list = Fill(m_list, m_rows);
        const FirstFill view = Fill(m_view, m_rows);
        const FirstFill large = Fill(m_large, 10 * m_rows);
        const std::string rows = std::to_string(m_rows);
        const std::string many = std::to_string(10 * m_rows);
        m_report.Add({"insert " + rows + " rows, per row", list.time, "us", "the list view",
                      list.time / view.time, 1.0});
        m_report.Add({"a stored row, heap", list.heapBytes, "bytes", "the list view",
                      list.heapBytes / view.heapBytes, 0.6});
        m_report.Add({"a stored row, private memory", list.privateBytes, "bytes", "the list view",
                      list.privateBytes / view.privateBytes, 0.6});
        m_report.Add(
            {"insert " + many + ", per row", large.time, "us", rows + " rows", large.time / list.time, 1.5});
        m_report.Add({"a row of " + many + ", heap", large.heapBytes, "bytes", "of " + rows,
                      large.heapBytes / list.heapBytes, 1.1});
        m_report.Add({"a row of " + many + ", private", large.privateBytes, "bytes", "of " + rows,
                      large.privateBytes / list.privateBytes});
    }

    void MeasureInsert()
    {
        const int rows = m_rows / 10;
        ListView view(m_frame);
        ReportList list(m_frame);
        const auto clearView = [&view] {
            Check(view.Send(LVM_DELETEALLITEMS) != 0, "clearing the list view");
        };
        const auto clearList = [&list] {
            if (list.GetItemCount() != 0)
                Check(list.DeleteAllItems() == 1, "clearing the report control");
        };
        const unsigned units = static_cast<unsigned>(rows);
        const Comparison hidden(
            {{units, [&] { view.Fill(rows); }, clearView}, {units, [&] { list.Fill(rows); }, clearList}},
            Rounds(5));
        Judge("insert " + std::to_string(rows) + " rows, per row", hidden, "the list view", 1.0);

        clearView();
        clearList();
        constexpr int kShown = 20;
        const Comparison shown(
            {{kShown, [&] { view.Append(kShown); }}, {kShown, [&] { list.Append(kShown); }}}, Rounds(5));
        Judge("insert a row, drawing switched on", shown, "the list view", 1.0);
    }

    // Texts that are not there yet: the list view leaves equal ones alone.
    void MeasureWrite()
    {
        constexpr unsigned kCells = 10000;
        const auto write = [this](auto& list) {
            return Variant{kCells, [this, &list] {
                               for (unsigned i = 0; i < kCells; ++i)
                                   SetText(list, Random(), Random() % kColumns, MakeText(Random(), 0));
                           }};
        };
        m_list.SetRedraw(0);
        m_view.SetRedraw(FALSE);
        Judge("write a cell", Comparison({write(m_view), write(m_list)}, Rounds(21)), "the list view", 1.0);
        m_list.SetRedraw(1);
        m_view.SetRedraw(TRUE);
    }

    static void SetText(ListView& view, int row, int column, const CellText& text)
    {
        view.SetText(row, column, text);
    }
    static void SetText(ReportList& list, int item, int subitem, const CellText& text)
    {
        Check(list.SetItemText(item, subitem, text.data()) == 1, "writing a cell");
    }

    void MeasureFind()
    {
        const auto find = [](ReportList& list) {
            return Variant{static_cast<unsigned>(list.GetItemCount()), [&list] {
                               _RVFINDINFO info;
                               info.flags = RVFI_TEXT;
                               info.text = "absent";
                               Check(list.FindItem(&info, 0, RVI_DEFAULT) == RVI_NONE, "an absent text");
                           }};
        };
        const Variant findInView = {Units(), [this] {
                                        LVFINDINFOA info = {};
                                        info.flags = LVFI_STRING;
                                        info.psz = "absent";
                                        Check(m_view.Send(LVM_FINDITEMA, static_cast<WPARAM>(-1),
                                                          reinterpret_cast<LPARAM>(&info)) == -1,
                                              "an absent text");
                                    }};
        Judge("find an absent text, per row", Comparison({findInView, find(m_list)}, Rounds(11)),
              "the list view", 1.0);
        Judge("find in " + std::to_string(10 * m_rows) + ", per row",
              Comparison({find(m_list), find(m_large)}, Rounds(5)), "in a tenth of them", 1.5);
    }

    // The least that taking an order and finding rows by it can cost is a copy and its reverse.
    void MeasureRowMap()
    {
        std::vector<int> order(Units());
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), m_random);
        CArray<int, int> items;
        for (const int item : order)
            items.Add(item);
        std::vector<int> rows(Units());
        const Comparison comparison(
            {{Units(),
              [&] {
                  const std::vector<int> copy = order;
                  for (std::size_t row = 0; row < copy.size(); ++row)
                      rows[static_cast<std::size_t>(copy[row])] = static_cast<int>(row);
                  Check(rows[static_cast<std::size_t>(order[1])] == 1, "a row");
              }},
             {Units(),
              [&] {
                  Check(m_list.SetItemRowArray(items) == 1 && m_list.GetRowFromItem(order[1]) == 1, "a row");
              }}},
            Rounds(51));
        m_report.Add({"take an order, find a row",
                      comparison.Time(1) * 1000,
                      "ns",
                      "copying and reversing it",
                      comparison.Ratio(1),
                      {}});
        m_list.ResetOrder();
    }

    void MeasureCallback()
    {
        constexpr unsigned kCells = 10000;
        constexpr std::size_t kBuffer = 65536;
        ListView view(m_frame, LVS_OWNERDATA);
        view.Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(m_rows));
        bench::CallbackList list(m_frame, m_rows);
        std::vector<char> buffer(kBuffer);
        char fill = 0;
        const Comparison comparison(
            {{kCells,
              [&] {
                  CellText text;
                  for (unsigned i = 0; i < kCells; ++i)
                      view.GetText(Random(), 1, text);
                  Check(text[0] == 'M', "a text of the list view");
              }},
             {kCells,
              [&] {
                  CellText text;
                  for (unsigned i = 0; i < kCells; ++i)
                  {
                      _RVITEM item;
                      item.mask = RVIM_TEXT;
                      item.item = Random();
                      item.subitem = 1;
                      item.text = text.data();
                      item.textMax = static_cast<int>(text.size());
                      Check(list.GetItem(&item) == 1 && text[0] == 'M', "a callback's text");
                  }
              }},
             {100,
              [&] {
                  for (int i = 0; i < 100; ++i)
                  {
                      std::fill(buffer.begin(), buffer.end(), ++fill);
                      Check(buffer[static_cast<std::size_t>(Random()) % kBuffer] == fill, "filling");
                  }
              }}},
            Rounds(21));
        Judge("read a callback's cell", comparison, "the list view", 1.0);
        m_report.Add({"read a callback's cell", comparison.Time(1), "us", "clearing 64 KiB",
                      comparison.Ratio(1, 2), 1.0}); // it clears none
    }

    // A row.
    int Random() { return static_cast<int>(m_random() % Units()); }

    bench::Options m_options;
    int m_rows;
    bench::Frame m_frame;
    ReportList m_list{m_frame};
    ListView m_view{m_frame};
    ReportList m_large{m_frame}; // ten times the rows
    bench::Report m_report;
    std::minstd_rand m_random;
};

} // namespace

int main(int count, char** arguments)
{
    const bench::Options options = bench::ParseOptions(count, arguments);
    const bench::Report report = ReportBench(options).Run();
    report.Print(options);
    return options.quick || report.AllMet() ? 0 : 1;
}
