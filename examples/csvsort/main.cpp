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

// False when help was asked for.
bool Read(CommandLine& line, int count, char** words, Options& options)
{
    line.AddOperand("FILE", options.file, CommandLine::Need::Required,
                    "the CSV file; its first line has the captions");
    line.AddOperand("COLUMN", options.column, CommandLine::Need::Optional, "a caption, or a number from 1");
    line.AddFlag("--desc", options.descending, "downwards");
    struct
    {
        const char* name;
        Order order;
        const char* help;
        bool given = false;
    } orders[] = {{"--natural", Order::Natural, "the column holds texts with numbers, file9 before file10"},
                  {"--number", Order::Number, "it holds numbers"},
                  {"--date", Order::Date, "it holds dates"}};
    for (auto& choice : orders)
        line.AddFlag(choice.name, choice.given, choice.help);
    if (!line.Read(count, words))
        return false;

    for (const auto& choice : orders)
    {
        if (!choice.given)
            continue;
        if (options.order)
            throw std::invalid_argument(std::string(choice.name) + ": a column holds one of these only");
        options.order = choice.order;
    }
    if (options.column.empty() && (options.descending || options.order))
        throw std::invalid_argument("COLUMN is missing: what is to be sorted by?");
    return true;
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
    CommandLine line("csvsort", "Prints the rows of a CSV file in order, tabs between cells.");
    try
    {
        Options options;
        if (Read(line, count, words, options))
            Run(options);
        return 0;
    }
    catch (const std::exception& error)
    {
        return line.Fail(error);
    }
}
