// csvsort: reads a CSV file into a report control, has it sorted, and prints the rows, tabs between cells.
#include <ReportSort.h>

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <io.h>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Line = std::vector<std::string>;

const char* const kUsage = "csvsort FILE.csv [COLUMN [--desc] [--natural | --number | --date]]\n"
                           "COLUMN is a caption of the first line, or a number from 1.";

// The separator that the first line has most of.
char GuessSeparator(const std::string& text)
{
    const auto count = [&](char c) { return std::count(text.begin(), text.begin() + text.find('\n'), c); };
    return count(';') > count(',') ? ';' : count('\t') > count(',') ? '\t' : ',';
}

// Quoted fields may hold separators, line feeds and doubled quotes. Control characters become blanks. Short
// lines are filled up; one that is longer than the captions is an error.
std::vector<Line> ReadCsv(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + ": cannot be read");
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.starts_with("\xEF\xBB\xBF")) // the mark of UTF-8
        text.erase(0, 3);
    if (!text.ends_with('\n'))
        text += '\n';
    const char separator = GuessSeparator(text);
    std::vector<Line> lines;
    Line line = {""};
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char c = text[i];
        if (c == '"' && quoted && text[i + 1] == '"') // a line feed ends the text
            line.back() += text[++i];
        else if (c == '"' && (quoted || line.back().empty()))
            quoted = !quoted;
        else if (c == separator && !quoted)
            line.emplace_back();
        else if (c == '\n' && !quoted)
        {
            const std::size_t fields = lines.empty() ? line.size() : lines.front().size();
            if (line.size() > fields)
                throw std::runtime_error(path + ": too long: row " + std::to_string(lines.size()));
            line.resize(fields);
            if (line.size() > 1 || !line.front().empty())
                lines.push_back(line);
            line = {""};
        }
        else if (c != '\r')
            line.back() += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    if (quoted || lines.empty())
        throw std::runtime_error(path + (quoted ? ": a quote is not closed" : ": there are no captions"));
    return lines;
}

// A subitem for each caption, shown as a column, and an item for each further line. The default item holds
// the captions once more.
void Fill(CReportCtrl& list, const std::vector<Line>& lines)
{
    for (const std::string& caption : lines.front())
    {
        _RVSUBITEM subitem;
        subitem.text = caption.c_str();
        list.ActivateSubItem(list.DefineSubItem(list.GetSubItemCount(), &subitem), -1);
    }
    for (const Line& line : lines)
    {
        const int item = &line == &lines.front() ? RVI_DEFAULT : list.InsertItem(list.GetItemCount());
        for (std::size_t i = 0; i < line.size(); ++i)
            list.SetItemText(item, static_cast<int>(i), line[i].c_str());
    }
}

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
