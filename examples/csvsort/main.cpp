// csvsort: reads a CSV file into a report control, has it sorted, and prints the rows.
#include "Csv.h"

#include <ReportSort.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <map>

namespace
{

const char* const kUsage =
    "csvsort FILE.csv [COLUMN [--desc] [ORDER]]\n"
    "\n"
    "Prints the rows of a CSV file in the order of a column, which is named by its caption or its number "
    "from\n"
    "1; cells are separated by tabs. Rows that are equal there stay in the order of the file.\n"
    "ORDER is --natural, --number, --decimal-comma, --date or --day-first; without, texts go by their "
    "bytes.\n";

using Line = std::vector<std::string>;
using Order = CReportSorter::Order;

const std::map<std::string, Order> kOrders = {{"--natural", Order::kNatural},
                                              {"--number", Order::kNumber},
                                              {"--decimal-comma", Order::kDecimalComma},
                                              {"--date", Order::kDate},
                                              {"--day-first", Order::kDateDayFirst}};

struct Arguments
{
    std::vector<std::string> operands; // file, column
    int ascending = 1;
    Order order = Order::kText;
};

Arguments ParseArguments(const Line& words)
{
    Arguments arguments;
    for (const std::string& word : words)
    {
        if (word == "--desc")
            arguments.ascending = 0;
        else if (const auto order = kOrders.find(word); order != kOrders.end())
            arguments.order = order->second;
        else if (word.starts_with("--"))
            throw Failure(2, word, "no such option, see csvsort --help");
        else
            arguments.operands.push_back(word);
    }
    const std::size_t count = arguments.operands.size();
    if (count == 0)
        throw Failure(2, "file", "missing, see csvsort --help");
    if (count > 2)
        throw Failure(2, arguments.operands[2], "one word too many, see csvsort --help");
    if (count == 1 && words.size() > 1)
        throw Failure(2, "column", "missing, see csvsort --help");
    return arguments;
}

// A subitem for each caption, shown as a column, and an item for each further line.
void Fill(CReportCtrl& list, const std::vector<Line>& lines)
{
    for (const std::string& caption : lines.front())
    {
        _RVSUBITEM subitem;
        subitem.text = caption.c_str();
        list.ActivateSubItem(list.DefineSubItem(list.GetSubItemCount(), &subitem), -1);
    }
    for (std::size_t i = 1; i < lines.size(); ++i)
    {
        const int item = list.InsertItem(list.GetItemCount());
        int subitem = 0;
        for (const std::string& field : lines[i])
            list.SetItemText(item, subitem++, field.c_str());
    }
}

int FindColumn(const Line& captions, const std::string& column)
{
    const auto caption = std::find(captions.begin(), captions.end(), column);
    if (caption != captions.end())
        return static_cast<int>(caption - captions.begin());
    int number = 0;
    const char* const end = column.data() + column.size();
    if (std::from_chars(column.data(), end, number).ptr != end || number < 1 ||
        number > static_cast<int>(captions.size()))
        throw Failure(2, column, "no such column");
    return number - 1;
}

void Print(CReportCtrl& list, const Line& captions)
{
    std::string output;
    for (const std::string& caption : captions)
        output += caption + '\t';
    output.back() = '\n';
    for (int row = 0; row < list.GetRowCount(); ++row)
        output += list.GetItemString(list.GetItemFromRow(row), '\t').c_str();
    ::_setmode(::_fileno(stdout), _O_BINARY);
    if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() || std::fflush(stdout) != 0)
        throw Failure(2, "output", "cannot be written");
}

void Run(const Arguments& arguments)
{
    const std::vector<Line> lines = ReadCsv(arguments.operands[0]);
    const bool sorted = arguments.operands.size() > 1;
    const int column = sorted ? FindColumn(lines.front(), arguments.operands[1]) : 0;

    CWnd frame; // never shown
    CReportCtrl list;
    if (!frame.CreateEx(0, AfxRegisterWndClass(0), "csvsort", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr) ||
        !list.Create(WS_CHILD, CRect(0, 0, 0, 0), &frame, 1))
        throw Failure(2, "window", "cannot be created");
    list.SetRedraw(0);
    Fill(list, lines);

    CReportSorter sorter(list);
    sorter.SetOrder(column, arguments.order);
    list.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    if (sorted)
        list.SortItems(column, arguments.ascending);
    Print(list, lines.front());
    frame.DestroyWindow();
}

} // namespace

int main(int count, char** words)
{
    try
    {
        if (count == 2 && std::string(words[1]) == "--help")
            std::fputs(kUsage, stdout);
        else
            Run(ParseArguments(Line(words + 1, words + count)));
        return 0;
    }
    catch (const Failure& failure)
    {
        std::fprintf(stderr, "csvsort: %s\n", failure.what());
        return failure.exitCode;
    }
}
