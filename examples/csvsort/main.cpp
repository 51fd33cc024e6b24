// csvsort: reads a CSV file into a report control, has it sorted, and prints the rows, tabs between cells.
#include "../common/CsvFile.h"

#include <ReportSort.h>

#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <map>

namespace
{

const char* const kUsage = "csvsort FILE.csv [COLUMN [--desc] [--natural | --number | --date]]\n"
                           "COLUMN is a caption of the first line, or a number from 1.";

void Sort(CReportCtrl& list, CReportSorter& sorter, const Line& captions, const Line& words)
{
    using Order = CReportSorter::Order;
    const std::map<std::string, Order> orders = {
        {"--natural", Order::kNatural}, {"--number", Order::kNumber}, {"--date", Order::kDate}};
    const auto caption = std::find(captions.begin(), captions.end(), words[1]);
    const int column = caption != captions.end() ? static_cast<int>(caption - captions.begin())
                                                 : std::atoi(words[1].c_str()) - 1;
    int ascending = 1;
    for (auto word = words.begin() + 2; word != words.end(); ++word)
    {
        if (*word == "--desc")
            ascending = 0;
        else if (const auto order = orders.find(*word); order != orders.end())
            sorter.SetOrder(column, order->second);
        else
            throw std::invalid_argument(*word + ": no such option\n" + kUsage);
    }
    list.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    if (!list.SortItems(column, ascending) && list.GetRowCount() > 0)
        throw std::invalid_argument(words[1] + ": no such column");
}

void Run(const Line& words)
{
    if (words.empty())
        throw std::invalid_argument(kUsage);
    const std::vector<Line> lines = ReadCsv(words[0]);
    CWnd frame; // never shown
    CReportCtrl list;
    frame.CreateEx(0, nullptr, "csvsort", WS_POPUP, CRect(), nullptr, 0);
    if (!list.Create(WS_CHILD, CRect(), &frame, 1))
        throw std::runtime_error("the window cannot be created");
    Fill(list, lines);
    CReportSorter sorter(list);
    if (words.size() > 1)
        Sort(list, sorter, lines.front(), words);
    ::_setmode(::_fileno(stdout), _O_BINARY);
    for (int row = RVI_DEFAULT; row < list.GetRowCount(); ++row) // the captions before all
        std::cout << list.GetItemString(list.GetItemFromRow(row), '\t').c_str();
    if (!std::cout.flush())
        throw std::runtime_error("the output cannot be written");
}

} // namespace

int main(int count, char** words)
{
    try
    {
        Run(Line(words + 1, words + count));
        return 0;
    }
    catch (const std::exception& error)
    {
        std::cerr << "csvsort: " << error.what() << '\n';
        return dynamic_cast<const std::invalid_argument*>(&error) ? 2 : 1;
    }
}
