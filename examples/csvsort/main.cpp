// csvsort: reads a CSV file into a report control, has it sorted, and prints the rows, tabs between cells.
#include "../common/CommandLine.h"
#include "../common/CsvFile.h"

#include <ReportSort.h>

#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <optional>

namespace
{

using Order = CReportSorter::Order;

struct Options
{
    std::string file;
    std::string column; // empty: not sorted
    bool descending = false;
    std::optional<Order> order;
};

void Declare(CLI::App& app, Options& options)
{
    app.add_option("FILE", options.file, "the CSV file; its first line has the captions")->required();
    CLI::Option* const column = app.add_option("COLUMN", options.column, "a caption, or a number from 1");
    app.add_flag("--desc", options.descending, "downwards")->needs(column);
    CLI::App* const orders = app.add_option_group("Orders", "what the column holds");
    orders->require_option(0, 1);
    const auto add = [&](const char* name, Order order, const char* help) {
        orders
            ->add_flag_callback(
                name, [&options, order] { options.order = order; }, help)
            ->needs(column);
    };
    add("--natural", Order::kNatural, "texts with numbers, file9 before file10");
    add("--number", Order::kNumber, "numbers");
    add("--date", Order::kDate, "dates");
}

void Sort(CReportCtrl& list, CReportSorter& sorter, const Line& captions, const Options& options)
{
    const auto caption = std::find(captions.begin(), captions.end(), options.column);
    const int column = caption != captions.end() ? static_cast<int>(caption - captions.begin())
                                                 : std::atoi(options.column.c_str()) - 1;
    if (options.order)
        sorter.SetOrder(column, *options.order);
    list.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    if (!list.SortItems(column, options.descending ? 0 : 1) && list.GetRowCount() > 0)
        throw std::invalid_argument(options.column + ": no such column");
}

void Run(const Options& options)
{
    const std::vector<Line> lines = ReadCsv(options.file);
    CWnd frame; // never shown
    CReportCtrl list;
    frame.CreateEx(0, nullptr, "csvsort", WS_POPUP, CRect(), nullptr, 0);
    if (!list.Create(WS_CHILD, CRect(), &frame, 1))
        throw std::runtime_error("the window cannot be created");
    Fill(list, lines);
    CReportSorter sorter(list);
    if (!options.column.empty())
        Sort(list, sorter, lines.front(), options);
    ::_setmode(::_fileno(stdout), _O_BINARY);
    for (int row = RVI_DEFAULT; row < list.GetRowCount(); ++row) // the captions before all
        std::cout << list.GetItemString(list.GetItemFromRow(row)).c_str();
    if (!std::cout.flush())
        throw std::runtime_error("the output cannot be written");
}

} // namespace

int main(int count, char** words)
{
    CLI::App app("Prints the rows of a CSV file in order, tabs between cells.", "csvsort");
    try
    {
        Options options;
        Declare(app, options);
        if (ReadWords(app, count, words))
            Run(options);
        return 0;
    }
    catch (const std::exception& error)
    {
        return Fail(app, error);
    }
}
